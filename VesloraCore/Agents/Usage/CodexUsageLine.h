// SPDX-License-Identifier: MIT
// What one line of a Codex session's log tells about its use of tokens. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeLimit.h"
#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace veslora {

/// How far the limits of the plan are used. Both absent means that the agent named none.
struct CodexLimits {
    std::optional<ClaudeLimit> fiveHour;
    std::optional<ClaudeLimit> week;
    Timestamp receivedAt = 0; ///< the line's own date
    bool operator==(const CodexLimits&) const = default;
};

/// How full the context is.
struct CodexContext {
    double percent = 0;      ///< 0 to 100
    std::int64_t window = 0; ///< the whole context in tokens, at least 1
    Timestamp receivedAt = 0;
    bool operator==(const CodexContext&) const = default;
};

struct CodexUsageLine {
    /// What one response cost.
    struct Tokens {
        std::string key; ///< the response's, possibly empty; a response may come in several lines
        ClaudeTokenTotals totals;
        Timestamp at = 0;
        bool operator==(const Tokens&) const = default;
    };
    using Kind = std::variant<CodexLimits, CodexContext, Tokens>;

    Kind kind;
    bool operator==(const CodexUsageLine&) const = default;

    /// None, one or two: the limits come before the context. A line that tells nothing of these, is damaged
    /// or lacks its date gives none; a number that does not fit counts as absent.
    [[nodiscard]] static std::vector<CodexUsageLine> parse(std::string_view line);
};

} // namespace veslora
