// SPDX-License-Identifier: MIT
// What is large or much in a spool on a real disk: how long it holds the main thread, in processor time, so
// that a busy machine does not look like a defect. The limits are far above what is meant, as sanitizers slow
// everything down, and far below what it was when the main thread did it all.
#include "VesloraLinux/LinuxPlatform.h"
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/ProcProcesses.h"
#include "VesloraLinux/System/ProgramRunner.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/FixedCalendar.h"

#include <QTimer>

#include <gtest/gtest.h>
#include <time.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <thread>

namespace veslora {
namespace {

using testing::waitUntil;

class NoWindows final : public HostApplications {
  public:
    std::optional<HostApp> hostAppOf(std::int32_t /*pid*/) override { return std::nullopt; }
    bool isFrontmost(std::int32_t /*pid*/) override { return false; }
    void activate(const HostApp& /*app*/) override {}
};

class NoMultiplexer final : public TerminalMultiplexer {
  public:
    Task showPane(std::int32_t /*pid*/, const std::optional<std::string>& /*pane*/,
                  std::function<void(Client)> /*done*/) override {
        return {};
    }
    [[nodiscard]] bool mayHold(std::int32_t /*pid*/) const override { return false; }
    [[nodiscard]] Task findClients(std::int32_t /*pid*/, const std::optional<std::string>& /*pane*/,
                                   std::function<void(const Clients&)> /*done*/) override {
        return {};
    }
};

/// The longest stretch of processor time that this thread spent between two turns of its event loop.
class Stretches {
  public:
    Stretches() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const double now = processorTime();
            m_longest = std::max(m_longest, now - m_last);
            m_last = now;
        });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(1);
    }
    [[nodiscard]] double longest() const { return m_longest; }
    void begin() {
        m_longest = 0;
        m_last = processorTime();
    }

  private:
    static double processorTime() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    QTimer m_timer;
    double m_longest = 0;
    double m_last = processorTime();
};

class SpoolFloodTests : public ::testing::Test {
  protected:
    SpoolFloodTests() {
        directories.home = folder.path();
        directories.claude = folder.path("claude");
        SettingsKeys::registerDefaults(settings);
        monitor.start();
        stretches.begin();
    }
    void TearDown() override { monitor.stop(); }

    [[nodiscard]] AgentMonitorSeams seams() {
        return {directories,          scheduler, files, watcher, processes, windows, multiplexer, programs,
                test::fixedCalendar()};
    }
    static std::string payload(const std::string& event, const std::string& more) {
        return R"({"session_id":"s1","hook_event_name":")" + event + R"(","tool_name":"Bash")" + more + "}";
    }
    static std::string request() { return payload("PermissionRequest", R"(,"tool_input":{"command":"ls"})"); }
    static std::string largeEvent() {
        return payload(
            "PostToolUse", R"(,"tool_input":{"command":"x"},"tool_response":[1)" + []() {
                std::string numbers;
                for (int count = 0; count < 8'000'000; ++count) {
                    numbers += ",1";
                }
                return numbers;
            }() + "]");
    }
    /// As a script does: written under another name first.
    void drop(const std::string& name, const std::string& bytes) const {
        folder.put("tmp.x", bytes);
        std::filesystem::rename(folder.path("tmp.x"), folder.path("support/claude-spool/" + name));
    }
    /// Lets another thread do its work while this one handles events, until the request is asked and all is
    /// taken.
    void expectPromptBeside(const std::function<void()>& work) {
        const double start = scheduler.steadyNow();
        std::thread other(work);
        EXPECT_TRUE(waitUntil([this] { return monitor.pendingRequests().size() == 1; }));
        RecordProperty("promptAfterMilliseconds", static_cast<int>((scheduler.steadyNow() - start) * 1000));
        other.join();
        EXPECT_TRUE(waitUntil([this] { return isSpoolEmpty(); }));
    }
    [[nodiscard]] bool isSpoolEmpty() const {
        return std::filesystem::is_empty(folder.path("support/claude-spool"));
    }
    static int residentMegabytes() {
        std::ifstream file("/proc/self/statm");
        long size = 0;
        long resident = 0;
        file >> size >> resident;
        return static_cast<int>(resident * sysconf(_SC_PAGESIZE) >> 20);
    }
    void expectShortStretches() {
        RecordProperty("longestStretchMilliseconds", static_cast<int>(stretches.longest() * 1000));
        EXPECT_LT(stretches.longest(), 0.15);
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    Directories directories;
    PosixFiles files;
    LinuxScheduler scheduler;
    InotifyDirectoryWatcher watcher;
    ProcProcesses processes;
    NoWindows windows;
    NoMultiplexer multiplexer;
    ProgramRunner programs{scheduler};
    Defaults settings{files, watcher, folder.path("settings")};
    SupportDirectory support{files, folder.path("support"), folder.path("support")};
    HookedAgentMonitor monitor{claudeAgent(seams(), support), seams(), support, settings};
    Stretches stretches;
};

TEST_F(SpoolFloodTests, EventsOfSixteenMegabytesHoldNoPromptUp) {
    const std::string large = largeEvent();
    LinuxPlatform::giveBackLargeBlocks();
    const int before = residentMegabytes();
    stretches.begin();
    expectPromptBeside([&] {
        for (const char* name : {"a.json", "b.json", "c.json"}) {
            drop(name, large);
        }
        usleep(12'000);
        drop("perm-aaa.json", request());
    });
    expectShortStretches();
    const int grown = residentMegabytes() - before;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) // those keep what was freed
    RecordProperty("grown", grown);
#else
    EXPECT_LT(grown, 8);
#endif
}

TEST_F(SpoolFloodTests, AFloodOfEventsHoldsNoPromptUp) {
    const char* const wanted = getenv("VESLORA_FLOOD");
    const int flood = wanted != nullptr ? std::stoi(wanted) : 20'000;
    const std::string event = payload("PreToolUse", R"(,"tool_input":{"command":"make"})");
    // All at once, so that nothing is taken meanwhile.
    std::filesystem::create_directory(folder.path("flood"));
    for (int number = 0; number < flood; ++number) {
        folder.put("flood/" + std::to_string(1'000'000 + number) + ".json", event);
    }
    monitor.stop();
    std::filesystem::remove(folder.path("support/claude-spool"));
    std::filesystem::rename(folder.path("flood"), folder.path("support/claude-spool"));
    stretches.begin();
    monitor.start();
    expectPromptBeside([&] { drop("perm-aaa.json", request()); });
    expectShortStretches();
}

} // namespace
} // namespace veslora
