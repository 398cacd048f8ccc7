// SPDX-License-Identifier: MIT
// What a running metronome costs, in the open rack and beside the closed notch, its sound included, before a
// sound server of the harness's own.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Rack.h"
#include "bench/SoundServer.h"
#include "bench/Use.h"

#include <functional>
#include <future>
#include <string>

namespace veslora::bench {

namespace {

constexpr Range share{1e-4, 400};

void report(const Bench& bench, const std::string& name, const Use& use, double limit) {
    bench.report.add({name + "_cpu", use.processor, "% of a core", limit, share});
    bench.report.add({name + "_fps", use.framesPerSecond(), "1/s", {}, {0.5, 1000}});
}

/// The server's beside ours: it asks for each piece of sound, and a program that plays makes it wake up.
void reportWakeUps(const Bench& bench, const ProcessMeter& program, const ProcessMeter& server) {
    const double seconds = bench.choose(10.0, 1.2);
    const auto rate = [seconds](const ProcessMeter& meter) {
        return static_cast<double>(meter.wakeUpsIn(seconds)) / seconds;
    };
    auto others = std::async(std::launch::async, rate, std::cref(server));
    bench.report.add({"metronome_wings_wakeups", rate(program), "1/s", {}, {1, 10000}});
    bench.report.add({"metronome_wings_server_wakeups", others.get(), "1/s", {}, {1, 10000}});
}

} // namespace

void measureMetronomeUse(const Bench& bench) {
    const Rack rack(bench.stage, "metronome:2,meters");
    const Home home(bench.executables, rack.settings());
    const SoundServer server(bench.executables, home.path());
    Island island(bench.stage, home, bench.program());
    const double settling = bench.choose(3.0, 0.5);
    const double seconds = bench.choose(20.0, 1.0);
    island.open();
    rack.startMetronome();
    sleepFor(settling);
    report(bench, "metronome_open", useDuring(island, seconds), 3);
    island.close();
    sleepFor(settling);
    const Use wings = useDuring(island, seconds);
    report(bench, "metronome_wings", wings, 1.5);
    reportWakeUps(bench, island.meter(), ProcessMeter(server.pid()));
}

} // namespace veslora::bench
