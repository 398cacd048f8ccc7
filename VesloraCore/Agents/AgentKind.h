// SPDX-License-Identifier: MIT
// Which coding agent a session belongs to. Plain values, any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace veslora {

enum class AgentKind : std::uint8_t { claude, codex };

/// The text that stands for an agent in stored values: "claude" or "codex".
[[nodiscard]] constexpr std::string_view rawValue(AgentKind kind) {
    return kind == AgentKind::claude ? "claude" : "codex";
}

/// The agent's name for people.
[[nodiscard]] constexpr std::string_view name(AgentKind kind) {
    return kind == AgentKind::claude ? "Claude" : "Codex";
}

/// The few letters that stand before a session of the agent.
[[nodiscard]] constexpr std::string_view mark(AgentKind kind) {
    return kind == AgentKind::claude ? "✻" : ">_";
}

/// The agent of a stored value; nothing for any other text.
[[nodiscard]] constexpr std::optional<AgentKind> agentKindOf(std::string_view text) {
    for (const AgentKind kind : {AgentKind::claude, AgentKind::codex}) {
        if (text == rawValue(kind)) {
            return kind;
        }
    }
    return std::nullopt;
}

} // namespace veslora
