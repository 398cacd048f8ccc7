// SPDX-License-Identifier: MIT
#include "bench/inside/UsageRun.h"

#include "VesloraLinux/LinuxPlatform.h"
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraUI/Claude/Monitors/ClaudeUsageMonitor.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Support/LocalCalendar.h"
#include "bench/Clock.h"
#include "bench/Report.h"
#include "bench/UsageCorpus.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>
#include <fstream>
#include <memory>

namespace veslora::bench {

namespace {

/// A figure of /proc/self/status, in kibibytes.
long memory(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == name + ":") {
            long value = 0;
            status >> value;
            return value;
        }
    }
    return -1;
}

/// Of all threads, in milliseconds.
double processorTime() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return processorMilliseconds(used);
}

void turnFor(double seconds) {
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000), &loop, &QEventLoop::quit);
    loop.exec();
}

double milliseconds(const std::function<void()>& work) {
    const double start = monotonicNow();
    work();
    return (monotonicNow() - start) * 1000;
}

class Run {
  public:
    explicit Run(const std::string& projects)
        : m_support(m_files, projects + "/no-support", projects + "/no-support"),
          m_monitor({m_scheduler, m_files, m_watcher}, m_support, projects, std::make_shared<LocalCalendar>(),
                    [] { return std::nullopt; }) {
        QObject::connect(&m_monitor, &AgentUsageMonitor::changed, [this] { m_changed = monotonicNow(); });
    }

    bool load() {
        malloc_trim(0);
        const long before = memory("VmRSS");
        const double start = monotonicNow();
        const double startProcessor = processorTime();
        m_monitor.loadToday();
        // A folder without anything of today changes nothing, and is not measured.
        if (!waitForChange()) {
            return false;
        }
        print("load_cpu_ms", processorTime() - startProcessor);
        print("load_ms", (m_changed - start) * 1000);
        const long peak = memory("VmHWM");
        malloc_trim(0);
        const long after = memory("VmRSS");
        print("tally_kib", static_cast<double>(after - before));
        print("extra_kib", static_cast<double>(peak - after));
        const ClaudeTokenTotals& today = m_monitor.today();
        std::printf("input %lld output %lld cache_write %lld cache_read %lld ",
                    static_cast<long long>(today.input), static_cast<long long>(today.output),
                    static_cast<long long>(today.cacheWrite), static_cast<long long>(today.cacheRead));
        return true;
    }

    void refresh() {
        // The walks that establish the watches.
        for (int round = 0; round < 5; ++round) {
            m_monitor.refresh();
            turnFor(0.3);
        }
        std::vector<double> times;
        for (int round = 0; round < 200; ++round) {
            times.push_back(milliseconds([this] { m_monitor.refresh(); }));
        }
        print("unchanged_ms", median(times));
        print("unchanged_worst_ms", percentile(times, 0.99));
    }

    bool append(const std::string& file) {
        std::vector<double> times;
        std::vector<double> refreshes;
        for (int round = 0; round < 40; ++round) {
            m_changed = 0;
            const double start = monotonicNow();
            std::ofstream(file, std::ios::binary | std::ios::app)
                << freshLine("fresh" + std::to_string(round), 1000);
            if (round % 2 == 0) {
                if (!waitForChange()) {
                    return false;
                }
                times.push_back((m_changed - start) * 1000);
            } else {
                QCoreApplication::processEvents();
                refreshes.push_back(milliseconds([this] { m_monitor.refresh(); }));
                if (m_changed == 0) {
                    return false;
                }
            }
        }
        print("appended_p95_ms", percentile(times, 0.95));
        print("appended_refresh_ms", median(refreshes));
        return true;
    }

  private:
    /// False if none came within a minute.
    bool waitForChange() {
        QEventLoop loop;
        QObject::connect(&m_monitor, &AgentUsageMonitor::changed, &loop, &QEventLoop::quit);
        QTimer::singleShot(60'000, &loop, &QEventLoop::quit);
        if (m_changed == 0) {
            loop.exec();
        }
        return m_changed > 0;
    }
    static void print(const char* name, double value) { std::printf("%s %.4f ", name, value); }

    PosixFiles m_files;
    LinuxScheduler m_scheduler;
    InotifyDirectoryWatcher m_watcher;
    SupportDirectory m_support;
    ClaudeUsageMonitor m_monitor;
    double m_changed = 0;
};

} // namespace

bool runUsage(const std::string& projects, const std::string& file) {
    int count = 0;
    QCoreApplication application(count, nullptr);
    LinuxPlatform::giveBackLargeBlocks();
    Run run(projects);
    if (!run.load()) {
        return false;
    }
    run.refresh();
    const bool isFollowed = file.empty() || run.append(file);
    std::printf("\n");
    return isFollowed;
}

} // namespace veslora::bench
