// SPDX-License-Identifier: MIT
// Hooks and a status line that are put into any settings can be found there, are put in only once, and leave
// nothing behind and nothing missing when they are taken out again. Seeds: settings/*.json
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraCore/Agents/Hooks/ClaudeStatusLineInstaller.h"
#include "VesloraCore/Text/Json.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using ClaudeHooksInstaller::Commands;
using ClaudeHooksInstaller::HookSet;
using fuzz::require;

namespace {

const std::string statusLine = "'/home/me/.local/share/Veslora/claude-statusline.sh'";

const Commands& commands() {
    static const Commands made{.event = "'/home/me/.local/share/Veslora/claude-event.sh'",
                               .permission = "'/home/me/.local/share/Veslora/claude-permission.sh'",
                               .legacy = {}};
    return made;
}

/// Everything beside the key that was touched is as it was.
void requireRest(const Json& before, const Json& after, std::string_view touched) {
    for (const auto* side : {&before, &after}) {
        for (const Json::Member& member : side->members()) {
            const Json* left = before.find(member.key);
            const Json* right = after.find(member.key);
            require(member.key == touched || (left != nullptr && right != nullptr && *left == *right));
        }
    }
}

/// The user's own groups of each event are as they were.
void requireGroups(const Json& before, const Json& after) {
    const Json* hooks = before.objectAt("hooks");
    for (const Json::Member& event : hooks != nullptr ? hooks->members() : Json::Object()) {
        if (!event.value.items().empty()) {
            const Json* kept = after.objectAt("hooks");
            const Json* groups = kept != nullptr ? kept->find(event.key) : nullptr;
            require(groups != nullptr && *groups == event.value);
        }
    }
}

void checkHooks(std::string_view text, const HookSet& set) {
    const bool hadSome = ClaudeHooksInstaller::isInstalled(text, commands(), set) ||
                         ClaudeHooksInstaller::isPartlyInstalled(text, commands(), set);
    const std::string installed = ClaudeHooksInstaller::installing(text, commands(), set);
    require(ClaudeHooksInstaller::isInstalled(installed, commands(), set));
    require(!ClaudeHooksInstaller::isPartlyInstalled(installed, commands(), set));
    require(ClaudeHooksInstaller::installing(installed, commands(), set) == installed);
    const std::string removed = ClaudeHooksInstaller::removing(installed, commands());
    require(!ClaudeHooksInstaller::isInstalled(removed, commands(), set));
    require(!ClaudeHooksInstaller::isPartlyInstalled(removed, commands(), set));
    const auto before = Json::parse(text, Json::Reading::lossless);
    const auto after = Json::parse(removed, Json::Reading::lossless);
    require(after && after->isObject());
    if (before) {
        requireRest(*before, *after, "hooks");
        if (!hadSome) {
            requireGroups(*before, *after);
        }
    }
}

void checkStatusLine(std::string_view text) {
    const bool hadOurs = ClaudeStatusLineInstaller::isInstalled(text, statusLine);
    const auto installed = ClaudeStatusLineInstaller::installing(text, statusLine);
    require(ClaudeStatusLineInstaller::isInstalled(installed.text, statusLine));
    const auto again = ClaudeStatusLineInstaller::installing(installed.text, statusLine);
    require(again.text == installed.text && !again.previous);
    const std::string removed =
        ClaudeStatusLineInstaller::removing(installed.text, statusLine, installed.previous);
    require(!ClaudeStatusLineInstaller::isInstalled(removed, statusLine));
    const auto before = Json::parse(text, Json::Reading::lossless);
    const auto after = Json::parse(removed, Json::Reading::lossless);
    require(after && after->isObject());
    if (before && !hadOurs) {
        require(*before == *after);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    for (const HookSet* set : {&HookSet::claude(), &HookSet::codex()}) {
        try {
            checkHooks(text, *set);
        } catch (const ClaudeHooksInstaller::InstallError&) {
            require(!ClaudeHooksInstaller::isInstalled(text, commands(), *set));
        }
    }
    try {
        checkStatusLine(text);
    } catch (const ClaudeHooksInstaller::InstallError&) {
        require(!ClaudeStatusLineInstaller::isInstalled(text, statusLine));
    }
    return 0;
}
