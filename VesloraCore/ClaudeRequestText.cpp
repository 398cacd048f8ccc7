// SPDX-License-Identifier: MIT
// See ClaudeRequestText.h.
#include "VesloraCore/ClaudeRequestText.h"

#include "VesloraCore/ClaudeActivity.h"
#include "VesloraCore/GraphemeClusters.h"
#include "VesloraCore/Scalars.h"

#include <array>
#include <cstdio>

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
    for (const Json::Member& member : input.members())
        text += " · " + member.key + ": " + valueText(member.value);
    return text;
}

// The sign for a code point that would break the line; null for all others.
const char* signFor(char32_t codePoint) {
    switch (codePoint) {
    case U'\r':
        return "␍ ";
    case U'\n':
        return "⏎ ";
    case U'\t':
        return "⇥ ";
    default:
        return nullptr;
    }
}

std::string spelled(char32_t codePoint) {
    std::array<char, 16> digits{};
    std::snprintf(digits.data(), digits.size(), "%04X", static_cast<unsigned>(codePoint));
    return std::string("⟨U+") + digits.data() + "⟩";
}

void appendShown(std::string& shown, std::string_view bytes, char32_t codePoint) {
    if (const char* sign = signFor(codePoint)) {
        if (!shown.empty() && shown.back() != ' ')
            shown += ' ';
        shown += sign;
    } else if (Scalars::isHidden(codePoint)) {
        shown += spelled(codePoint);
    } else {
        shown += bytes;
    }
}

} // namespace

std::string describe(std::string_view tool, const Json& input, std::string_view home) {
    if (const std::string* command = input.stringAt("command"); tool == "Bash" && command)
        return *command;
    if (tool == "Edit" || tool == "MultiEdit")
        return "Edit " + shortened(input.textAt("file_path"), home);
    if (tool == "Write" || tool == "Read")
        return std::string(tool) + " " + shortened(input.textAt("file_path"), home);
    if (tool == "NotebookEdit")
        return "NotebookEdit " + shortened(input.textAt("notebook_path"), home);
    if (tool == "WebFetch")
        return "WebFetch " + input.textAt("url");
    if (tool == "WebSearch")
        return "WebSearch " + input.textAt("query");
    return generic(tool, input);
}

Display display(std::string_view text) {
    constexpr char32_t replacement = 0xFFFD;
    std::string shown;
    shown.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Scalars::Scalar scalar = Scalars::at(text, at);
        if (scalar.codePoint)
            appendShown(shown, text.substr(at, scalar.length), *scalar.codePoint);
        else
            shown += spelled(replacement);
        at += scalar.length;
    }
    const bool isComplete = !GraphemeClusters::exceeds(shown, displayLimit);
    return {std::move(shown), isComplete};
}

} // namespace veslora::ClaudeRequestText
