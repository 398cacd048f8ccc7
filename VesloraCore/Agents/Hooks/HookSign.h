// SPDX-License-Identifier: MIT
// That an agent's hooks were heard: of what, and when. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"
#include "VesloraCore/Agents/Hooks/CodexHookEvent.h"

#include <cstdint>

namespace veslora {

struct HookSign {
    enum class Kind : std::uint8_t {
        sessionStart,
        prompt,
        toolStart,
        toolDone,
        request, ///< for a permission
        needsYou,
        turnEnd,
        sessionEnd,
        other,
    };
    Kind kind = Kind::other;
    Timestamp time = 0;
    bool operator==(const HookSign&) const = default;

    [[nodiscard]] static HookSign of(const ClaudeHookEvent& event);
    [[nodiscard]] static HookSign of(const CodexHookEvent& event);
};

} // namespace veslora
