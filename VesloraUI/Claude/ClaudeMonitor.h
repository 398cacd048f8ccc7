// SPDX-License-Identifier: MIT
// The live shell round the state of Claude Code's sessions: watches its files and the spool of its hooks,
// decides what happens to each permission request, and carries out the user's answers. Main thread only.
#pragma once

#include "VesloraCore/ClaudePermissions.h"
#include "VesloraCore/ClaudeSessions.h"
#include "VesloraUI/Claude/AgentMonitor.h"
#include "VesloraUI/Claude/AgentSpool.h"
#include "VesloraUI/Claude/ClaudeHooks.h"
#include "VesloraUI/Claude/ClaudeSessionDirectory.h"
#include "VesloraUI/Claude/SupportDirectory.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Platform.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class Defaults;

/// What a monitor needs of the machine.
struct AgentMonitorSeams {
    const Directories& directories;
    Scheduler& scheduler;
    Files& files;
    DirectoryWatcher& watcher;
    Processes& processes;
    HostApplications& hostApplications;
};

class ClaudeMonitor : public AgentMonitor {
    Q_OBJECT

  public:
    /// Seconds between two beats of the heartbeat; each brings a refresh, whatever the watches told.
    static constexpr double period = 2;

    ClaudeMonitor(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings);

    void start() override;
    void stop() override;
    void answer(const std::string& requestId, ClaudeDecision decision) override;
    void jump(const std::string& sessionId) override;
    void dismissApproval(const std::string& sessionId) override;
    void installHooks() override;
    void removeHooks() override;

    /// Reads everything anew and publishes what differs.
    void refresh();

    /// The sessions that had a file at the last refresh; absent while Claude Code's folder does not exist,
    /// when nothing can be said of any session.
    [[nodiscard]] const std::optional<std::set<std::string>>& liveSessionIds() const {
        return m_liveSessionIds;
    }

  private:
    struct Batch {
        std::vector<ClaudePermissionRequest> requests;
        std::vector<ClaudeHookEvent> events;
    };
    [[nodiscard]] Batch readSpool();
    void readSessionFiles();
    void handle(const std::vector<ClaudePermissionRequest>& requests);
    [[nodiscard]] bool canAnswer(const ClaudePermissionRequest& request,
                                 const std::vector<ClaudeSessionSummary>& sessions) const;
    void dropAnsweredElsewhere(const std::vector<ClaudeHookEvent>& events);
    void dropOvertaken();
    [[nodiscard]] const ClaudeSessionFile* fileOf(const std::string& sessionId) const;
    [[nodiscard]] const ClaudeSessionSummary* summaryOf(const std::string& sessionId) const;
    void publishState();
    void ensureWatches();
    void tick();

    AgentMonitorSeams m_seams;
    SupportDirectory& m_support;
    Defaults& m_settings;
    AgentSpool m_spool;
    AgentAnswers m_answers;
    ClaudeSessionDirectory m_sessionDirectory;
    ClaudeHooks m_hooks;

    ClaudeSessions m_state;
    ClaudePermissions m_permissions;
    std::vector<ClaudeSessionFile> m_sessionFiles;
    std::optional<std::set<std::string>> m_liveSessionIds;
    std::unique_ptr<DirectoryWatch> m_spoolWatch;
    std::unique_ptr<DirectoryWatch> m_sessionsWatch;
    Task m_refreshTask;
};

} // namespace veslora
