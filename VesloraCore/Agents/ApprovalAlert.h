// SPDX-License-Identifier: MIT
// The rules of the alert by which an agent asks for the user's permission.
#pragma once

#include <string>
#include <string_view>

namespace veslora {

namespace AlertNotice {

/// What a session that waits in its terminal asks for, in a few words: "Claude needs your permission to use
/// Bash" becomes "Wants to use Bash". Any other message stands as it is.
[[nodiscard]] std::string message(std::string_view message);

} // namespace AlertNotice

namespace ApprovalAlert {

/// How much of the fuse is left: from 1 at the start of the time for an answer to 0 at its end, `answerBy`,
/// and after. Both are steady seconds.
[[nodiscard]] double fuseProgress(double answerBy, double now);

} // namespace ApprovalAlert

} // namespace veslora
