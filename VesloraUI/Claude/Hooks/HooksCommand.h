// SPDX-License-Identifier: MIT
// What the command line asks of one agent's hooks, done as the settings window does it. Main thread only.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraCore/Agents/Hooks/HookSign.h"
#include "VesloraCore/Island/CommandLine.h"
#include "VesloraUI/Claude/Hooks/AgentHooks.h"

#include <optional>
#include <string_view>

namespace veslora::HooksCommand {

/// Whether a line of `hooksStatus` says so.
[[nodiscard]] bool saysInstalled(std::string_view line, const AgentTraits& agent);

/// `command` is one of `installHooks`, `removeHooks` and `hooksStatus`. The text of the first two is for
/// people, in their language; that of the status is for programs too: the agent, a colon, how its hooks
/// stand, and behind a semicolon what there is to know besides. `lastSign` is what the hooks told last;
/// absent where nobody knows of one.
[[nodiscard]] CommandOutcome perform(Command command, AgentHooks& hooks, const AgentTraits& agent,
                                     const std::optional<HookSign>& lastSign = std::nullopt);

} // namespace veslora::HooksCommand
