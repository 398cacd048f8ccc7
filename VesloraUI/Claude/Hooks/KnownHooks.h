// SPDX-License-Identifier: MIT
// The hooks of every agent that the program knows. Main thread only.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraUI/Claude/Hooks/AgentHooks.h"
#include "VesloraUI/Platform/Platform.h"

#include <memory>

namespace veslora {

/// Those of one agent, whose configuration lies where `directories` say. What it is given must outlive it.
[[nodiscard]] std::unique_ptr<AgentHooks>
makeAgentHooks(AgentKind kind, Files& files, SupportDirectory& support, const Directories& directories);

} // namespace veslora
