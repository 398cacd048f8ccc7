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

/// Seconds for which the agent waits for an answer from here before it asks in the terminal itself.
inline constexpr double answerWindow = 20;

/// How much of the fuse is left: from 1 when the request came in to 0 at the end of the answer window and
/// after.
[[nodiscard]] double fuseProgress(Timestamp receivedAt, Timestamp now);

} // namespace ApprovalAlert

} // namespace veslora
