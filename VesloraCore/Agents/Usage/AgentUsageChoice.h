// SPDX-License-Identifier: MIT
// Which agents the usage widget shows, which of them first, and what they used together. Pure functions, any
// thread.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraCore/Agents/Usage/AgentUsage.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace veslora::AgentUsageChoice {

/// When an agent was last heard of; absent where it never was.
struct Activity {
    AgentKind agent = AgentKind::claude;
    std::optional<Timestamp> last;
};

/// The agents that have a date of last activity, the latest first; of two equal ones that which is given
/// first.
[[nodiscard]] std::vector<AgentKind> pick(std::vector<Activity> activities);

/// The records of the agents that have been read of, in the order of `pick`. Each agent comes once at most.
[[nodiscard]] std::vector<AgentUsage> shown(const std::vector<AgentUsage>& usages);

/// The tokens of today of all of them, shown or not; rests at the ends of 64 bits.
[[nodiscard]] std::int64_t today(const std::vector<AgentUsage>& usages);

} // namespace veslora::AgentUsageChoice
