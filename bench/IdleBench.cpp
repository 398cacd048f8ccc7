// SPDX-License-Identifier: MIT
// What the program costs while it shows nothing but the closed island, with two sessions at rest; its memory
// also after a day of much use. Before and after, the instruments are tried: a write to the home must count
// as one, and a drawn frame as a frame.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/RequestAlert.h"
#include "bench/UsageCorpus.h"

#include <fcntl.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
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

/// What a user of little has done with it: it was open once, and has shown one prompt.
void use(const Bench& bench, const Home& home, Island& island) {
    island.open();
    island.frames().waitForRest();
    island.close();
    island.waitForClosed();
    home.fileRequest("used", "make check");
    waitUntil("the request's text", [&] { return RequestAlert::showsText(bench.stage.display()); });
    home.filePrompt("said");
    island.waitForClosed();
}

struct Rest {
    double processor = 0; ///< in percent of a core
    double wakeUps = 0;   ///< a second
    double written = 0;   ///< bytes
    double frames = 0;
    Memory memory;
};

Rest restFor(Island& island, double seconds) {
    const ProcessMeter& meter = island.meter();
    const std::size_t frames = island.frames().count();
    const auto written = meter.bytesWritten();
    const double time = meter.processorTime();
    const auto wakeUps = static_cast<double>(meter.wakeUpsIn(seconds));
    Rest rest;
    rest.processor = 100 * (meter.processorTime() - time) / seconds;
    rest.wakeUps = wakeUps / seconds;
    rest.written = static_cast<double>(meter.bytesWritten() - written);
    rest.frames = static_cast<double>(island.frames().count() - frames);
    rest.memory = meter.memory();
    return rest;
}

/// The media adapter, which a program with music in its rack has running beside it.
pid_t adapterOf(const Island& island) {
    const std::string pid = std::to_string(island.pid());
    pid_t child = 0;
    for (std::ifstream children("/proc/" + pid + "/task/" + pid + "/children"); children >> child;) {
        std::ifstream names("/proc/" + std::to_string(child) + "/cmdline");
        std::string name;
        if (std::getline(names, name, '\0') && name.ends_with("/veslora-media-adapter")) {
            return child;
        }
    }
    throw std::runtime_error("the media adapter does not run");
}

/// That it still runs, and that what it does is seen: opening it must count as frames, as processor time and
/// as wake-ups.
void requireThatUseCounts(Island& island) {
    const ProcessMeter& meter = island.meter();
    const std::size_t frames = island.frames().count();
    const double time = meter.processorTime();
    const auto sleeps = meter.sleeps();
    island.open();
    waitUntil("a frame", [&] { return island.frames().count() > frames; });
    if (meter.processorTime() <= time || meter.sleeps() == sleeps) {
        throw std::runtime_error("opening the island costs no processor time or wakes nothing up");
    }
    island.close();
}

/// The program's memory at rest, after it has read today's transcripts.
double usedPss(const Bench& bench, const Home& home, const Corpus& corpus) {
    Island island(bench.stage, home, bench.program());
    waitUntil(
        "today's transcripts", [&] { return island.meter().bytesRead() >= corpus.todayBytes; }, 0.05);
    if (!bench.isShort) {
        use(bench, home, island);
    }
    // The threads that have read end after half a minute.
    sleepFor(bench.choose(40.0, 0.3));
    return island.meter().memory().pss;
}

} // namespace

void measureIdle(const Bench& bench) {
    const Home home(bench.executables);
    requireThatWritesCount(home);
    const double settling = bench.choose(4.0, 0.3);
    const double bare = barePss(bench, home, settling);

    Island island(bench.stage, home, bench.program());
    if (!bench.isShort) {
        use(bench, home, island);
    }
    sleepFor(settling);
    const ProcessMeter adapter(adapterOf(island));
    const auto adapterSleeps = adapter.sleeps();
    const Rest rest = restFor(island, bench.choose(60.0, 2.2));
    const bool hasAdapterRested = adapter.sleeps() == adapterSleeps;
    const double adapterPss = adapter.memory().pss;
    requireThatUseCounts(island);

    const Range megabytes{5, 4096};
    bench.report.add({"idle_pss", rest.memory.pss, "MB", 42, megabytes});
    bench.report.add({"idle_rss", rest.memory.rss, "MB", {}, megabytes});
    bench.report.add({"idle_bare_pss", bare, "MB", {}, megabytes});
    // It gives a sign of life every two seconds, and so can't use nothing in a minute. A short run may fall
    // between two of them, which on a busy machine lie further apart.
    bench.report.add({"idle_cpu", rest.processor, "% of a core", 0.05, {bench.choose(1e-4, 0.0), 100}});
    bench.report.add({"idle_wakeups", rest.wakeUps, "1/s", 0.6, {bench.choose(0.1, 0.0), 10000}});
    bench.report.add({"idle_disk_writes", rest.written, "bytes", 0, {0, 1e12}});
    bench.report.add({"idle_frames", rest.frames, "frames", 0, {0, 1e6}});
    bench.report.add({"idle_adapter_pss", adapterPss, "MB", 8, {0.5, 1000}});
    bench.report.add({"idle_adapter_wakes", hasAdapterRested ? 0.0 : 1.0, "", 0, {0, 1}});
}

void measureUsedIdle(const Bench& bench) {
    setenv("TZ", "UTC", 1);
    const Home home(bench.executables);
    Corpus corpus =
        makeCorpus(home.path() + "/.claude/projects", {.files = bench.choose<std::size_t>(3142, 30)});
    const auto measure = [&](double share, double limit) {
        touch(corpus, share);
        const std::string name = "idle_used_" + std::to_string(std::lround(share * 100)) + "_pss";
        bench.report.add({name, usedPss(bench, home, corpus), "MB", limit, {5, 4096}});
    };
    measure(0.3, 45);
    measure(1, 50);
}

} // namespace veslora::bench
