// SPDX-License-Identifier: MIT
// The one face of all agents: views and the island ask it for sessions and requests without caring which
// agent stands behind them. It holds nothing of its own; everything is worked out from the monitors at each
// call. Main thread only.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"

#include <QObject>
#include <QQmlEngine>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class AgentsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

  public:
    /// The agents as views name them.
    enum Agent { Claude = static_cast<int>(AgentKind::claude), Codex = static_cast<int>(AgentKind::codex) };
    Q_ENUM(Agent)

    /// `codex` may be null: nothing is then known of that agent.
    AgentsModel(AgentMonitor& claude, AgentMonitor* codex);

    [[nodiscard]] AgentMonitor& claude() const { return m_claude; }
    [[nodiscard]] AgentMonitor* codex() const { return m_codex; }

    /// What there is to say of an agent, whatever it does.
    [[nodiscard]] static const AgentTraits& traitsOf(AgentKind kind) { return veslora::traitsOf(kind); }

    [[nodiscard]] std::vector<ClaudeSessionSummary> summaries() const;
    [[nodiscard]] std::vector<ClaudeSessionSummary> waitingForApproval() const;
    [[nodiscard]] std::optional<ClaudeSessionSummary> latestFinished() const;
    [[nodiscard]] std::optional<ClaudeSessionSummary> mostUrgent() const;
    [[nodiscard]] std::optional<ClaudeSessionSummary> longestWorking() const;
    /// Of all agents, oldest first; Claude Code's first of two that came at one moment.
    [[nodiscard]] std::vector<ClaudePermissionRequest> pendingRequests() const;
    /// Each agent's use of tokens as of now, Claude Code's first; without those that nothing is known of.
    [[nodiscard]] std::vector<AgentUsage> usages() const;
    [[nodiscard]] bool anyHooksInstalled() const;

    void start();
    void stop();

    /// Each goes to Codex if the id is one of Codex's, and otherwise to Claude Code.
    AnswerOutcome answer(const std::string& requestId, ClaudeDecision decision);
    void jump(const std::string& sessionId);
    void dismissApproval(const std::string& sessionId);

    /// Hears of every change of sessions and requests, after the fact. Replaces the one before.
    void setOnChange(std::function<void()> onChange);

  signals:
    void changed();
    void hooksChanged();
    void usageChanged();

  private:
    void connectTo(AgentMonitor& monitor);
    [[nodiscard]] AgentMonitor& monitorOfSession(const std::string& sessionId) const;

    AgentMonitor& m_claude;
    AgentMonitor* m_codex;
};

} // namespace veslora
