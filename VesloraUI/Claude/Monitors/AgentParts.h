// SPDX-License-Identifier: MIT
// What a monitor is made of, beside what it shares with those of all other agents.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraUI/Claude/Hooks/AgentHooks.h"
#include "VesloraUI/Claude/Monitors/AgentSource.h"
#include "VesloraUI/Claude/Monitors/AgentUsageMonitor.h"

#include <memory>
#include <string>

namespace veslora {

struct AgentParts {
    const AgentTraits& traits; ///< must outlive the monitor
    std::unique_ptr<AgentSource> source;
    std::unique_ptr<AgentHooks> hooks;
    std::unique_ptr<AgentUsageMonitor> usage; ///< may ask the source; null where nothing tells of usage
    /// A folder of the agent's own, in which any change may tell of sessions; empty where there is none.
    std::string sessionsFolder;
};

} // namespace veslora
