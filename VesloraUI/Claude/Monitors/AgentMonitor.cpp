// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"

#include "VesloraUI/Platform/Observable.h"

namespace veslora {

void AgentMonitor::publish(std::vector<ClaudeSessionSummary> summaries,
                           std::vector<ClaudePermissionRequest> pendingRequests) {
    const bool haveSummaries = m_summaries != summaries;
    const bool haveRequests = m_pendingRequests != pendingRequests;
    // Both are in place before anybody hears of either.
    m_summaries = std::move(summaries);
    m_pendingRequests = std::move(pendingRequests);
    if ((haveSummaries || haveRequests) && onChange) {
        onChange();
    }
    if (haveSummaries) {
        emit summariesChanged();
    }
    if (haveRequests) {
        emit pendingRequestsChanged();
    }
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
