// SPDX-License-Identifier: MIT
// Everything that touches the machine, as one group of references. The entry makes what they refer to, which
// outlives all that it hands them down to.
#pragma once

#include "VesloraUI/Platform/AdapterProcess.h"
#include "VesloraUI/Platform/AppOpening.h"
#include "VesloraUI/Platform/Appearance.h"
#include "VesloraUI/Platform/ArtworkLoading.h"
#include "VesloraUI/Platform/AutomationPermission.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/DoNotDisturb.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/FrameClock.h"
#include "VesloraUI/Platform/HapticPerforming.h"
#include "VesloraUI/Platform/HostApplications.h"
#include "VesloraUI/Platform/LoginItem.h"
#include "VesloraUI/Platform/MemoryReleasing.h"
#include "VesloraUI/Platform/MetronomePlaying.h"
#include "VesloraUI/Platform/PackageInstalling.h"
#include "VesloraUI/Platform/Panel.h"
#include "VesloraUI/Platform/Pointer.h"
#include "VesloraUI/Platform/PowerAsserting.h"
#include "VesloraUI/Platform/Processes.h"
#include "VesloraUI/Platform/ProgramRunning.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/ScreenWindows.h"
#include "VesloraUI/Platform/Screens.h"
#include "VesloraUI/Platform/ScriptRunning.h"
#include "VesloraUI/Platform/ScrollDevices.h"
#include "VesloraUI/Platform/SoundPlaying.h"
#include "VesloraUI/Platform/SpotifyNotifications.h"
#include "VesloraUI/Platform/StatusMenu.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Platform/SystemReadings.h"
#include "VesloraUI/Platform/TerminalMultiplexer.h"
#include "VesloraUI/Platform/TimerNotifying.h"

#include <string>

namespace veslora {

/// Where the program and the agents keep their files. Absolute paths without a slash at their end.
struct Directories {
    std::string home;
    std::string support; ///< the program's own data: scripts, spools, answers
    std::string runtime; ///< for what need not outlive the session; equal to `support` where there is none
    std::string configuration; ///< the settings file's
    std::string cache;         ///< for what can be made again at any time
    std::string claude;        ///< Claude Code's configuration
    std::string codex;         ///< Codex's configuration
    std::string executables;   ///< where the program's helper executables lie
    bool operator==(const Directories&) const = default;
};

/// Every seam of one machine.
struct Platform {
    const Directories& directories;
    Scheduler& scheduler;
    Files& files;
    DirectoryWatcher& directoryWatcher;
    Processes& processes;
    HostApplications& hostApplications;
    TerminalMultiplexer& terminalMultiplexer;
    SystemReadings& systemReadings;
    Suspension& suspension;
    Screens& screens;
    ScreenWindows& screenWindows;
    Pointer& pointer;
    ScrollDevices& scrollDevices;
    Panel& panel;
    FrameClock& frameClock;
    SoundPlaying& sounds;
    MetronomePlaying& metronome;
    MetronomePlaying& metronomePreview; ///< for samples of its sounds, which leave the other alone
    HapticPerforming& haptics;
    StatusMenu& statusMenu;
    PowerAsserting& power;
    TimerNotifying& timerNotifier;
    SpotifyNotifications& spotify;
    ScriptRunning& scripts;
    AdapterProcess& mediaAdapter;
    ArtworkLoading& artwork;
    AppOpening& apps;
    AutomationPermission& automation;
    Appearance& appearance;
    LoginItem& loginItem;
    ProgramRunning& programs;
    PackageInstalling& packages;
    DoNotDisturb& doNotDisturb;
    MemoryReleasing& memory;
};

} // namespace veslora
