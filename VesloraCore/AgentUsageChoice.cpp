// SPDX-License-Identifier: MIT
#include "VesloraCore/AgentUsageChoice.h"

namespace veslora::AgentUsageChoice {

std::vector<AgentKind> pick(std::optional<Timestamp> claude, std::optional<Timestamp> codex) {
    std::vector<AgentKind> agents;
    if (claude)
        agents.push_back(AgentKind::claude);
    if (codex) {
        const bool isLatest = !claude || *codex > *claude;
        agents.insert(isLatest ? agents.begin() : agents.end(), AgentKind::codex);
    }
    return agents;
}

} // namespace veslora::AgentUsageChoice
