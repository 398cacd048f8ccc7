// SPDX-License-Identifier: MIT
// What the rest of the program sees of one agent: its sessions, the requests that can be answered, and the
// hooks. Main thread only.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraCore/Agents/ClaudeDecision.h"
#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/ClaudeSessions.h"
#include "VesloraCore/Agents/Hooks/HookSign.h"
#include "VesloraUI/Claude/Hooks/AgentHooksState.h"
#include "VesloraUI/Claude/Monitors/AgentUsageMonitor.h"
#include "VesloraUI/Platform/Task.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class AlertPausing;

/// What became of an answer.
enum class AnswerOutcome {
    given,   ///< it lies ready for the agent
    tooLate, ///< the request was over, so the agent asks in its terminal; the session goes on waiting
    failed,  ///< it could not be written; the request can be answered again
};

/// What a made-up prompt came to.
enum class HookTrialResult {
    allowed,
    denied,
    unanswered, ///< nobody answered in time
    passedOn,   ///< it was left to the terminal at once
    failed,     ///< the script could not be run
};

class AgentMonitor : public QObject {
    Q_OBJECT

  public:
    /// `traits` must outlive this, and so must `usage`, which may be null.
    AgentMonitor(const AgentTraits& traits, AgentUsageMonitor* usage) : m_traits(traits), m_usage(usage) {}

    [[nodiscard]] const AgentTraits& traits() const { return m_traits; }

    /// Every live session, in the order in which they are shown.
    [[nodiscard]] const std::vector<ClaudeSessionSummary>& summaries() const { return m_summaries; }
    /// The requests that the island may answer, oldest first.
    [[nodiscard]] const std::vector<ClaudePermissionRequest>& pendingRequests() const {
        return m_pendingRequests;
    }
    /// Everything of ours is in the agent's configuration and ready to run.
    [[nodiscard]] bool hooksInstalled() const { return m_hooks.areInstalled; }
    /// Something of ours is there, but not all of it.
    [[nodiscard]] bool hooksOutdated() const { return m_hooks.areOutdated; }

    /// The user has told the agent to run them, as far as that can be read.
    [[nodiscard]] bool hooksTrusted() const { return m_hooks.areTrusted; }
    /// When what is installed was written.
    [[nodiscard]] Timestamp hooksChangedAt() const { return m_hooks.changedAt; }
    /// The last thing that the hooks have told of a session; absent before the first.
    [[nodiscard]] const std::optional<HookSign>& lastSign() const { return m_lastSign; }

    /// What follows the agent's use of tokens; null where nothing does.
    [[nodiscard]] AgentUsageMonitor* usage() const { return m_usage; }

    virtual void start() = 0;
    virtual void stop() = 0;

    /// Tells the script that waits under that id what the user decided. A request that is over, and an
    /// unknown id, gets "pass" whatever the decision: a script that should still wait is let go, and
    /// otherwise the answer is cleared away after a while.
    virtual AnswerOutcome answer(const std::string& requestId, ClaudeDecision decision) = 0;
    /// Brings the session's terminal forward, and counts what the session had to say as seen.
    virtual void jump(const std::string& sessionId) = 0;
    virtual void dismissApproval(const std::string& sessionId) = 0;

    /// From now on, while alerts are paused, every request goes straight to its terminal. Those that can be
    /// answered when a pause begins are let go at once, also where they only wait to be shown. `pausing` must
    /// outlive this; without one alerts are never paused.
    virtual void obey(const AlertPausing& pausing) = 0;

    /// Writes the scripts and enters them in the agent's configuration, after a backup of it. Throws
    /// `InstallError` or `FileError`; the configuration is then as it was.
    virtual void installHooks() = 0;
    /// Takes out of the configuration what is ours. Throws as `installHooks` does.
    virtual void removeHooks() = 0;

    /// Files a made-up prompt by the installed script, as an agent would, and tells what came back; once,
    /// later and never within this call. Cancelling withdraws the prompt, and nobody is told.
    [[nodiscard]] virtual Task tryHooks(std::function<void(HookTrialResult)> done) = 0;

  signals:
    /// The sessions or the requests are others now; both are in place.
    void changed();
    void hooksChanged();
    void lastSignChanged();

  protected:
    /// Assigns what differs, and tells of it once if anything did.
    void publish(std::vector<ClaudeSessionSummary> summaries,
                 std::vector<ClaudePermissionRequest> pendingRequests);
    void setHooks(const AgentHooksState& hooks);
    void setLastSign(const std::optional<HookSign>& sign);

  private:
    const AgentTraits& m_traits;
    AgentUsageMonitor* m_usage;
    std::vector<ClaudeSessionSummary> m_summaries;
    std::vector<ClaudePermissionRequest> m_pendingRequests;
    AgentHooksState m_hooks;
    std::optional<HookSign> m_lastSign;
};

} // namespace veslora
