// SPDX-License-Identifier: MIT
// Which agents the usage widget shows, and which of them first. Pure functions, any thread.
#pragma once

#include "VesloraCore/AgentKind.h"
#include "VesloraCore/Timestamp.h"

#include <optional>
#include <vector>

namespace veslora::AgentUsageChoice {

/// The agents that have a date of last activity, the latest first; Claude Code's first of two equal ones.
[[nodiscard]] std::vector<AgentKind> pick(std::optional<Timestamp> claude, std::optional<Timestamp> codex);

} // namespace veslora::AgentUsageChoice
