// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentsModel.h"

#include <algorithm>

namespace veslora {

namespace {

template <class Status>
std::optional<ClaudeSessionSummary> firstWith(const std::vector<ClaudeSessionSummary>& summaries) {
    const auto found = std::ranges::find_if(
        summaries, [](const auto& summary) { return std::holds_alternative<Status>(summary.status); });
    return found == summaries.end() ? std::nullopt : std::optional(*found);
}

bool knowsSession(const AgentMonitor* monitor, const std::string& id) {
    return monitor &&
           std::ranges::any_of(monitor->summaries(), [&](const auto& summary) { return summary.id == id; });
}

bool knowsRequest(const AgentMonitor* monitor, const std::string& id) {
    return monitor && std::ranges::any_of(monitor->pendingRequests(),
                                          [&](const auto& request) { return request.id == id; });
}

} // namespace

AgentsModel::AgentsModel(AgentMonitor& claude, AgentMonitor* codex) : m_claude(claude), m_codex(codex) {
    connectTo(claude);
    if (codex) {
        connectTo(*codex);
    }
}

void AgentsModel::connectTo(AgentMonitor& monitor) {
    connect(&monitor, &AgentMonitor::summariesChanged, this, &AgentsModel::changed);
    connect(&monitor, &AgentMonitor::pendingRequestsChanged, this, &AgentsModel::changed);
    connect(&monitor, &AgentMonitor::hooksChanged, this, &AgentsModel::hooksChanged);
    if (const AgentUsageMonitor* usage = monitor.usage()) {
        connect(usage, &AgentUsageMonitor::changed, this, &AgentsModel::usageChanged);
    }
}

std::vector<AgentUsage> AgentsModel::usages() const {
    std::vector<AgentUsage> all;
    for (AgentMonitor* monitor : {&m_claude, m_codex}) {
        if (const AgentUsageMonitor* usage = monitor ? monitor->usage() : nullptr) {
            all.push_back(usage->usage());
        }
    }
    return all;
}

std::vector<ClaudeSessionSummary> AgentsModel::summaries() const {
    auto all = m_claude.summaries();
    if (m_codex) {
        all.insert(all.end(), m_codex->summaries().begin(), m_codex->summaries().end());
    }
    return ClaudeSessions::ordered(std::move(all));
}

std::vector<ClaudeSessionSummary> AgentsModel::waitingForApproval() const {
    auto waiting = summaries();
    std::erase_if(waiting, [](const auto& summary) {
        return !std::holds_alternative<ClaudeStatus::NeedsApproval>(summary.status);
    });
    return waiting;
}

std::optional<ClaudeSessionSummary> AgentsModel::latestFinished() const {
    return firstWith<ClaudeStatus::Finished>(summaries());
}

std::optional<ClaudeSessionSummary> AgentsModel::mostUrgent() const {
    const auto all = summaries();
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::optional<ClaudeSessionSummary> AgentsModel::longestWorking() const {
    return firstWith<ClaudeStatus::Working>(summaries());
}

std::vector<ClaudePermissionRequest> AgentsModel::pendingRequests() const {
    auto all = m_claude.pendingRequests();
    if (m_codex) {
        all.insert(all.end(), m_codex->pendingRequests().begin(), m_codex->pendingRequests().end());
    }
    std::ranges::stable_sort(all, std::less<>(), &ClaudePermissionRequest::answerBy);
    return all;
}

bool AgentsModel::anyHooksInstalled() const {
    return m_claude.hooksInstalled() || (m_codex && m_codex->hooksInstalled());
}

void AgentsModel::start() {
    m_claude.start();
    if (m_codex) {
        m_codex->start();
    }
}

void AgentsModel::stop() {
    m_claude.stop();
    if (m_codex) {
        m_codex->stop();
    }
}

AnswerOutcome AgentsModel::answer(const std::string& requestId, ClaudeDecision decision) {
    AgentMonitor& monitor = knowsRequest(m_codex, requestId) ? *m_codex : m_claude;
    return monitor.answer(requestId, decision);
}

AgentMonitor& AgentsModel::monitorOfSession(const std::string& sessionId) const {
    return knowsSession(m_codex, sessionId) ? *m_codex : m_claude;
}

void AgentsModel::jump(const std::string& sessionId) {
    monitorOfSession(sessionId).jump(sessionId);
}

void AgentsModel::dismissApproval(const std::string& sessionId) {
    monitorOfSession(sessionId).dismissApproval(sessionId);
}

void AgentsModel::setOnChange(std::function<void()> onChange) {
    if (m_codex) {
        m_codex->onChange = onChange;
    }
    m_claude.onChange = std::move(onChange);
}

} // namespace veslora
