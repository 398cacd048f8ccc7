// SPDX-License-Identifier: MIT
// The queue of permission requests that the island may answer, and the rules by which one leaves it
// unanswered. A plain value without a clock; its owner keeps it on one thread. What it is given as
// `steadyNow` is seconds on a clock that nobody can set and that goes on while the machine sleeps.
#pragma once

#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/ClaudeSessionFile.h"
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"
#include "VesloraCore/Agents/Hooks/HookScripts.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class ClaudePermissions {
  public:
    /// How long a request can be answered, in seconds; as long as the hook script waits.
    static constexpr double wait = HookScripts::permissionWait;

    /// Until when a request can be answered, on the steady clock: for `wait` seconds from `receivedAt` on,
    /// which is on the wall clock, as is `now`. A request from the future counts as just filed, so that no
    /// setting of the wall clock gives one more than `wait`.
    [[nodiscard]] static double answerBy(Timestamp receivedAt, Timestamp now, double steadyNow);
    /// Whether there is still time for an answer. There is none at just the deadline.
    [[nodiscard]] static bool isAnswerable(const ClaudePermissionRequest& request, double steadyNow);

    /// Appends a request, unless one of the same id is held.
    void add(const ClaudePermissionRequest& request);
    /// Takes out every request of an id; an unknown one does nothing.
    void remove(std::string_view id);
    /// Takes out what can't be answered any more, so that an evening of prompts leaves nothing behind.
    /// Gives their ids, in order of arrival.
    std::vector<std::string> removeExpired(double steadyNow);

    /// Those whose deadline lies after `steadyNow`, the oldest first.
    [[nodiscard]] std::vector<ClaudePermissionRequest> pending(double steadyNow) const;
    /// When a request can no longer be answered; nothing for an unknown id.
    [[nodiscard]] std::optional<double> deadline(std::string_view id) const;
    /// The first of all deadlines; nothing without a request.
    [[nodiscard]] std::optional<double> nextDeadline() const;

    /// Whether a decision from outside has any effect on a tool's prompt. Claude Code runs the hook for a
    /// question and for a plan too, but goes on asking in the terminal whatever the hook says.
    [[nodiscard]] static bool canBeAnsweredOutside(std::string_view tool);
    /// Whether an event proves that the user has dealt with a request in the terminal: a later prompt of its
    /// session, or the later end of just that tool use. The end of a turn or of another tool proves nothing,
    /// since it may be a subagent's.
    [[nodiscard]] static bool isAnsweredElsewhere(const ClaudePermissionRequest& request,
                                                  const ClaudeHookEvent& event);
    /// Whether the session's file proves it: it was seen waiting, with the stamp `sawWaitingStamp`, for this
    /// request and now, with a later stamp, does not wait. Both stamps may be absent and then prove nothing.
    [[nodiscard]] static bool isAnsweredElsewhere(const ClaudePermissionRequest& request,
                                                  std::optional<Timestamp> sawWaitingStamp,
                                                  const ClaudeSessionFile& file);

    bool operator==(const ClaudePermissions&) const = default;

  private:
    std::vector<ClaudePermissionRequest> m_requests; ///< in order of arrival
};

} // namespace veslora
