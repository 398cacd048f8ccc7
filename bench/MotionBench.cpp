// SPDX-License-Identifier: MIT
// Processor time while the pointer moves far from the island, while the island opens and closes, and while
// something on it ticks; and how evenly it moves.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Motion.h"
#include "bench/RequestAlert.h"
#include "bench/Use.h"

#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr Range share{1e-4, 400};
const std::string wideAgents = R"({"widgetLayout": "claude:2,meters,keepAwake"})";

/// Moves the pointer back and forth so many times a second; tells how many movements there were.
int shake(const Display& display, double seconds, double rate) {
    const double start = monotonicNow();
    const int total = static_cast<int>(seconds * rate);
    for (int step = 0; step < total; ++step) {
        sleepFor(start + step / rate - monotonicNow());
        display.moveBy(step % 2 == 0 ? 3 : -3, 0);
    }
    return total;
}

} // namespace

void measureFarMouse(const Bench& bench) {
    const Home home(bench.executables);
    const Island island(bench.stage, home, bench.program());
    constexpr double rate = 1000;
    const double seconds = bench.choose(10.0, 0.5);
    sleepFor(bench.choose(2.0, 0.2));
    const double time = island.meter().processorTime();
    const double start = monotonicNow();
    const int movements = shake(bench.stage.display(), seconds, rate);
    const double elapsed = monotonicNow() - start;
    const double used = island.meter().processorTime() - time;
    if (movements / elapsed < 0.9 * rate) {
        throw std::runtime_error("the machine is too busy to move the pointer as often as it should");
    }
    bench.report.add({"mouse_far", 100 * used / elapsed, "% of a core", 1, share});
}

void measureOpening(const Bench& bench) {
    const Home home(bench.executables, wideAgents);
    Island island(bench.stage, home, bench.program());
    Motion motion;
    const int rounds = bench.choose(21, 1);
    for (int round = 0; round < rounds; ++round) {
        if (round == 1) {
            // The first opening makes what all others find made.
            motion = {};
        }
        motion.add(island, [&] { island.open(); });
        motion.add(island, [&] { island.close(); });
    }
    bench.report.add({"opening_spring_fps", motion.framesPerSecond(), "1/s", 60, {1, 1000}, Bound::lower});
    bench.report.add({"opening_spring_cpu", motion.processor(), "% of a core", 25, share});
}

void measureActivities(const Bench& bench) {
    const Home home(bench.executables, wideAgents);
    Island island(bench.stage, home, bench.program());
    home.setSession(0, "busy");
    const double seconds = bench.choose(15.0, 0.5);
    const double settling = bench.choose(2.0, 0.1);
    sleepFor(settling);
    const Use working = useDuring(island, seconds);

    island.open();
    sleepFor(settling);
    const Use open = useDuring(island, seconds);
    island.close();
    sleepFor(settling);

    home.fileRequest("activity", "make check");
    waitUntil("the request's text", [&] { return RequestAlert::showsText(bench.stage.display()); });
    sleepFor(settling);
    const Use alert = useDuring(island, seconds);

    const Range frames{0.1, 1000};
    bench.report.add({"open_ticking_cpu", open.processor, "% of a core", 2, share});
    bench.report.add({"working_cpu", working.processor, "% of a core", {}, share});
    bench.report.add({"working_fps", working.framesPerSecond(), "1/s", {}, frames});
    bench.report.add({"alert_cpu", alert.processor, "% of a core", {}, share});
    bench.report.add({"alert_fps", alert.framesPerSecond(), "1/s", {}, frames});
}

} // namespace veslora::bench
