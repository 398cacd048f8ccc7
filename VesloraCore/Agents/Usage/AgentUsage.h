// SPDX-License-Identifier: MIT
// What the usage widget shows of one agent, in one form for all of them. Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraCore/Agents/Usage/ClaudeLimit.h"
#include "VesloraCore/Agents/Usage/ClaudeStatusSnapshot.h"
#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"
#include "VesloraCore/Agents/Usage/CodexUsageLine.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veslora {

struct AgentUsage {
    /// Seconds after which a reading is old: it is then shown with its time, not as what is so now.
    static constexpr double staleAfter = 900;

    AgentKind agent = AgentKind::claude;
    std::optional<ClaudeLimit> fiveHour;
    std::optional<ClaudeLimit> week;
    bool limitsAvailable = true; ///< false when the agent said that its plan has no limits
    std::optional<Timestamp> limitsAt;
    bool limitsStale = false;
    std::optional<double> contextPercent; ///< 0 to 100
    std::string contextDetail;            ///< such as "Opus 4.5 · of 200K"; may be empty
    std::optional<Timestamp> contextAt;
    bool contextStale = false;
    std::int64_t today = 0; ///< tokens

    bool operator==(const AgentUsage&) const = default;

    /// When the newer of both readings came; absent without any.
    [[nodiscard]] std::optional<Timestamp> lastActivity() const;
};

/// Claude Code's, from the latest reading that had something to say about limits and the latest one of all.
[[nodiscard]] AgentUsage claudeUsage(const std::optional<ClaudeStatusSnapshot>& limits,
                                     const std::optional<ClaudeStatusSnapshot>& context,
                                     const ClaudeTokenTotals& today, Timestamp now, const Words& words = {});

/// The same of Codex.
[[nodiscard]] AgentUsage codexUsage(const std::optional<CodexLimits>& limits,
                                    const std::optional<CodexContext>& context,
                                    const ClaudeTokenTotals& today, Timestamp now, const Words& words = {});

} // namespace veslora
