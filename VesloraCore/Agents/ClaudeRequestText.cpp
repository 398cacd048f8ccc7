// SPDX-License-Identifier: MIT
// See ClaudeRequestText.h.
#include "VesloraCore/Agents/ClaudeRequestText.h"

#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"

namespace veslora::ClaudeRequestText {

namespace {

std::string shortened(const std::string& path, std::string_view home) {
    const bool isBelow =
        !home.empty() && path.starts_with(home) && (path.size() == home.size() || path[home.size()] == '/');
    return isBelow ? "~" + path.substr(home.size()) : path;
}

// Texts bare, everything else as compact JSON, so that a nested value keeps to one line.
std::string valueText(const Json& value) {
    const std::string* text = value.string();
    return text ? *text : value.print(Json::Layout::compact);
}

std::string generic(std::string_view tool, const Json& input) {
    std::string text = ClaudeActivity::mcpName(tool).value_or(std::string(tool));
    for (const Json::Member& member : input.members()) {
        text += " · " + member.key + ": " + valueText(member.value);
    }
    return text;
}

} // namespace

std::string describe(std::string_view tool, const Json& input, std::string_view home) {
    if (const std::string* command = input.stringAt("command"); tool == "Bash" && command) {
        return *command;
    }
    if (tool == "Edit" || tool == "MultiEdit") {
        return "Edit " + shortened(input.textAt("file_path"), home);
    }
    if (tool == "Write" || tool == "Read") {
        return std::string(tool) + " " + shortened(input.textAt("file_path"), home);
    }
    if (tool == "NotebookEdit") {
        return "NotebookEdit " + shortened(input.textAt("notebook_path"), home);
    }
    if (tool == "WebFetch") {
        return "WebFetch " + input.textAt("url");
    }
    if (tool == "WebSearch") {
        return "WebSearch " + input.textAt("query");
    }
    return generic(tool, input);
}

VisibleText::Spelled display(std::string_view text) {
    return VisibleText::spelled(text, displayLimit);
}

} // namespace veslora::ClaudeRequestText
