// SPDX-License-Identifier: MIT
// How evenly the rack moves while a widget is dragged over it and while its page turns, and what that costs.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Motion.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr Range share{1e-4, 400};
const std::string twoPages = R"({"widgetLayout": "claude:2,timer,meters,keepAwake,clock,claudeUsage"})";

/// Holds a widget of the open rack until the island has grown for its tray.
void edit(const Bench& bench, const Island& island, Place widget) {
    const int height = island.area()->height;
    bench.stage.display().moveTo(widget);
    bench.stage.display().press();
    // Where it takes clicks changes when the button comes up.
    sleepFor(0.7);
    bench.stage.display().release();
    waitUntil("edit mode", [&] { return island.area()->height > height; });
}

/// Carries what is under the pointer back and forth at the rate of an ordinary mouse.
void sway(const Display& display, Place middle, int reach, double seconds) {
    constexpr double rate = 125;
    constexpr double period = 2;
    const double start = monotonicNow();
    for (int step = 1; step <= static_cast<int>(seconds * rate); ++step) {
        const double angle = 2 * std::numbers::pi * step / rate / period;
        display.moveTo({middle.x + static_cast<int>(std::lround(reach * std::sin(angle))), middle.y});
        sleepFor(start + step / rate - monotonicNow());
    }
}

} // namespace

void measureDragging(const Bench& bench) {
    const Home home(bench.executables, twoPages);
    Island island(bench.stage, home, bench.program());
    const Display& display = bench.stage.display();
    island.open();
    island.frames().waitForRest();
    constexpr Place middle{Stage::width / 2, 100};
    edit(bench, island, middle);
    island.frames().waitForRest();

    const double seconds = bench.choose(10.0, 0.5);
    display.press();
    // The first drag makes the ghost's view, which others find made.
    sway(display, middle, 200, bench.choose(2.0, 0.2));
    const std::size_t before = island.frames().count();
    const double processor = island.meter().processorTime();
    const double start = monotonicNow();
    sway(display, middle, 200, seconds);
    const double elapsed = monotonicNow() - start;
    const double used = island.meter().processorTime() - processor;
    const auto frames = static_cast<double>(island.frames().count() - before);
    display.release();
    if (elapsed > 1.1 * seconds) {
        throw std::runtime_error("the machine is too busy to move the pointer as often as it should");
    }
    bench.report.add({"dragging_fps", frames / elapsed, "1/s", 59, {1, 1000}, Bound::lower});
    bench.report.add({"dragging_cpu", 100 * used / elapsed, "% of a core", 30, share});
}

void measurePaging(const Bench& bench) {
    const Home home(bench.executables, twoPages);
    Island island(bench.stage, home, bench.program());
    const Display& display = bench.stage.display();
    island.open();
    island.frames().waitForRest();
    const auto tilt = [&](std::uint8_t button) {
        display.press(button);
        display.release(button);
    };
    constexpr std::uint8_t left = 6;
    constexpr std::uint8_t right = 7;
    display.moveTo({Stage::width / 2, 100});
    Motion motion;
    const int rounds = bench.choose(21, 1);
    for (int round = 0; round < rounds; ++round) {
        if (round == 1) {
            motion = {};
        }
        motion.add(island, [&] { tilt(right); });
        motion.add(island, [&] { tilt(left); });
    }
    bench.report.add({"page_flip_fps", motion.framesPerSecond(), "1/s", 59, {1, 1000}, Bound::lower});
    bench.report.add({"page_flip_cpu", motion.processor(), "% of a core", {}, share});
}

} // namespace veslora::bench
