// SPDX-License-Identifier: MIT
// A made-up prompt by which the user can see that the hooks work, without any agent. Nobody runs the command
// in it, so that what is allowed is nothing. Text to text, any thread.
#pragma once

#include "VesloraCore/Agents/ClaudeDecision.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora::HookTrial {

/// A session that no agent has. Each trial gets a number of its own.
[[nodiscard]] std::string sessionId(std::uint64_t number);
[[nodiscard]] bool isTrial(std::string_view sessionId);

/// What the permission script is given, in the form of either agent.
[[nodiscard]] std::string request(const std::string& sessionId);
/// What the event script is given afterwards: the session is over.
[[nodiscard]] std::string end(const std::string& sessionId);

/// What the permission script has told the agent; absent where it left the prompt to the agent's own
/// terminal.
[[nodiscard]] std::optional<ClaudeDecision> decisionOf(std::string_view output);

} // namespace veslora::HookTrial
