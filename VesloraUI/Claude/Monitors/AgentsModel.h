// SPDX-License-Identifier: MIT
// The one face of all agents: views and the island ask it for sessions and requests without caring which
// agent is behind them. It keeps the lists of all monitors merged, and merges them once for each change.
// Main thread only.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"
#include "VesloraUI/Store/AlertPausing.h"

#include <QList>
#include <QObject>
#include <QQmlEngine>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veslora {

class AgentsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The agents as views name them, in their order.
    Q_PROPERTY(QList<int> kinds READ kinds CONSTANT FINAL)

  public:
    using Monitors = std::vector<AgentMonitor*>;

    /// One monitor for each agent, in the order of the agents' table. What is asked under an id that none of
    /// them knows goes to the first, and under one that several know to the last of these. Without any there
    /// are no sessions and no requests, and every answer is too late: for an island that is only looked at.
    explicit AgentsModel(Monitors monitors);

    [[nodiscard]] const Monitors& monitors() const { return m_monitors; }
    /// Null while nothing is known of that agent.
    [[nodiscard]] AgentMonitor* monitorOf(AgentKind kind) const;
    /// Its monitor's, or what the program's own table says of an agent of which nothing is known.
    [[nodiscard]] const AgentTraits& traitsOf(AgentKind kind) const;
    [[nodiscard]] QList<int> kinds() const;

    // Each list is valid until the next change. What is to outlive one, such as a call that answers or jumps,
    // has to be copied.

    /// Of all agents, as `ClaudeSessions::ordered` sorts them.
    [[nodiscard]] const std::vector<ClaudeSessionSummary>& summaries() const { return m_summaries; }
    [[nodiscard]] const std::vector<ClaudeSessionSummary>& waitingForApproval() const { return m_waiting; }
    /// Of all agents, oldest first; of two that came at one moment the earlier agent's.
    [[nodiscard]] const std::vector<ClaudePermissionRequest>& pendingRequests() const {
        return m_pendingRequests;
    }

    [[nodiscard]] std::optional<ClaudeSessionSummary> latestFinished() const;
    [[nodiscard]] std::optional<ClaudeSessionSummary> mostUrgent() const;
    [[nodiscard]] std::optional<ClaudeSessionSummary> longestWorking() const;
    /// Each agent's use of tokens as of now, in the agents' order; without those that nothing is known of.
    [[nodiscard]] std::vector<AgentUsage> usages() const;
    [[nodiscard]] bool anyHooksInstalled() const;
    /// How often the lists of sessions and of requests were merged: once for each change.
    [[nodiscard]] std::uint64_t merges() const { return m_merges; }

    void start();
    void stop();

    AnswerOutcome answer(const std::string& requestId, ClaudeDecision decision);
    void jump(const std::string& sessionId);
    void dismissApproval(const std::string& sessionId);

    /// From now on alerts are paused when that says so, for every agent. To be called at most once; it must
    /// outlive this. Without it they never are.
    void obey(const AlertPausing& pausing);
    [[nodiscard]] bool areAlertsPaused() const { return m_pausing != nullptr && m_pausing->isPaused(); }

    /// Hears of every change of sessions and requests, and when a pause of alerts begins or ends, after the
    /// fact and before `changed` tells of it: the island settles which view shows before any view reads the
    /// change, so that one on its way out keeps what it showed. Replaces the one before.
    void setOnChange(std::function<void()> onChange) { m_onChange = std::move(onChange); }

  signals:
    void changed();
    void hooksChanged();
    void lastSignChanged();
    void usageChanged();

  private:
    void connectTo(AgentMonitor& monitor);
    void takeChange();
    void merge();
    [[nodiscard]] AgentMonitor* monitorOfSession(const std::string& sessionId) const;
    [[nodiscard]] AgentMonitor* monitorOfRequest(const std::string& requestId) const;

    Monitors m_monitors;
    std::vector<ClaudeSessionSummary> m_summaries;
    std::vector<ClaudeSessionSummary> m_waiting;
    std::vector<ClaudePermissionRequest> m_pendingRequests;
    std::function<void()> m_onChange;
    const AlertPausing* m_pausing = nullptr;
    std::uint64_t m_merges = 0;
};

} // namespace veslora
