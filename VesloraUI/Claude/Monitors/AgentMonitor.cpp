// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"

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

void AgentMonitor::setHooks(bool areInstalled, bool areOutdated) {
    if (m_hooksInstalled == areInstalled && m_hooksOutdated == areOutdated) {
        return;
    }
    m_hooksInstalled = areInstalled;
    m_hooksOutdated = areOutdated;
    emit hooksChanged();
}

} // namespace veslora
