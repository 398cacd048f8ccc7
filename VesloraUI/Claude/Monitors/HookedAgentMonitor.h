// SPDX-License-Identifier: MIT
// The monitor of any agent: the spool that the agent's hooks fill, the queue of requests and their answers,
// the signs of life, the watches, the tick, and what is published. What the agent's sessions are its source
// knows. Main thread only.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentMonitor.h"
#include "VesloraUI/Claude/Monitors/AgentMonitorSeams.h"
#include "VesloraUI/Claude/Monitors/AgentParts.h"
#include "VesloraUI/Claude/Monitors/RequestQueue.h"
#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Claude/Spool/AgentSpool.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Claude/Spool/UntakenAnswers.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veslora {

class Defaults;

class HookedAgentMonitor final : public AgentMonitor {
    Q_OBJECT

  public:
    /// Seconds between two beats of the heartbeat; each brings a refresh, whatever the watches told.
    static constexpr double period = 2;

    HookedAgentMonitor(AgentParts parts, const AgentMonitorSeams& seams, SupportDirectory& support,
                       Defaults& settings);

    void start() override;
    void stop() override;
    AnswerOutcome answer(const std::string& requestId, ClaudeDecision decision) override;
    void jump(const std::string& sessionId) override;
    void dismissApproval(const std::string& sessionId) override;
    void obey(const AlertPausing& pausing) override;
    void installHooks() override;
    void removeHooks() override;
    [[nodiscard]] Task tryHooks(std::function<void(HookTrialResult)> done) override;

    /// Reads everything again and publishes what differs.
    void refresh();

  private:
    void tick();
    /// A folder that is not there yet, or that somebody replaced, is watched once it can be.
    void ensureWatches();
    void ensureWatch(std::unique_ptr<DirectoryWatch>& watch, const std::string& path,
                     DirectoryChanges changes);
    void readSessions();
    void publishState();
    /// Queues the requests that the user may answer in the island, and leaves the others to the agent.
    void handle(const std::vector<ClaudePermissionRequest>& requests);
    [[nodiscard]] bool areAlertsPaused() const;
    void letGoWhilePaused();
    [[nodiscard]] bool mayAnswer(const ClaudePermissionRequest& request) const;
    void end(const std::vector<RequestEnd>& ends);
    [[nodiscard]] SessionPlace placeOf(const ClaudeSessionSummary& session) const;
    void raiseAgain(const std::function<void()>& raise);
    void raiseTerminal(const std::string& sessionId);
    bool activateHostOf(std::int32_t pid);

    AgentParts m_parts;
    AgentMonitorSeams m_seams;
    SupportDirectory& m_support;
    Defaults& m_settings;
    const AlertPausing* m_pausing = nullptr;
    AgentAnswers m_answers;
    AgentSpool m_spool;
    RequestQueue m_requests;
    UntakenAnswers m_untakenAnswers;
    std::shared_ptr<SupportDirectory::Presence> m_presence;
    std::unique_ptr<DirectoryWatch> m_spoolWatch;
    std::unique_ptr<DirectoryWatch> m_sessionsWatch;
    Task m_refreshTask;
    Task m_raiseTask;
    Task m_trialEnd; ///< tells that a made-up session is over
};

} // namespace veslora
