// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/UntakenAnswers.h"

#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <utility>

namespace veslora {

void UntakenAnswers::expect(const std::string& requestId, const std::string& sessionId,
                            std::function<void()> raise) {
    m_expected.push_back(
        {requestId, sessionId, std::move(raise), m_scheduler.steadyNow() + patience, Task()});
    await(m_expected.back());
}

void UntakenAnswers::await(Expected& expected) {
    expected.task = m_scheduler.after(expected.due - m_scheduler.steadyNow(),
                                      [this, id = expected.requestId] { check(id); });
}

void UntakenAnswers::check(const std::string& requestId) {
    const auto found = std::ranges::find(m_expected, requestId, &Expected::requestId);
    if (found == m_expected.end()) {
        return;
    }
    // A wall clock that is set forward ends a wait early.
    if (m_scheduler.steadyNow() < found->due) {
        await(*found);
        return;
    }
    const auto raise = std::move(found->raise);
    m_expected.erase(found);
    if (!m_answers.hasBeenTaken(requestId)) {
        qCInfo(Logs::agents, "nobody took the answer to %s", requestId.c_str());
        raise();
    }
}

void UntakenAnswers::forget(const std::string& sessionId) {
    std::erase_if(m_expected, [&](const Expected& expected) { return expected.sessionId == sessionId; });
}

} // namespace veslora
