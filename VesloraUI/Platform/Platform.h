// SPDX-License-Identifier: MIT
// The one factory of everything that touches the machine. The entry makes a single one and hands it down;
// whatever it returns by reference lives as long as it does.
#pragma once

#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/FrameClock.h"
#include "VesloraUI/Platform/HapticPerforming.h"
#include "VesloraUI/Platform/HostApplications.h"
#include "VesloraUI/Platform/Panel.h"
#include "VesloraUI/Platform/Pointer.h"
#include "VesloraUI/Platform/PowerAsserting.h"
#include "VesloraUI/Platform/Processes.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Screens.h"
#include "VesloraUI/Platform/SoundPlaying.h"
#include "VesloraUI/Platform/StatusMenu.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Platform/SystemReadings.h"
#include "VesloraUI/Platform/TerminalMultiplexer.h"
#include "VesloraUI/Platform/TimerNotifying.h"

#include <memory>
#include <string>

namespace veslora {

/// Where the program and the agents keep their files. Absolute paths without a slash at their end.
struct Directories {
    std::string home;
    std::string support; ///< the program's own data: scripts, spools, answers
    std::string runtime; ///< for what need not outlive the session; equal to `support` where there is none
    std::string configuration; ///< the settings file's
    std::string claude;        ///< Claude Code's configuration
    std::string codex;         ///< Codex's configuration
    std::string executables;   ///< where the program's helper executables lie
    bool operator==(const Directories&) const = default;
};

class Platform {
  public:
    virtual ~Platform() = default;

    [[nodiscard]] virtual const Directories& directories() const = 0;
    [[nodiscard]] virtual Scheduler& scheduler() = 0;
    [[nodiscard]] virtual Files& files() = 0;
    [[nodiscard]] virtual DirectoryWatcher& directoryWatcher() = 0;
    [[nodiscard]] virtual Processes& processes() = 0;
    [[nodiscard]] virtual HostApplications& hostApplications() = 0;
    [[nodiscard]] virtual TerminalMultiplexer& terminalMultiplexer() = 0;
    [[nodiscard]] virtual SystemReadings& systemReadings() = 0;
    [[nodiscard]] virtual Suspension& suspension() = 0;
    [[nodiscard]] virtual Screens& screens() = 0;
    [[nodiscard]] virtual Pointer& pointer() = 0;
    [[nodiscard]] virtual Panel& panel() = 0;
    [[nodiscard]] virtual FrameClock& frameClock() = 0;
    [[nodiscard]] virtual SoundPlaying& sounds() = 0;
    [[nodiscard]] virtual HapticPerforming& haptics() = 0;
    [[nodiscard]] virtual StatusMenu& statusMenu() = 0;
    [[nodiscard]] virtual PowerAsserting& power() = 0;
    [[nodiscard]] virtual TimerNotifying& timerNotifier() = 0;
};

} // namespace veslora
