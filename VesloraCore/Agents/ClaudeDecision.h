// SPDX-License-Identifier: MIT
// What is answered to a permission request, of either agent. Plain values, any thread.
#pragma once

#include <cstdint>
#include <string_view>

namespace veslora {

enum class ClaudeDecision : std::uint8_t {
    allow,
    deny,
    pass ///< leaves the prompt to the agent's own terminal
};

/// The one word that an answer file holds.
[[nodiscard]] constexpr std::string_view word(ClaudeDecision decision) {
    switch (decision) {
    case ClaudeDecision::allow:
        return "allow";
    case ClaudeDecision::deny:
        return "deny";
    case ClaudeDecision::pass:
        break;
    }
    return "pass";
}

} // namespace veslora
