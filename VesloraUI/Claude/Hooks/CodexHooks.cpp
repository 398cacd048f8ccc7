// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/CodexHooks.h"

#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"

#include <utility>

namespace veslora {

using ClaudeHooksInstaller::HookSet;

CodexHooks::CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile)
    : AgentHooks(files, support, std::move(hooksFile), codexHookNames) {}

AgentHooks::Found CodexHooks::find(std::optional<std::string_view> text) const {
    const bool areIn = ClaudeHooksInstaller::isInstalled(text, commands(), HookSet::codex());
    const bool areSomeIn = ClaudeHooksInstaller::isPartlyInstalled(text, commands(), HookSet::codex());
    return {.all = areIn, .any = areIn || areSomeIn};
}

void CodexHooks::install() {
    ConfigurationFile hooks(m_files, m_configuration);
    const bool hadOurs = ClaudeHooksInstaller::holdsAny(hooks.read(), commands());
    const std::string text = ClaudeHooksInstaller::installing(hooks.text(), commands(), HookSet::codex());
    FileError::throwIfFailed(m_support.create(), m_support.path());
    m_scripts.write();
    putIn(hooks, text, hadOurs);
}

bool CodexHooks::remove() {
    ConfigurationFile hooks(m_files, m_configuration);
    if (!hooks.read()) {
        return false;
    }
    const bool hadOurs = ClaudeHooksInstaller::holdsAny(hooks.text(), commands());
    takeOut(hooks, ClaudeHooksInstaller::removing(*hooks.text(), commands()), hadOurs);
    return true;
}

} // namespace veslora
