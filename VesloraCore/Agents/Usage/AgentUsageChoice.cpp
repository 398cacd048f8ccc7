// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/AgentUsageChoice.h"

#include <algorithm>

namespace veslora::AgentUsageChoice {

namespace {

const AgentUsage* find(const std::vector<AgentUsage>& usages, AgentKind agent) {
    const auto found = std::ranges::find(usages, agent, &AgentUsage::agent);
    return found == usages.end() ? nullptr : &*found;
}

std::optional<Timestamp> lastActivityOf(const AgentUsage* usage) {
    return usage ? usage->lastActivity() : std::nullopt;
}

} // namespace

std::vector<AgentKind> pick(std::optional<Timestamp> claude, std::optional<Timestamp> codex) {
    std::vector<AgentKind> agents;
    if (claude) {
        agents.push_back(AgentKind::claude);
    }
    if (codex) {
        const bool isLatest = !claude || *codex > *claude;
        agents.insert(isLatest ? agents.begin() : agents.end(), AgentKind::codex);
    }
    return agents;
}

std::vector<AgentUsage> shown(const std::vector<AgentUsage>& usages) {
    const auto agents =
        pick(lastActivityOf(find(usages, AgentKind::claude)), lastActivityOf(find(usages, AgentKind::codex)));
    std::vector<AgentUsage> ordered;
    for (const AgentKind agent : agents) {
        ordered.push_back(*find(usages, agent));
    }
    return ordered;
}

std::int64_t today(const std::vector<AgentUsage>& usages) {
    TokenSum sum;
    for (const AgentUsage& usage : usages) {
        sum.add({.input = usage.today});
    }
    return sum.totals().input;
}

} // namespace veslora::AgentUsageChoice
