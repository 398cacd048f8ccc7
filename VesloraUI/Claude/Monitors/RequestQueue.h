// SPDX-License-Identifier: MIT
// The requests of one agent that the island may answer, on their way through: taken in, held back while a
// multiplexer is asked whether the user looks at the terminal, shown, and gone at their deadline. What else
// ends a request is for the agent's monitor to know. Main thread only.
#pragma once

#include "VesloraCore/Agents/ClaudePermissions.h"
#include "VesloraUI/Claude/Monitors/FrontTerminal.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class AgentAnswers;

class RequestQueue {
  public:
    /// `changed` is called whenever what `shown` gives may have changed without a call from outside.
    RequestQueue(Scheduler& scheduler, FrontTerminal terminals, AgentAnswers& answers,
                 std::function<void()> changed);

    /// Takes a request whose `answerBy` is set, and answers "pass" once its terminal proves to be in front.
    /// Where that takes time, those that come after it are not shown before it either, so that none drops in
    /// front of another that the user is about to answer. Its time runs on meanwhile.
    void take(const ClaudePermissionRequest& request, const SessionPlace& place);
    /// An unknown id does nothing.
    void remove(const std::string& id);
    void removeExpired();
    /// Calls `changed` at the next deadline, at just that moment. To be called after whatever may move it;
    /// one wait is alive at most, and none without a request.
    void awaitDeadline();
    /// Waits for nothing any more and forgets what is held back. The others stay until they are removed.
    void stop();

    /// All that can still be answered, the oldest first, with those that are held back.
    [[nodiscard]] std::vector<ClaudePermissionRequest> open() const;
    /// Those that the user may see.
    [[nodiscard]] std::vector<ClaudePermissionRequest> shown() const;

  private:
    struct Held {
        std::string id;
        Task question;
        bool isDecided = false; ///< it is shown once those before it are
    };
    void decide(const std::string& id, bool isInFront);
    void release();

    Scheduler& m_scheduler;
    FrontTerminal m_terminals;
    AgentAnswers& m_answers;
    std::function<void()> m_changed;
    ClaudePermissions m_permissions;
    std::vector<Held> m_held; ///< in order of arrival
    std::optional<double> m_awaited;
    Task m_deadlineTask;
};

} // namespace veslora
