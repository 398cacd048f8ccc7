// SPDX-License-Identifier: MIT
// Looks after answers that were given: one that no script has come for a second later did not reach its
// agent, which still waits. Main thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"

#include <functional>
#include <string>
#include <vector>

namespace veslora {

class AgentAnswers;

class UntakenAnswers {
  public:
    /// Seconds that a script has to come, which looks five times a second.
    static constexpr double patience = 1;

    UntakenAnswers(Scheduler& scheduler, const AgentAnswers& answers)
        : m_scheduler(scheduler), m_answers(answers) {}

    /// Calls `raise` if the answer still lies there after that time.
    void expect(const std::string& requestId, const std::string& sessionId, std::function<void()> raise);
    /// The user has dealt with the session's wait: nothing of it is raised any more.
    void forget(const std::string& sessionId);
    void stop() { m_expected.clear(); }

  private:
    struct Expected {
        std::string requestId;
        std::string sessionId;
        std::function<void()> raise;
        double due = 0; ///< on the steady clock
        Task task;
    };
    void await(Expected& expected);
    void check(const std::string& requestId);

    Scheduler& m_scheduler;
    const AgentAnswers& m_answers;
    std::vector<Expected> m_expected;
};

} // namespace veslora
