// SPDX-License-Identifier: MIT
// See ClaudeActivity.h.
#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"

#include "VesloraCore/Text/GraphemeClusters.h"
#include "VesloraCore/Text/PathText.h"
#include "VesloraCore/Text/UrlText.h"

namespace veslora::ClaudeActivity {

namespace {

constexpr std::size_t longest = 60;

std::string_view firstLine(std::string_view text) {
    const std::size_t start = text.find_first_not_of("\r\n");
    if (start == std::string_view::npos) {
        return {};
    }
    text.remove_prefix(start);
    return text.substr(0, text.find_first_of("\r\n"));
}

std::string bash(const Json& input) {
    std::string description = input.textAt("description");
    if (!description.empty()) {
        return description;
    }
    return "Bash: " + std::string(firstLine(input.textAt("command")));
}

std::string fileName(const Json& input) {
    return std::string(PathText::lastComponent(input.textAt("file_path")));
}

// The words before the colon are ours; the name of a tool that is shown as it is is the agent's.
std::string whole(std::string_view tool, const Json& input, const Words& words) {
    const auto line = [&words](const char* pattern, const std::string& what) {
        return Words::filled(words.translate("AgentActivity", pattern), {what});
    };
    if (tool == "Bash") {
        return bash(input);
    }
    if (tool == "Edit" || tool == "MultiEdit") {
        return line(translatable("AgentActivity", "Edit: %1"), fileName(input));
    }
    if (tool == "Write") {
        return line(translatable("AgentActivity", "Write: %1"), fileName(input));
    }
    if (tool == "Read") {
        return line(translatable("AgentActivity", "Read: %1"), fileName(input));
    }
    if (tool == "Grep" || tool == "Glob") {
        return line(translatable("AgentActivity", "Search: %1"), input.textAt("pattern"));
    }
    if (tool == "WebFetch") {
        return line(translatable("AgentActivity", "Web: %1"),
                    std::string(UrlText::host(input.textAt("url"))));
    }
    if (tool == "WebSearch") {
        return line(translatable("AgentActivity", "Web: %1"), input.textAt("query"));
    }
    if (tool == "Agent" || tool == "Task") {
        return line(translatable("AgentActivity", "Agent: %1"), input.textAt("description"));
    }
    return mcpName(tool).value_or(std::string(tool));
}

} // namespace

std::string describe(std::string_view tool, const Json& input, const Words& words) {
    std::string text = whole(tool, input, words);
    if (!GraphemeClusters::exceeds(text, longest)) {
        return text;
    }
    return std::string(GraphemeClusters::prefix(text, longest - 1)) + "…";
}

std::string describe(const HookPayload& payload, const Words& words) {
    return describe(payload.tool,
                    payload.inputTexts({"description", "command", "file_path", "pattern", "url", "query"}),
                    words);
}

std::optional<std::string> mcpName(std::string_view tool) {
    constexpr std::string_view separator = "__";
    constexpr std::string_view start = "mcp__";
    if (!tool.starts_with(start)) {
        return std::nullopt;
    }
    tool.remove_prefix(start.size());
    const std::size_t end = tool.find(separator);
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    // The separators within the rest become one blank, and so do single underscores.
    std::string rest;
    for (std::size_t at = end + separator.size(); at < tool.size(); ++at) {
        if (tool.substr(at, 2) == separator) {
            ++at;
        }
        rest += tool[at] == '_' ? ' ' : tool[at];
    }
    return std::string(tool.substr(0, end)) + ": " + rest;
}

} // namespace veslora::ClaudeActivity
