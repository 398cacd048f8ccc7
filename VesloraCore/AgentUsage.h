// SPDX-License-Identifier: MIT
// What the usage widget shows of one agent, in one form for all of them. Plain values, any thread.
#pragma once

#include "VesloraCore/AgentKind.h"
#include "VesloraCore/ClaudeLimit.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veslora {

struct AgentUsage {
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
};

} // namespace veslora
