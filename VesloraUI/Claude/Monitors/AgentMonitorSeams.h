// SPDX-License-Identifier: MIT
// What watching an agent needs of the machine.
#pragma once

#include "VesloraCore/Calendar.h"
#include "VesloraUI/Platform/Platform.h"

#include <memory>

namespace veslora {

struct AgentMonitorSeams {
    const Directories& directories;
    Scheduler& scheduler;
    Files& files;
    DirectoryWatcher& watcher;
    Processes& processes;
    HostApplications& hostApplications;
    TerminalMultiplexer& multiplexer;
    ProgramRunning& programs;
    std::shared_ptr<const Calendar> calendar; ///< says where days end, for what is counted by the day
};

} // namespace veslora
