// SPDX-License-Identifier: MIT
// See ClaudeHooksInstaller.h. The document's form is the agents' own: "hooks" maps an event to a list of
// groups, and a group has a list "hooks" of entries and perhaps a "matcher".
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"

#include "VesloraCore/Agents/Hooks/ConfigurationText.h"
#include "VesloraCore/Agents/Hooks/HookScripts.h"

#include <algorithm>

namespace veslora::ClaudeHooksInstaller {

namespace {

// Above the script's own wait, so that it always ends by itself.
constexpr int permissionTimeout = HookScripts::permissionWait + 10;

using Wanted = std::vector<std::string_view>;

bool runsOneOf(const Json& group, const Wanted& commands) {
    const Json* entries = group.find("hooks");
    return entries && std::any_of(entries->items().begin(), entries->items().end(), [&](const Json& entry) {
               const std::string* command = entry.stringAt("command");
               return command && std::ranges::find(commands, *command) != commands.end();
           });
}

bool holdsOneOf(const Json* groups, const Wanted& commands) {
    return groups && std::any_of(groups->items().begin(), groups->items().end(),
                                 [&](const Json& group) { return runsOneOf(group, commands); });
}

// A list of groups without those that run one of the commands; a value that is no list counts as an empty
// one.
Json groupsWithout(const Json* groups, const Wanted& commands) {
    static const Json none;
    Json kept = Json::makeArray();
    for (const Json& group : (groups ? groups : &none)->items()) {
        if (!runsOneOf(group, commands)) {
            kept.append(group);
        }
    }
    return kept;
}

Json newGroup(const std::string& command, std::optional<int> timeout,
              const std::optional<std::string>& matcher) {
    Json entry;
    entry.set("type", Json::makeString("command"));
    entry.set("command", Json::makeString(command));
    if (timeout) {
        entry.set("timeout", Json::makeInteger(*timeout));
    }
    Json group;
    group.set("hooks", Json::makeArray({std::move(entry)}));
    if (matcher) {
        group.set("matcher", Json::makeString(*matcher));
    }
    return group;
}

Json groupsOfEvent(const Json* groups, const std::string& event, const Commands& commands,
                   const HookSet& set) {
    Json kept = groupsWithout(groups, Wanted(commands.legacy.begin(), commands.legacy.end()));
    if (!holdsOneOf(&kept, {commands.event})) {
        kept.append(newGroup(commands.event, set.timeout,
                             event.ends_with("ToolUse") ? set.toolMatcher : std::nullopt));
    }
    return kept;
}

Json groupsOfPermission(const Json* groups, const std::string& command, const HookSet& set) {
    Json kept = groupsWithout(groups, {});
    if (!holdsOneOf(&kept, {command})) {
        kept.append(newGroup(command, permissionTimeout, set.toolMatcher));
    }
    return kept;
}

bool holdsWholeSet(const Json& hooks, const Commands& commands, const HookSet& set) {
    const bool hasEvents = std::ranges::all_of(set.events, [&](const std::string& event) {
        return holdsOneOf(hooks.find(event), {commands.event});
    });
    return hasEvents &&
           (!commands.permission || holdsOneOf(hooks.find(permissionEvent), {*commands.permission}));
}

// Every command by which we are or were registered.
Wanted allOf(const Commands& commands) {
    Wanted all(commands.legacy.begin(), commands.legacy.end());
    all.push_back(commands.event);
    if (commands.permission) {
        all.push_back(*commands.permission);
    }
    return all;
}

} // namespace

const HookSet& HookSet::claude() {
    static const HookSet set = {
        {"UserPromptSubmit", "Stop", "Notification", "PreToolUse", "PostToolUse"}, "*", std::nullopt};
    return set;
}

const HookSet& HookSet::codex() {
    static const HookSet set = {
        {"SessionStart", "UserPromptSubmit", "PreToolUse", "PostToolUse", "Stop", "SessionEnd", "Interrupt"},
        std::nullopt,
        3};
    return set;
}

std::string installing(std::optional<std::string_view> text, const Commands& commands, const HookSet& set) {
    Json root = ConfigurationText::parseOrThrow(text);
    const Json* present = root.objectAt("hooks");
    Json hooks = present ? *present : Json::makeObject();
    for (const std::string& event : set.events) {
        hooks.set(event, groupsOfEvent(hooks.find(event), event, commands, set));
    }
    if (commands.permission) {
        hooks.set(permissionEvent,
                  groupsOfPermission(hooks.find(permissionEvent), *commands.permission, set));
    }
    root.set("hooks", std::move(hooks));
    return ConfigurationText::render(root);
}

std::string removing(std::string_view text, const Commands& commands) {
    Json root = ConfigurationText::parseOrThrow(text);
    const Json* present = root.objectAt("hooks");
    if (!present) {
        return ConfigurationText::render(root);
    }
    const Wanted targets = allOf(commands);
    Json hooks = Json::makeObject();
    for (const Json::Member& event : present->members()) {
        Json kept = event.value.isArray() ? groupsWithout(&event.value, targets) : event.value;
        if (!kept.isArray() || !kept.items().empty()) {
            hooks.set(event.key, std::move(kept));
        }
    }
    if (hooks.members().empty()) {
        root.remove("hooks");
    } else {
        root.set("hooks", std::move(hooks));
    }
    return ConfigurationText::render(root);
}

bool isInstalled(std::optional<std::string_view> text, const Commands& commands, const HookSet& set) {
    const std::optional<Json> root = ConfigurationText::parse(text);
    const Json* hooks = root ? root->objectAt("hooks") : nullptr;
    return hooks && holdsWholeSet(*hooks, commands, set);
}

bool isPartlyInstalled(std::optional<std::string_view> text, const Commands& commands, const HookSet& set) {
    const std::optional<Json> root = ConfigurationText::parse(text);
    const Json* hooks = root ? root->objectAt("hooks") : nullptr;
    if (!hooks || holdsWholeSet(*hooks, commands, set)) {
        return false;
    }
    Wanted ours = {commands.event};
    if (commands.permission) {
        ours.push_back(*commands.permission);
    }
    return std::any_of(hooks->members().begin(), hooks->members().end(),
                       [&](const Json::Member& event) { return holdsOneOf(&event.value, ours); });
}

bool holdsAny(std::optional<std::string_view> text, const Commands& commands) {
    const std::optional<Json> root = ConfigurationText::parse(text);
    const Json* hooks = root ? root->objectAt("hooks") : nullptr;
    return hooks && std::any_of(hooks->members().begin(), hooks->members().end(),
                                [wanted = allOf(commands)](const Json::Member& event) {
                                    return holdsOneOf(&event.value, wanted);
                                });
}

} // namespace veslora::ClaudeHooksInstaller
