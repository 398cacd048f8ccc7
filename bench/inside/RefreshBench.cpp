// SPDX-License-Identifier: MIT
#include "bench/inside/RefreshBench.h"

#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/ProcProcesses.h"
#include "VesloraLinux/System/ProgramRunner.h"
#include "VesloraLinux/System/Tmux.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Support/LocalCalendar.h"
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Report.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/ManualScheduler.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace veslora::bench {

namespace {

/// How many files there are.
struct Load {
    int sessions;
    int spool;
};

constexpr Load fullLoad{1000, 4096};
constexpr Load shortLoad{50, 128};
/// Of the spool's files, one in so many is a request.
constexpr int requestShare = 64;

class NoApplications final : public HostApplications {
  public:
    std::optional<HostApp> hostAppOf(std::int32_t) override { return std::nullopt; }
    bool isFrontmost(std::int32_t) override { return false; }
    void activate(const HostApp&) override {}
};

/// A monitor without a program round it.
struct Machine {
    explicit Machine(const Home& home, const std::string& executables)
        : directories{.home = home.path(),
                      .support = home.support(),
                      .runtime = home.support(),
                      .configuration = home.path() + "/.config/Veslora",
                      .cache = home.path() + "/.cache/Veslora",
                      .claude = home.path() + "/.claude",
                      .codex = home.path() + "/.codex",
                      .executables = executables} {
        SettingsKeys::registerDefaults(settings);
    }

    Directories directories;
    ManualScheduler scheduler{static_cast<Timestamp>(time(nullptr))};
    PosixFiles files;
    FakeDirectoryWatcher watcher;
    ProcProcesses processes;
    NoApplications applications;
    Tmux multiplexer{scheduler, processes};
    ProgramRunner programs{scheduler};
    SupportDirectory support{files, directories.support, directories.runtime};
    Defaults settings{files, watcher, directories.configuration};
    AgentMonitorSeams seams{directories, scheduler, files,
                            watcher,     processes, applications,
                            multiplexer, programs,  std::make_shared<LocalCalendar>()};
    HookedAgentMonitor monitor{claudeAgent(seams, support), seams, support, settings};
};

std::string sessionName(int index) {
    return "00000000-0000-4000-8000-" + std::to_string(100000000000 + index);
}

/// As old as the files of sessions that have been at rest for a while. Each names a process that lives: this
/// one.
void writeSessions(const std::string& folder, int count) {
    const double since = static_cast<double>(time(nullptr)) - 600;
    for (int index = 0; index < count; ++index) {
        const std::string path = folder + "/" + std::to_string(100000 + index) + ".json";
        std::ofstream(path) << sessionFile(sessionName(index), getpid(), "idle", since);
        const timespec stamp{static_cast<time_t>(since), 0};
        const std::array<timespec, 2> stamps{stamp, stamp};
        utimensat(AT_FDCWD, path.c_str(), stamps.data(), 0);
    }
}

void fillSpool(const Home& home, const Load& load, int round) {
    static constexpr std::array<const char*, 2> events{"PreToolUse", "PostToolUse"};
    for (int index = 0; index < load.spool; ++index) {
        const std::string id = std::to_string(round) + "-" + std::to_string(index);
        const std::string command = "make part-" + id;
        const bool isRequest = index % requestShare == 0;
        const std::string event =
            isRequest ? "PermissionRequest" : events[static_cast<std::size_t>(index) % 2];
        home.file((isRequest ? "perm-" : "") + id + ".json",
                  hookPayload(event, sessionName(index % load.sessions), command));
    }
}

double timeOfRefresh(HookedAgentMonitor& monitor) {
    const double start = monotonicNow();
    monitor.refresh();
    return (monotonicNow() - start) * 1000;
}

/// What is much is read beside the main thread, but a prompt behind it waits for all of it.
double timeUntilTaken(Machine& machine) {
    const double start = monotonicNow();
    machine.monitor.refresh();
    while (machine.scheduler.pendingBackground() > 0) {
        machine.scheduler.runBackground();
        machine.scheduler.advance(0);
    }
    return (monotonicNow() - start) * 1000;
}

void requireThatAllWasTaken(const AgentMonitor& monitor, const Load& load) {
    if (monitor.summaries().size() != static_cast<std::size_t>(load.sessions) ||
        monitor.pendingRequests().size() != static_cast<std::size_t>(load.spool / requestShare)) {
        throw std::runtime_error("the refresh did not take what was there");
    }
}

} // namespace

void measureRefresh(Report& report, const std::string& executables, bool isShort) {
    const Load load = isShort ? shortLoad : fullLoad;
    const int rounds = isShort ? 1 : 7;
    const Home home(executables);
    const std::string sessions = home.path() + "/.claude/sessions";
    std::filesystem::remove_all(sessions);
    std::filesystem::create_directory(sessions);
    writeSessions(sessions, load.sessions);
    std::vector<double> first;
    std::vector<double> second;
    for (int round = 0; round < rounds; ++round) {
        fillSpool(home, load, round);
        Machine machine(home, executables);
        first.push_back(timeUntilTaken(machine));
        requireThatAllWasTaken(machine.monitor, load);
        for (int again = 0; again < 5; ++again) {
            second.push_back(timeOfRefresh(machine.monitor));
        }
    }
    report.add({"refresh_large", median(first), "ms", 400, {0.01, 60000}});
    // The best tenth, since nothing in it waits: what takes longer was other programs' work.
    report.add({"refresh_unchanged", percentile(second, 0.1), "ms", 10, {0.01, 60000}});
}

} // namespace veslora::bench
