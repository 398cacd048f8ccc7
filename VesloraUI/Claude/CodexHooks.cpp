// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/CodexHooks.h"

#include "VesloraCore/ConfigurationText.h"
#include "VesloraCore/SupportNames.h"
#include "VesloraUI/Claude/ConfigurationFile.h"
#include "VesloraUI/Claude/SupportDirectory.h"

#include <array>
#include <utility>

namespace veslora {

using ClaudeHooksInstaller::HookSet;

namespace {

constexpr std::array scriptNames{SupportNames::codexHook, SupportNames::codexPermission};

} // namespace

CodexHooks::CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile)
    : AgentHooks(files, support, std::move(hooksFile), scriptNames) {}

ClaudeHooksInstaller::Commands CodexHooks::commands() const {
    return {.event = m_scripts.commandOf(SupportNames::codexHook),
            .permission = m_scripts.commandOf(SupportNames::codexPermission)};
}

AgentHooks::Found CodexHooks::find(std::optional<std::string_view> text) const {
    const bool areIn = ClaudeHooksInstaller::isInstalled(text, commands(), HookSet::codex());
    const bool areSomeIn = ClaudeHooksInstaller::isPartlyInstalled(text, commands(), HookSet::codex());
    return {.all = areIn, .any = areIn || areSomeIn};
}

void CodexHooks::install() {
    ConfigurationFile hooks(m_files, m_configuration);
    const auto old = hooks.read();
    const std::string text = ClaudeHooksInstaller::installing(old, commands(), HookSet::codex());
    throwIfFailed(m_support.create(), m_support.path());
    m_scripts.write();
    hooks.write(text, old);
    forgetConfiguration();
}

bool CodexHooks::remove() {
    ConfigurationFile hooks(m_files, m_configuration);
    const auto old = hooks.read();
    if (!old) {
        return false;
    }
    const std::string text = ClaudeHooksInstaller::removing(*old, commands());
    if (ConfigurationText::parseOrThrow(text).members().empty()) {
        hooks.remove();
    } else {
        hooks.write(text, old);
    }
    forgetConfiguration();
    return true;
}

} // namespace veslora
