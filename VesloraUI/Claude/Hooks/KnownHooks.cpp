// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/KnownHooks.h"

#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Hooks/CodexHooks.h"

namespace veslora {

std::unique_ptr<AgentHooks> makeAgentHooks(AgentKind kind, Files& files, SupportDirectory& support,
                                           const Directories& directories) {
    if (kind == AgentKind::codex) {
        return std::make_unique<CodexHooks>(files, support, directories.codex + "/hooks.json");
    }
    return std::make_unique<ClaudeHooks>(files, support, directories.claude + "/settings.json",
                                         directories.executables);
}

} // namespace veslora
