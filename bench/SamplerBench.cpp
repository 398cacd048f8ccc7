// SPDX-License-Identifier: MIT
// Whether the machine's counters are left alone while nobody looks at them: by what the program opens while
// the island is closed, before its rack was open and afterwards, and while it is open on the meters.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"
#include "bench/Rack.h"
#include "bench/Trace.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace veslora::bench {

namespace {

using Openings = std::vector<Trace::Opening>;

std::ptrdiff_t countOf(const Trace& trace) {
    return static_cast<std::ptrdiff_t>(trace.openings().size());
}

Openings openingsSince(const Trace& trace, std::ptrdiff_t before) {
    const Openings all = trace.openings();
    return {all.begin() + before, all.end()};
}

Openings openingsDuring(const Trace& trace, double seconds) {
    const std::ptrdiff_t before = countOf(trace);
    sleepFor(seconds);
    return openingsSince(trace, before);
}

constexpr std::array<std::string_view, 3> counters{"/proc/stat", "/proc/meminfo", "/sys/class/power_supply"};

double readsOf(std::string_view counter, const Openings& openings) {
    return static_cast<double>(std::ranges::count_if(
        openings, [&](const Trace::Opening& opening) { return opening.path.starts_with(counter); }));
}

double samplesIn(const Openings& openings) {
    double total = 0;
    for (const std::string_view counter : counters) {
        total += readsOf(counter, openings);
    }
    return total;
}

/// What is never seen, even where it must be, says nothing where it is not.
void requireAllCounters(const Openings& openings) {
    for (const std::string_view counter : counters) {
        if (readsOf(counter, openings) == 0) {
            throw std::runtime_error("the open meters do not read " + std::string(counter));
        }
    }
}

/// Seconds from each look at the processor's counts to the next; the first look is left out, which opening
/// the rack causes between two ticks.
std::vector<double> intervalsOf(const Openings& openings) {
    std::vector<double> times;
    for (const Trace::Opening& opening : openings) {
        if (opening.path == "/proc/stat") {
            times.push_back(opening.time);
        }
    }
    std::vector<double> intervals;
    for (std::size_t index = 2; index < times.size(); ++index) {
        intervals.push_back(times[index] - times[index - 1]);
    }
    return intervals;
}

} // namespace

void measureSampler(const Bench& bench) {
    if (!Trace::isAllowed()) {
        std::cerr << "What the program opens is not measured: this machine lets no program be watched.\n";
        return;
    }
    const Rack rack(bench.stage, "meters,clock");
    const Home home(bench.executables, rack.settings());
    const Trace trace(home.path() + "/openings");
    const Island island(bench.stage, home, bench.program(), trace.runner());
    const double closedTime = bench.choose(20.0, 2.2);
    sleepFor(bench.choose(4.0, 0.5));
    const Openings before = openingsDuring(trace, closedTime);

    const std::ptrdiff_t beginning = countOf(trace);
    island.open();
    sleepFor(bench.choose(20.0, 6.5));
    const Openings open = openingsSince(trace, beginning);
    requireAllCounters(open);
    island.close();
    sleepFor(bench.choose(2.0, 0.5));
    const Openings after = openingsDuring(trace, closedTime);

    const double rate = static_cast<double>(before.size() + after.size()) / (2 * closedTime);
    // It gives a sign of life every two seconds, and so can't open nothing.
    bench.report.add({"closed_opens", rate, "1/s", {}, {0.1, 10000}});
    bench.report.add({"closed_sampler_reads", samplesIn(before) + samplesIn(after), "files", 0, {0, 1e6}});
    bench.report.add(
        {"open_sampler_interval", median(intervalsOf(open)), "s", 1.9, {0.5, 2.5}, Bound::lower});
}

} // namespace veslora::bench
