// SPDX-License-Identifier: MIT
// How Codex tells of its sessions: by the events of its hooks alone, which are held against the processes
// that run. Main thread only.
#pragma once

#include "VesloraCore/Agents/CodexSessions.h"
#include "VesloraCore/Agents/Hooks/CodexSpoolName.h"
#include "VesloraUI/Claude/Monitors/AgentMonitorSeams.h"
#include "VesloraUI/Claude/Monitors/AgentSource.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class CodexSource final : public AgentSource {
  public:
    explicit CodexSource(const AgentMonitorSeams& seams);

    [[nodiscard]] UnderstandSpoolFile reader(AgentAnswers& answers) override;
    [[nodiscard]] Requests readSessions() override;
    /// None: what is heard of a session is in its status.
    [[nodiscard]] std::vector<RequestEnd> endedByNews(const Requests& /*open*/) override { return {}; }
    [[nodiscard]] std::vector<RequestEnd> overtaken(const Requests& open) const override;
    [[nodiscard]] std::vector<ClaudeSessionSummary> sessions() const override;
    /// Which of a folder's terminals is the session's can't be told. Codex tells no pane; its process may
    /// know.
    [[nodiscard]] SessionPlace placeOf(const ClaudeSessionSummary& session) const override {
        return {m_state.processesOf(session.id), std::nullopt};
    }
    [[nodiscard]] std::function<void()> answered(const std::string& sessionId) override;
    void markSeen(const std::string& sessionId) override { m_state.markSeen(sessionId); }
    void dismissApproval(const std::string& sessionId) override { m_state.dismissApproval(sessionId); }

  private:
    /// What a request's file says, as far as it could be understood.
    struct Prompt {
        std::string id;
        CodexHookEvent event;
        std::string tool;
        std::optional<ClaudePermissionRequest> request; ///< absent if it is too long for the island
    };
    [[nodiscard]] static std::optional<Prompt> promptOf(const SpoolFile& file, const CodexSpoolName& name,
                                                        const std::string& home);
    void take(CodexHookEvent event);
    void take(const Prompt& prompt, AgentAnswers& answers);
    [[nodiscard]] std::optional<std::int32_t> sessionProcess(std::optional<std::int32_t> hookParent);
    [[nodiscard]] std::vector<CodexSessions::Client> runningClients() const;

    const Scheduler& m_scheduler;
    const Processes& m_processes;
    std::string m_home;

    CodexSessions m_state;
    std::map<std::int32_t, bool> m_isServer; ///< hooks' parents that were looked at since `readSessions`
    Requests m_newRequests;                  ///< that `readSessions` has not given yet
};

} // namespace veslora
