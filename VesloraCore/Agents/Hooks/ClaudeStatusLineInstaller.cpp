// SPDX-License-Identifier: MIT
// See ClaudeStatusLineInstaller.h.
#include "VesloraCore/Agents/Hooks/ClaudeStatusLineInstaller.h"

#include "VesloraCore/Agents/Hooks/ConfigurationText.h"

namespace veslora::ClaudeStatusLineInstaller {

namespace {

constexpr std::string_view key = "statusLine";

bool isOurs(const Json* line, const std::string& command) {
    const std::string* held = line ? line->stringAt("command") : nullptr;
    return held && *held == command;
}

// What the user has set beside the command, such as how often the line is to be drawn, stays theirs; only a
// line that we add alone has a padding of ours.
Json withCommand(const Json* present, const std::string& command) {
    Json line = Json::makeObject();
    if (present && present->isObject()) {
        line = *present;
    } else {
        line.set("padding", Json::makeInteger(0));
    }
    line.set("type", Json::makeString("command"));
    line.set("command", Json::makeString(command));
    return line;
}

} // namespace

Installed installing(std::optional<std::string_view> text, const std::string& command) {
    Json root = ConfigurationText::parseOrThrow(text);
    std::optional<std::string> previous;
    const Json* present = root.find(key);
    if (present && !isOurs(present, command)) {
        previous = present->print(Json::Layout::compact);
    }
    root.set(key, withCommand(present, command));
    return {ConfigurationText::render(root), previous};
}

std::string removing(std::string_view text, const std::string& command,
                     std::optional<std::string_view> previous) {
    Json root = ConfigurationText::parseOrThrow(text);
    if (isOurs(root.find(key), command)) {
        std::optional<Json> saved = previous ? Json::parse(*previous, Json::Reading::lossless) : std::nullopt;
        if (saved) {
            root.set(key, std::move(*saved));
        } else {
            root.remove(key);
        }
    }
    return ConfigurationText::render(root);
}

bool isInstalled(std::optional<std::string_view> text, const std::string& command) {
    const std::optional<Json> root = ConfigurationText::parse(text);
    return root && isOurs(root->find(key), command);
}

std::optional<std::string> commandOf(std::string_view previous) {
    const std::optional<Json> saved = Json::parse(previous);
    const std::string* command = saved ? saved->stringAt("command") : nullptr;
    return command ? std::optional(*command) : std::nullopt;
}

} // namespace veslora::ClaudeStatusLineInstaller
