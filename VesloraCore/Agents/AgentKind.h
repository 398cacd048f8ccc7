// SPDX-License-Identifier: MIT
// Which coding agent a session belongs to. What else there is to say of an agent is in AgentTraits. Plain
// values, any thread.
#pragma once

#include <cstdint>

namespace veslora {

enum class AgentKind : std::uint8_t { claude, codex };

} // namespace veslora
