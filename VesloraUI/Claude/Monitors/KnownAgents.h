// SPDX-License-Identifier: MIT
// Every agent that the program knows, with the parts that its monitor is made of. Main thread only.
#pragma once

#include "VesloraUI/Claude/Monitors/AgentMonitor.h"
#include "VesloraUI/Claude/Monitors/AgentMonitorSeams.h"
#include "VesloraUI/Claude/Monitors/AgentParts.h"

#include <memory>
#include <vector>

namespace veslora {

class Defaults;
class SupportDirectory;

[[nodiscard]] AgentParts claudeAgent(const AgentMonitorSeams& seams, SupportDirectory& support);
[[nodiscard]] AgentParts codexAgent(const AgentMonitorSeams& seams, SupportDirectory& support);

/// A monitor for each agent, in the order of their table. What they are given must outlive them.
[[nodiscard]] std::vector<std::unique_ptr<AgentMonitor>>
makeAgentMonitors(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings);

} // namespace veslora
