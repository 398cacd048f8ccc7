// SPDX-License-Identifier: MIT
// How Claude Code tells of its sessions: by a file for each that runs, and by the events of its hooks. Main
// thread only.
#pragma once

#include "VesloraCore/Agents/ClaudeSessions.h"
#include "VesloraUI/Claude/Monitors/AgentMonitorSeams.h"
#include "VesloraUI/Claude/Monitors/AgentSource.h"
#include "VesloraUI/Claude/Monitors/ClaudeSessionDirectory.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class ClaudeSource final : public AgentSource {
  public:
    explicit ClaudeSource(const AgentMonitorSeams& seams);

    /// The sessions that had a file when they were last read; absent while Claude Code's folder does not
    /// exist, when nothing can be said of any session.
    [[nodiscard]] const std::optional<std::set<std::string>>& liveSessionIds() const {
        return m_liveSessionIds;
    }
    [[nodiscard]] const std::string& sessionsFolder() const { return m_sessionDirectory.path(); }

    [[nodiscard]] UnderstandSpoolFile reader(AgentAnswers& answers) override;
    [[nodiscard]] Requests readSessions() override;
    [[nodiscard]] std::vector<RequestEnd> endedByNews(const Requests& open) override;
    [[nodiscard]] std::vector<RequestEnd> overtaken(const Requests& open) const override;
    [[nodiscard]] std::vector<ClaudeSessionSummary> sessions() const override;
    [[nodiscard]] SessionPlace placeOf(const ClaudeSessionSummary& session) const override;
    /// The session's file still says that it waits until the script has come for the answer. Without this the
    /// notice of that wait would flash up behind the request.
    [[nodiscard]] std::function<void()> answered(const std::string& sessionId) override;
    void markSeen(const std::string& sessionId) override { m_state.markSeen(sessionId); }
    void dismissApproval(const std::string& sessionId) override { m_state.dismissApproval(sessionId); }

  private:
    using Events = std::vector<ClaudeHookEvent>;

    void take(const ClaudeHookEvent& event);
    void readSessionFiles();
    [[nodiscard]] bool isAnsweredElsewhere(const ClaudePermissionRequest& request,
                                           const Events& events) const;
    [[nodiscard]] const ClaudeSessionFile* fileOf(const std::string& sessionId) const;

    const Scheduler& m_scheduler;
    const Processes& m_processes;
    std::string m_home;
    ClaudeSessionDirectory m_sessionDirectory;

    ClaudeSessions m_state;
    Requests m_newRequests;                   ///< that `readSessions` has not given yet
    Events m_newEvents;                       ///< that `endedByNews` has not looked at yet
    std::set<std::string> m_requestsWithFile; ///< open requests whose session was seen to have a file
    std::vector<ClaudeSessionFile> m_sessionFiles;
    std::optional<std::set<std::string>> m_liveSessionIds;
};

} // namespace veslora
