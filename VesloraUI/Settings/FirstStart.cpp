// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/FirstStart.h"

#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Store/Defaults.h"

#include <algorithm>

namespace veslora {

namespace {

bool hasAnyHooks(const AgentMonitor* monitor) {
    return monitor->hooksInstalled() || monitor->hooksOutdated();
}

} // namespace

bool takeFirstStart(const SupportDirectory& support, const Defaults& settings, const AgentsModel& agents) {
    const std::string name(SupportNames::startedBefore);
    const OpenedFolder folder = support.open();
    if (!folder || folder->stat(name) || folder->write(name, "", {.mode = SupportDirectory::fileMode})) {
        return false;
    }
    return !settings.hasFile() && std::ranges::none_of(agents.monitors(), hasAnyHooks);
}

} // namespace veslora
