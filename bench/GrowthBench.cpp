// SPDX-License-Identifier: MIT
// How much the program's memory grows while it shows thousands of prompts, or opens and closes as often. The
// pages of libraries are left out: their share depends on which other programs use them at that moment.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"

#include <algorithm>
#include <functional>

namespace veslora::bench {

namespace {

constexpr double pollPause = 0.0003;
constexpr Range megabytes{-64, 1024};

/// Something done over and over, and how often.
struct Work {
    int warmUp = 0; ///< these fill caches and do not count
    int total = 0;
    double rest = 0; ///< seconds before the memory is read
    std::function<void(int)> act;
};

double restingMemory(Island& island, const Work& work) {
    island.waitForClosed();
    sleepFor(work.rest);
    return island.meter().memory().own;
}

double growthOver(Island& island, const Work& work) {
    double before = 0;
    for (int done = 0; done < work.total; ++done) {
        if (done == work.warmUp) {
            before = restingMemory(island, work);
        }
        work.act(done);
    }
    return restingMemory(island, work) - before;
}

void waitForFrame(Island& island) {
    const std::size_t before = island.frames().count();
    waitUntil(
        "a frame", [&] { return island.frames().count() > before; }, pollPause);
}

} // namespace

/// Requests come ten at a time. Each is shown for at least one frame before its tool has run, which makes
/// room for the next; after the tenth the island closes.
void measurePromptGrowth(const Bench& bench) {
    constexpr int batch = 10;
    const Home home(bench.executables);
    Island island(bench.stage, home, bench.program());
    const auto command = [](int number) { return "make install-" + std::to_string(number); };
    const auto act = [&](int number) {
        for (int next = number; number % batch == 0 && next < number + batch; ++next) {
            home.fileRequest("r" + std::to_string(next), command(next));
        }
        waitUntil(
            "the alert", [&] { return island.area().has_value(); }, pollPause);
        waitForFrame(island);
        const std::string id = "e" + std::to_string(number);
        home.fileToolDone(id, command(number));
        waitUntil(
            "the event to be taken", [&] { return home.isTaken(id + ".json"); }, pollPause);
        if (number % batch == batch - 1) {
            waitUntil(
                "the alert to close", [&] { return !island.area(); }, pollPause);
        }
    };
    const Work work{bench.choose(1000, batch), bench.choose(10000, 2 * batch), bench.choose(2.0, 0.1), act};
    bench.report.add({"growth_prompts", growthOver(island, work), "MB", 1, megabytes});
}

/// Most openings turn round in flight after a frame or two, as under a restless hand; one in a hundred, and
/// its closing, are let run to their ends.
void measureOpenGrowth(const Bench& bench) {
    const Home home(bench.executables, R"({"hoverDelay": 0, "widgetLayout": "claude:2,meters,keepAwake"})");
    Island island(bench.stage, home, bench.program());
    const auto act = [&](int number) {
        const bool isWhole = number % 100 == 0;
        island.open();
        isWhole ? island.frames().waitForRest() : waitForFrame(island);
        island.close();
        isWhole ? island.frames().waitForRest() : waitForFrame(island);
    };
    const Work work{bench.choose(1000, 1), bench.choose(10000, 2), bench.choose(2.0, 0.1), act};
    bench.report.add({"growth_opens", growthOver(island, work), "MB", 1, megabytes});
}

/// What the settings window costs beside an island that has been used: while it is open, once it was closed
/// for the first time, and after many times.
void measureSettingsGrowth(const Bench& bench) {
    const Home home(bench.executables);
    Island island(bench.stage, home, bench.program());
    const Display& display = bench.stage.display();
    const auto isThere = [&] { return display.managedWindowOf(island.pid()).has_value(); };
    const auto open = [&] {
        const testing::Program asking({bench.program(), "settings"});
        waitUntil("the settings window", isThere);
        // Its first frames.
        sleepFor(bench.choose(0.1, 0.05));
    };
    const auto close = [&] {
        display.askToClose(*display.managedWindowOf(island.pid()));
        waitUntil("the settings window to go", [&] { return !isThere(); });
    };
    const auto own = [&] {
        sleepFor(bench.choose(2.0, 0.1));
        return island.meter().memory().own;
    };
    island.open();
    island.frames().waitForRest();
    island.close();
    island.waitForClosed();
    const double before = own();
    open();
    bench.report.add({"settings_open", own() - before, "MB", 8, megabytes});
    close();
    bench.report.add({"settings_first", own() - before, "MB", 2, megabytes});
    const int times = bench.choose(200, 2);
    for (int done = 1; done < times; ++done) {
        open();
        close();
    }
    bench.report.add({"growth_settings", own() - before, "MB", 2, megabytes});
}

} // namespace veslora::bench
