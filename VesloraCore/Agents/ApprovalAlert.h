// SPDX-License-Identifier: MIT
// The rules of the alert by which an agent asks for the user's permission.
#pragma once

#include "VesloraCore/Text/Words.h"

#include <string>
#include <string_view>

namespace veslora {

namespace AlertNotice {

/// Of a session that waits and does not say for what.
inline constexpr const char* waitingForYou = translatable("AgentMessages", "Waiting for you");
/// Of one that waits for permission to use a tool, whose name follows.
inline constexpr std::string_view wantsToUse = "Wants to use ";

/// What a session that waits in its terminal asks for, in a few words: "Claude needs your permission to use
/// Bash" becomes "Wants to use Bash". These and the messages above come in the reader's words; any other one
/// stands as it is.
[[nodiscard]] std::string message(std::string_view message, const Words& words = {});

} // namespace AlertNotice

namespace ApprovalAlert {

/// How much of the fuse is left: from 1 at the start of the time for an answer to 0 at its end, `answerBy`,
/// and after. Both are steady seconds.
[[nodiscard]] double fuseProgress(double answerBy, double now);

} // namespace ApprovalAlert

} // namespace veslora
