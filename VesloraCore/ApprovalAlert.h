// SPDX-License-Identifier: MIT
// The rules of the alert by which an agent asks for the user's leave.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <string>
#include <string_view>

namespace veslora {

namespace AlertNotice {

/// What a session that waits in its terminal asks for, in a few words: "Claude needs your permission to use
/// Bash" becomes "Wants to use Bash". Any other message stands as it is.
[[nodiscard]] std::string message(std::string_view message);

} // namespace AlertNotice

namespace ApprovalAlert {

/// Seconds during which a prompt that has just dropped under the pointer can't be answered yet, so that a
/// click meant for something else does not answer it.
inline constexpr double armingDelay = 0.6;

/// Seconds for which the agent waits for an answer from here before it asks in the terminal itself.
inline constexpr double answerWindow = 20;

/// Whether a prompt that came on screen at `shownAt` may be allowed or denied.
[[nodiscard]] bool isArmed(Timestamp shownAt, Timestamp now);

/// How much of the fuse is left: from 1 when the request came in to 0 at the end of the answer window and
/// after.
[[nodiscard]] double fuseProgress(Timestamp receivedAt, Timestamp now);

} // namespace ApprovalAlert

} // namespace veslora
