// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentsModel.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veslora {

namespace {

template <class Status>
std::optional<ClaudeSessionSummary> firstWith(const std::vector<ClaudeSessionSummary>& summaries) {
    const auto found = std::ranges::find_if(
        summaries, [](const auto& summary) { return std::holds_alternative<Status>(summary.status); });
    return found == summaries.end() ? std::nullopt : std::optional(*found);
}

/// What `list` gives of each monitor, one after the other.
template <class Item>
std::vector<Item> joined(const AgentsModel::Monitors& monitors,
                         const std::vector<Item>& (AgentMonitor::*list)() const) {
    std::vector<Item> all;
    for (const AgentMonitor* monitor : monitors) {
        const std::vector<Item>& own = (monitor->*list)();
        all.insert(all.end(), own.begin(), own.end());
    }
    return all;
}

/// The last monitor whose list holds an item of that id, and otherwise the first monitor; null without any.
template <class Item>
AgentMonitor* monitorWith(const AgentsModel::Monitors& monitors, const std::string& id,
                          const std::vector<Item>& (AgentMonitor::*list)() const) {
    const auto found = std::find_if(monitors.rbegin(), monitors.rend(), [&](const AgentMonitor* monitor) {
        const std::vector<Item>& own = (monitor->*list)();
        return std::ranges::find(own, id, &Item::id) != own.end();
    });
    return found != monitors.rend() ? *found : monitors.empty() ? nullptr : monitors.front();
}

} // namespace

AgentsModel::AgentsModel(Monitors monitors) : m_monitors(std::move(monitors)) {
    for (AgentMonitor* monitor : m_monitors) {
        connectTo(*monitor);
    }
    merge();
}

void AgentsModel::connectTo(AgentMonitor& monitor) {
    connect(&monitor, &AgentMonitor::changed, this, &AgentsModel::takeChange);
    connect(&monitor, &AgentMonitor::hooksChanged, this, &AgentsModel::hooksChanged);
    connect(&monitor, &AgentMonitor::lastSignChanged, this, &AgentsModel::lastSignChanged);
    if (const AgentUsageMonitor* usage = monitor.usage()) {
        connect(usage, &AgentUsageMonitor::changed, this, &AgentsModel::usageChanged);
    }
}

void AgentsModel::takeChange() {
    merge();
    if (m_onChange) {
        m_onChange();
    }
    emit changed();
}

/// OPTIMIZATION: a session that begins to wait lets views and the island ask two dozen questions. Each copied
/// and sorted everything; now both lists are merged once.
void AgentsModel::merge() {
    ++m_merges;
    m_summaries = ClaudeSessions::ordered(joined(m_monitors, &AgentMonitor::summaries));
    m_waiting.clear();
    std::ranges::copy_if(m_summaries, std::back_inserter(m_waiting), [](const auto& summary) {
        return std::holds_alternative<ClaudeStatus::NeedsApproval>(summary.status);
    });
    m_pendingRequests = joined(m_monitors, &AgentMonitor::pendingRequests);
    std::ranges::stable_sort(m_pendingRequests, std::less<>(), &ClaudePermissionRequest::answerBy);
}

void AgentsModel::obey(const AlertPausing& pausing) {
    m_pausing = &pausing;
    // First, so that what is to be shown is judged once no request is left.
    for (AgentMonitor* monitor : m_monitors) {
        monitor->obey(pausing);
    }
    connect(m_pausing, &AlertPausing::changed, this, [this] {
        if (m_onChange) {
            m_onChange();
        }
    });
}

AgentMonitor* AgentsModel::monitorOf(AgentKind kind) const {
    const auto found = std::ranges::find(m_monitors, kind,
                                         [](const AgentMonitor* monitor) { return monitor->traits().kind; });
    return found == m_monitors.end() ? nullptr : *found;
}

const AgentTraits& AgentsModel::traitsOf(AgentKind kind) const {
    const AgentMonitor* monitor = monitorOf(kind);
    return monitor ? monitor->traits() : veslora::traitsOf(kind);
}

QList<int> AgentsModel::kinds() const {
    QList<int> kinds;
    for (const AgentMonitor* monitor : m_monitors) {
        kinds.append(static_cast<int>(monitor->traits().kind));
    }
    return kinds;
}

std::vector<AgentUsage> AgentsModel::usages() const {
    std::vector<AgentUsage> all;
    for (AgentMonitor* monitor : m_monitors) {
        if (const AgentUsageMonitor* usage = monitor->usage()) {
            all.push_back(usage->usage());
        }
    }
    return all;
}

std::optional<ClaudeSessionSummary> AgentsModel::latestFinished() const {
    return firstWith<ClaudeStatus::Finished>(m_summaries);
}

std::optional<ClaudeSessionSummary> AgentsModel::mostUrgent() const {
    return m_summaries.empty() ? std::nullopt : std::optional(m_summaries.front());
}

std::optional<ClaudeSessionSummary> AgentsModel::longestWorking() const {
    return firstWith<ClaudeStatus::Working>(m_summaries);
}

bool AgentsModel::anyHooksInstalled() const {
    return std::ranges::any_of(m_monitors, &AgentMonitor::hooksInstalled);
}

void AgentsModel::start() {
    for (AgentMonitor* monitor : m_monitors) {
        monitor->start();
    }
}

void AgentsModel::stop() {
    for (AgentMonitor* monitor : m_monitors) {
        monitor->stop();
    }
}

AgentMonitor* AgentsModel::monitorOfSession(const std::string& sessionId) const {
    return monitorWith(m_monitors, sessionId, &AgentMonitor::summaries);
}

AgentMonitor* AgentsModel::monitorOfRequest(const std::string& requestId) const {
    return monitorWith(m_monitors, requestId, &AgentMonitor::pendingRequests);
}

AnswerOutcome AgentsModel::answer(const std::string& requestId, ClaudeDecision decision) {
    AgentMonitor* monitor = monitorOfRequest(requestId);
    return monitor ? monitor->answer(requestId, decision) : AnswerOutcome::tooLate;
}

void AgentsModel::jump(const std::string& sessionId) {
    if (AgentMonitor* monitor = monitorOfSession(sessionId)) {
        monitor->jump(sessionId);
    }
}

void AgentsModel::dismissApproval(const std::string& sessionId) {
    if (AgentMonitor* monitor = monitorOfSession(sessionId)) {
        monitor->dismissApproval(sessionId);
    }
}

} // namespace veslora
