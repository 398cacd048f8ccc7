// SPDX-License-Identifier: MIT
// What the widgets that tick cost: in the open rack, and a running timer beside the closed notch, where no
// more than its wings may be drawn. Frames that follow each other closely are one burst: digits that roll
// over.
#include "VesloraCore/Island/NotchGeometry.h"
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Rack.h"
#include "bench/Use.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

namespace veslora::bench {

namespace {

constexpr Range share{1e-4, 400};

/// The lengths of all bursts in milliseconds; 0 for a frame on its own.
std::vector<double> burstsOf(const std::vector<Frame>& frames) {
    constexpr double gap = 0.1;
    std::vector<double> lengths;
    double begin = 0;
    double last = -gap;
    for (const Frame& frame : frames) {
        if (frame.time - last >= gap) {
            begin = frame.time;
            lengths.push_back(0);
        }
        last = frame.time;
        lengths.back() = 1000 * (last - begin);
    }
    return lengths;
}

void reportBursts(const Bench& bench, const std::string& name, const Use& use, std::optional<double> limit) {
    const std::vector<double> bursts = burstsOf(use.frames);
    const double rate = static_cast<double>(bursts.size()) / use.seconds;
    // Where no figure changes nothing is drawn.
    const double length = bursts.empty() ? 0 : percentile(bursts, 0.95);
    bench.report.add({name + "_fps", use.framesPerSecond(), "1/s", {}, {0, 1000}});
    bench.report.add({name + "_bursts", rate, "1/s", limit, {0, 10}});
    bench.report.add({name + "_burst_p95", length, "ms", {}, {0, 60000}});
}

using Begin = void (*)(const Rack&);

/// With a program of its own: what the rack holds, what is set going in it, and how many bursts it may draw a
/// second.
void measureOpen(const Bench& bench, const std::string& name, const std::string& widgets, Begin begin,
                 std::optional<double> bursts) {
    const Rack rack(bench.stage, widgets);
    const Home home(bench.executables, rack.settings());
    Island island(bench.stage, home, bench.program());
    island.open();
    island.frames().waitForRest();
    begin(rack);
    // The meters have told the processor's share for the first time by then.
    sleepFor(bench.choose(5.0, 0.5));
    const Use use = useDuring(island, bench.choose(20.0, 2.2));
    bench.report.add({name + "_cpu", use.processor, "% of a core", 2, share});
    reportBursts(bench, name, use, bursts);
}

/// The parts of the panel left and right of the notch that the wings of a timer below ten minutes take.
std::vector<Area> wingsIn(const Area& panel) {
    constexpr int width = 46;
    constexpr int height = static_cast<int>(NotchGeometry::fakeNotchMinHeight);
    constexpr int halfNotch = static_cast<int>(NotchGeometry::fakeNotchWidth) / 2;
    const int middle = panel.width / 2;
    return {{middle - halfNotch - width, 0, width, height}, {middle + halfNotch, 0, width, height}};
}

bool lies(const Area& area, const Area& within) {
    return area.x >= within.x && area.y >= within.y && area.right() <= within.right() &&
           area.bottom() <= within.bottom();
}

bool isOutside(const Frame& frame, const std::vector<Area>& wings) {
    return std::ranges::any_of(frame.damaged, [&](const Area& area) {
        return std::ranges::none_of(wings, [&](const Area& wing) { return lies(area, wing); });
    });
}

double countOutside(const std::vector<Frame>& frames, const std::vector<Area>& wings) {
    return static_cast<double>(
        std::ranges::count_if(frames, [&](const Frame& frame) { return isOutside(frame, wings); }));
}

/// In percent of one wing.
std::vector<double> areasOf(const std::vector<Frame>& frames, const Area& wing) {
    std::vector<double> areas;
    for (const Frame& frame : frames) {
        areas.push_back(100 * frame.area() / (wing.width * wing.height));
    }
    return areas;
}

} // namespace

void measureWidgets(const Bench& bench) {
    // The meters tick every two seconds, keep awake every second; one more is there where a minute ends or
    // the stretch itself begins.
    measureOpen(
        bench, "open_quiet", "meters,clock", [](const Rack&) {}, 0.6);
    measureOpen(
        bench, "open_awake", "meters,clock,keepAwake", [](const Rack& rack) { rack.startKeepAwake(); }, 1.6);
    const std::string all = "timer,meters,clock,keepAwake";
    const auto start = [](const Rack& rack) {
        rack.startKeepAwake();
        rack.startTimer();
    };
    const auto startLong = [](const Rack& rack) {
        rack.startKeepAwake();
        rack.startTimer(Rack::Length::longest);
    };
    measureOpen(bench, "open_timer", all, start, {});
    measureOpen(bench, "open_timer25", all, startLong, {});
}

void measureTimerWings(const Bench& bench) {
    const Rack rack(bench.stage, "timer,clock");
    const Home home(bench.executables, rack.settings());
    Island island(bench.stage, home, bench.program());
    const std::vector<Area> wings = wingsIn(island.panel());
    island.open();
    island.frames().waitForRest();
    if (countOutside(island.frames().frames(), wings) == 0) {
        throw std::runtime_error("an island that opens is not seen to draw beside the wings");
    }
    rack.startTimer();
    island.close();
    sleepFor(bench.choose(3.0, 1.0));
    const Use use = useDuring(island, bench.choose(30.0, 2.2));

    const std::vector<double> areas = areasOf(use.frames, wings.front());
    const Range percent{0.01, 1e4};
    bench.report.add({"timer_wings_cpu", use.processor, "% of a core", {}, share});
    reportBursts(bench, "timer_wings", use, {});
    bench.report.add({"timer_wings_area_p50", percentile(areas, 0.5), "% of a wing", {}, percent});
    bench.report.add({"timer_wings_area_most", percentile(areas, 1), "% of a wing", 100, percent});
    bench.report.add({"timer_wings_outside", countOutside(use.frames, wings), "frames", 0, {0, 1e6}});
}

} // namespace veslora::bench
