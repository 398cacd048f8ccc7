// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"

#include "VesloraUI/Platform/Observable.h"

namespace veslora {

void AgentMonitor::publish(std::vector<ClaudeSessionSummary> summaries,
                           std::vector<ClaudePermissionRequest> pendingRequests) {
    if (m_summaries == summaries && m_pendingRequests == pendingRequests) {
        return;
    }
    m_summaries = std::move(summaries);
    m_pendingRequests = std::move(pendingRequests);
    emit changed();
}

void AgentMonitor::setHooks(const AgentHooksState& hooks) {
    assign(this, m_hooks, hooks, &AgentMonitor::hooksChanged);
}

void AgentMonitor::setLastSign(const std::optional<HookSign>& sign) {
    assign(this, m_lastSign, sign, &AgentMonitor::lastSignChanged);
}

} // namespace veslora
