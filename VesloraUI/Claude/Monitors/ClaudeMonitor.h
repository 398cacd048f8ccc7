// SPDX-License-Identifier: MIT
// The live shell round the state of Claude Code's sessions: watches its files and the spool of its hooks,
// decides what happens to each permission request, and carries out the user's answers. Main thread only.
#pragma once

#include "VesloraCore/Agents/ClaudeSessions.h"
#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Monitors/ClaudeSessionDirectory.h"
#include "VesloraUI/Claude/Monitors/ClaudeUsageMonitor.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class ClaudeMonitor : public HookedAgentMonitor {
    Q_OBJECT

  public:
    ClaudeMonitor(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings);

    [[nodiscard]] ClaudeUsageMonitor* usage() override { return &m_usage; }
    void stop() override;

    /// The sessions that had a file at the last refresh; absent while Claude Code's folder does not exist,
    /// when nothing can be said of any session.
    [[nodiscard]] const std::optional<std::set<std::string>>& liveSessionIds() const {
        return m_liveSessionIds;
    }

  private:
    /// What the spool brought and `readSessions` has not looked at yet.
    struct Batch {
        std::vector<ClaudePermissionRequest> requests;
        std::vector<ClaudeHookEvent> events;
    };
    /// On any thread; only the outcome touches `monitor`.
    [[nodiscard]] static SpoolNews understand(ClaudeMonitor* monitor, const std::string& home,
                                              const SpoolFile& file);
    void take(const ClaudeHookEvent& event);
    void readSessionFiles();
    void dropAnsweredElsewhere(const std::vector<ClaudeHookEvent>& events);
    void dropGone();
    [[nodiscard]] const ClaudeSessionFile* fileOf(const std::string& sessionId) const;

    [[nodiscard]] AgentHooks& hooks() override { return m_hooks; }
    void readSessions() override;
    [[nodiscard]] std::vector<ClaudeSessionSummary> currentSessions() const override;
    void dropOvertaken() override;
    /// The session's file still says that it waits until the script has come for the answer. Without this the
    /// notice of that wait would flash up behind the request.
    [[nodiscard]] std::function<void()> requestWasAnswered(const std::string& sessionId) override;
    void markSeen(const std::string& sessionId) override { m_state.markSeen(sessionId); }
    void hideApproval(const std::string& sessionId) override { m_state.dismissApproval(sessionId); }
    [[nodiscard]] std::optional<std::string> paneOf(const std::string& sessionId) const override;
    void ensureWatches() override;

    ClaudeSessionDirectory m_sessionDirectory;
    ClaudeHooks m_hooks;

    ClaudeSessions m_state;
    Batch m_batch;
    std::set<std::string> m_requestsWithFile; ///< pending requests whose session was seen to have a file
    std::vector<ClaudeSessionFile> m_sessionFiles;
    std::optional<std::set<std::string>> m_liveSessionIds;
    std::unique_ptr<DirectoryWatch> m_sessionsWatch;
    ClaudeUsageMonitor m_usage;
};

} // namespace veslora
