// SPDX-License-Identifier: MIT
// What a session of Claude Code told its status line at one moment: how full its context is, and how far the
// limits of the plan are used. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeLimit.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

struct ClaudeStatusSnapshot {
    std::string sessionId;                   ///< never empty
    std::optional<std::string> model;        ///< the model's name for people
    std::optional<double> contextPercent;    ///< 0 to 100
    std::optional<std::int64_t> contextSize; ///< the whole context window in tokens
    bool limitsAvailable = true;             ///< false only when the session said so
    std::optional<ClaudeLimit> fiveHour;
    std::optional<ClaudeLimit> week;
    Timestamp receivedAt = 0;
    bool operator==(const ClaudeStatusSnapshot&) const = default;

    /// Reads the input of a status line. Nothing for bytes that are no JSON object or that name no session;
    /// any other field that is missing, of the wrong type or out of its range is absent.
    [[nodiscard]] static std::optional<ClaudeStatusSnapshot> parse(std::string_view data,
                                                                   Timestamp receivedAt);
};

} // namespace veslora
