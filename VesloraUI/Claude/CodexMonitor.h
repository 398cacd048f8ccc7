// SPDX-License-Identifier: MIT
// The live shell round the state of Codex's sessions: hears of them through the spool of its hooks, holds
// them against the processes that run, and carries out the user's answers. Main thread only.
#pragma once

#include "VesloraCore/CodexSessions.h"
#include "VesloraCore/CodexSpoolName.h"
#include "VesloraUI/Claude/CodexHooks.h"
#include "VesloraUI/Claude/CodexUsageMonitor.h"
#include "VesloraUI/Claude/HookedAgentMonitor.h"

#include <optional>
#include <string>
#include <vector>

namespace veslora {

class CodexMonitor : public HookedAgentMonitor {
    Q_OBJECT

  public:
    CodexMonitor(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings);

    [[nodiscard]] CodexUsageMonitor* usage() override { return &m_usage; }

  private:
    [[nodiscard]] std::vector<ClaudePermissionRequest> readSpool();
    void applyEvent(const SpoolFile& file, const CodexSpoolName& name);
    [[nodiscard]] std::optional<ClaudePermissionRequest> takeRequest(const SpoolFile& file,
                                                                     const CodexSpoolName& name);
    [[nodiscard]] std::optional<CodexHookEvent> eventOf(const SpoolFile& file,
                                                        const CodexSpoolName& name) const;
    [[nodiscard]] std::optional<std::int32_t> sessionProcess(std::optional<std::int32_t> hookParent) const;
    [[nodiscard]] std::vector<CodexSessions::Client> runningClients() const;

    [[nodiscard]] AgentHooks& hooks() override { return m_hooks; }
    void readSessions() override;
    [[nodiscard]] std::vector<ClaudeSessionSummary> currentSessions() const override;
    void dropOvertaken() override;
    [[nodiscard]] std::function<void()> requestWasAnswered(const std::string& sessionId) override;
    void markSeen(const std::string& sessionId) override { m_state.markSeen(sessionId); }
    void hideApproval(const std::string& sessionId) override { m_state.dismissApproval(sessionId); }
    /// Codex does not tell; its process may know.
    [[nodiscard]] std::optional<std::string> paneOf(const std::string& /*sessionId*/) const override {
        return std::nullopt;
    }

    /// Which of a folder's terminals is the session's can't be told.
    [[nodiscard]] std::vector<std::int32_t> processesOf(const ClaudeSessionSummary& session) const override {
        return m_state.processesOf(session.id);
    }

    CodexHooks m_hooks;
    CodexSessions m_state;
    CodexUsageMonitor m_usage;
};

} // namespace veslora
