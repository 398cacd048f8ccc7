// SPDX-License-Identifier: MIT
// The live shell round the state of Codex's sessions: hears of them through the spool of its hooks, holds
// them against the processes that run, and carries out the user's answers. Main thread only.
#pragma once

#include "VesloraCore/Agents/CodexSessions.h"
#include "VesloraCore/Agents/Hooks/CodexSpoolName.h"
#include "VesloraUI/Claude/Hooks/CodexHooks.h"
#include "VesloraUI/Claude/Monitors/CodexUsageMonitor.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"

#include <map>
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
    /// What a request's file says, as far as it could be understood.
    struct Prompt {
        std::string id;
        CodexHookEvent event;
        std::string tool;
        std::optional<ClaudePermissionRequest> request; ///< absent if it is too long for the island
    };
    /// On any thread; only the outcome touches `monitor`.
    [[nodiscard]] static SpoolNews understand(CodexMonitor* monitor, const std::string& home,
                                              const SpoolFile& file);
    [[nodiscard]] static std::optional<Prompt> promptOf(const SpoolFile& file, const CodexSpoolName& name,
                                                        const std::string& home);
    void take(CodexHookEvent event);
    void take(const Prompt& prompt);
    [[nodiscard]] std::optional<std::int32_t> sessionProcess(std::optional<std::int32_t> hookParent);
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
    std::map<std::int32_t, bool> m_isServer; ///< hooks' parents that were looked at since `readSessions`
    std::vector<ClaudePermissionRequest> m_newRequests; ///< that `readSessions` has not looked at yet
    CodexUsageMonitor m_usage;
};

} // namespace veslora
