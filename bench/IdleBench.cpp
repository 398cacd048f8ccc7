// SPDX-License-Identifier: MIT
// What the program costs while it shows nothing but the closed island, with two sessions at rest. Before and after,
// the instruments are tried: a write to the home must count as one, and a drawn frame as a frame.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

namespace veslora::bench {

namespace {

void requireThatWritesCount(const Home& home) {
    const ProcessMeter own(getpid());
    const auto before = own.bytesWritten();
    const std::string path = home.path() + "/written";
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const bool isWritten = file >= 0 && write(file, "x", 1) == 1;
    close(file);
    if (!isWritten || own.bytesWritten() == before) {
        throw std::runtime_error("a write to the home does not count as one to a disk");
    }
}

double barePss(const Bench& bench, const Home& home, double settling) {
    const Island bare(bench.stage, home, bench.bare());
    sleepFor(settling);
    return bare.meter().memory().pss;
}

} // namespace

void measureIdle(const Bench& bench) {
    const Home home(bench.executables);
    requireThatWritesCount(home);
    const double settling = bench.choose(4.0, 0.3);
    const double seconds = bench.choose(60.0, 2.5);
    const double bare = barePss(bench, home, settling);

    Island island(bench.stage, home, bench.program());
    sleepFor(settling);
    const ProcessMeter& meter = island.meter();
    const std::size_t frames = island.frames().count();
    const auto written = meter.bytesWritten();
    const double time = meter.processorTime();
    const auto wokeUp = static_cast<double>(meter.wakeUpsIn(seconds));
    const double timeUsed = meter.processorTime() - time;
    const auto wrote = static_cast<double>(meter.bytesWritten() - written);
    const auto drew = static_cast<double>(island.frames().count() - frames);
    const Memory memory = meter.memory();

    const std::size_t beforeOpening = island.frames().count();
    island.open();
    waitUntil("a frame", [&] { return island.frames().count() > beforeOpening; });
    island.close();

    const Range megabytes{5, 4096};
    bench.report.add({"idle_pss", memory.pss, "MB", 45, megabytes});
    bench.report.add({"idle_rss", memory.rss, "MB", {}, megabytes});
    bench.report.add({"idle_bare_pss", bare, "MB", {}, megabytes});
    // It gives a sign of life every two seconds, and so can't use nothing.
    bench.report.add({"idle_cpu", 100 * timeUsed / seconds, "% of a core", 0.1, {1e-4, 100}});
    bench.report.add({"idle_wakeups", wokeUp / seconds, "1/s", 1, {0.1, 10000}});
    bench.report.add({"idle_disk_writes", wrote, "bytes", 0, {0, 1e12}});
    bench.report.add({"idle_frames", drew, "frames", 0, {0, 1e6}});
}

} // namespace veslora::bench
