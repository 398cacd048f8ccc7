// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/CodexHookTrust.h"

#include "VesloraCore/Text/Json.h"

#include <algorithm>

namespace veslora::CodexHookTrust {

namespace {

/// "PreToolUse" as "pre_tool_use".
std::string joined(std::string_view event) {
    std::string words;
    for (const char letter : event) {
        if (letter >= 'A' && letter <= 'Z') {
            words += words.empty() ? "" : "_";
            words += static_cast<char>(letter - 'A' + 'a');
        } else {
            words += letter;
        }
    }
    return words;
}

void addPlaces(std::vector<std::string>& places, const Json::Member& event,
               const std::vector<std::string>& commands) {
    const auto& groups = event.value.items();
    for (std::size_t group = 0; group < groups.size(); ++group) {
        const Json* hooks = groups[group].find("hooks");
        for (std::size_t hook = 0; hooks && hook < hooks->items().size(); ++hook) {
            const std::string* command = hooks->items()[hook].stringAt("command");
            if (command && std::ranges::find(commands, *command) != commands.end()) {
                places.push_back(joined(event.key) + ":" + std::to_string(group) + ":" +
                                 std::to_string(hook));
            }
        }
    }
}

/// As it stands between the double quotes of a TOML key.
std::string escaped(std::string_view path) {
    std::string text;
    for (const char letter : path) {
        text += letter == '"' || letter == '\\' ? "\\" : "";
        text += letter;
    }
    return text;
}

} // namespace

std::vector<std::string> placesOf(std::string_view hooks, const std::vector<std::string>& commands) {
    std::vector<std::string> places;
    const auto document = Json::parse(hooks);
    const Json* events = document ? document->objectAt("hooks") : nullptr;
    if (events) {
        for (const Json::Member& event : events->members()) {
            addPlaces(places, event, commands);
        }
    }
    return places;
}

bool namesAll(std::string_view configuration, const std::string& path,
              const std::vector<std::string>& places) {
    return std::ranges::all_of(places, [&](const std::string& place) {
        const auto holds = [&](const std::string& key) {
            return configuration.find(key) != std::string_view::npos;
        };
        return holds("\"" + escaped(path) + ":" + place + "\"") || holds("'" + path + ":" + place + "'");
    });
}

} // namespace veslora::CodexHookTrust
