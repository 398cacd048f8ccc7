// SPDX-License-Identifier: MIT
// What the monitors of all agents have in common: the spool that the agent's hooks fill, the queue of
// requests and their answers, the signs of life, and the tick. What an agent's sessions are is for each
// monitor to know. Main thread only.
#pragma once

#include "VesloraCore/Calendar.h"
#include "VesloraUI/Claude/Hooks/AgentHooks.h"
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"
#include "VesloraUI/Claude/Monitors/RequestQueue.h"
#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Claude/Spool/AgentSpool.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Claude/Spool/UntakenAnswers.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Platform.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
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
    TerminalMultiplexer& multiplexer;
    std::shared_ptr<const Calendar> calendar; ///< says where days end, for what is counted by the day
};

class HookedAgentMonitor : public AgentMonitor {
    Q_OBJECT

  public:
    /// Seconds between two beats of the heartbeat; each brings a refresh, whatever the watches told.
    static constexpr double period = 2;

    void start() override;
    void stop() override;
    AnswerOutcome answer(const std::string& requestId, ClaudeDecision decision) override;
    void jump(const std::string& sessionId) override;
    void dismissApproval(const std::string& sessionId) override;
    void installHooks() override;
    void removeHooks() override;

    /// Never null.
    [[nodiscard]] AgentUsageMonitor* usage() override = 0;

    /// Reads everything anew and publishes what differs.
    void refresh();

  protected:
    /// `understand` is asked about each file of the spool.
    HookedAgentMonitor(const AgentTraits& traits, const AgentMonitorSeams& seams, SupportDirectory& support,
                       Defaults& settings, UnderstandSpoolFile understand);

    [[nodiscard]] virtual AgentHooks& hooks() = 0;
    /// Takes in what else tells of sessions than the spool, and handles the requests that this brought since
    /// the last call.
    virtual void readSessions() = 0;
    /// The sessions as of now.
    [[nodiscard]] virtual std::vector<ClaudeSessionSummary> currentSessions() const = 0;
    /// Takes out of the queue what the session is past, before the queue is published.
    virtual void dropOvertaken() = 0;
    /// The session's request was decided on from the island, though its agent may not have heard of it yet,
    /// so its wait no longer shows. What shows it again, should the agent never hear of it; it does nothing
    /// if the session has gone on from that wait by then.
    [[nodiscard]] virtual std::function<void()> requestWasAnswered(const std::string& sessionId) = 0;
    virtual void markSeen(const std::string& sessionId) = 0;
    virtual void hideApproval(const std::string& sessionId) = 0;
    /// The multiplexer's pane that the session is known to run in.
    [[nodiscard]] virtual std::optional<std::string> paneOf(const std::string& sessionId) const = 0;
    /// The processes that the session may run in; empty where none is known.
    [[nodiscard]] virtual std::vector<std::int32_t> processesOf(const ClaudeSessionSummary& session) const;
    /// A folder that is not there yet, or that somebody replaced, is watched once it can be.
    virtual void ensureWatches();

    void ensureWatch(std::unique_ptr<DirectoryWatch>& watch, const std::string& path,
                     DirectoryChanges changes);
    /// Queues the requests that the user may answer in the island, and leaves the others to the agent.
    void handle(const std::vector<ClaudePermissionRequest>& requests);

    /// Whether an event of that time is still worth hearing of.
    [[nodiscard]] bool isRecent(Timestamp time) const;
    [[nodiscard]] Timestamp now() const { return m_seams.scheduler.now(); }

    AgentMonitorSeams m_seams;
    SupportDirectory& m_support;
    AgentSpool m_spool;
    AgentAnswers m_answers;
    RequestQueue m_requests;

  private:
    void tick();
    void publishState();
    [[nodiscard]] bool mayAnswer(const ClaudePermissionRequest& request) const;
    [[nodiscard]] SessionPlace placeOf(const std::string& sessionId,
                                       const std::vector<ClaudeSessionSummary>& sessions) const;
    void raiseAgain(const std::function<void()>& raise);
    void raiseTerminal(const std::string& sessionId);
    bool activateHostOf(std::int32_t pid);

    Defaults& m_settings;
    std::shared_ptr<SupportDirectory::Presence> m_presence;
    std::unique_ptr<DirectoryWatch> m_spoolWatch;
    UntakenAnswers m_untakenAnswers;
    Task m_refreshTask;
    Task m_raiseTask;
};

} // namespace veslora
