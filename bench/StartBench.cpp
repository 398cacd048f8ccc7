// SPDX-License-Identifier: MIT
// From the start of the program to the island's black on screen, and the same for a program that is nothing
// but the toolkit and a black rectangle, in turns, so that the load of the machine weighs on both alike.
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Island.h"
#include "bench/Measurements.h"

namespace veslora::bench {

void measureStart(const Bench& bench) {
    const Home home(bench.executables);
    std::vector<double> starts;
    std::vector<double> bareStarts;
    // The first of each fills the caches.
    const int rounds = bench.choose(26, 2);
    for (int round = 0; round < rounds; ++round) {
        const double start = Island(bench.stage, home, bench.program()).startTime();
        const double bareStart = Island(bench.stage, home, bench.bare()).startTime();
        if (round > 0) {
            starts.push_back(start * 1000);
            bareStarts.push_back(bareStart * 1000);
        }
    }
    const Range sensible{5, 20000};
    bench.report.add({"start_to_first_frame", median(starts), "ms", 80, sensible});
    bench.report.add({"start_bare", median(bareStarts), "ms", {}, sensible});
    bench.report.add({"start_to_bare", median(starts) / median(bareStarts), "times", 2, {0.1, 100}});
}

} // namespace veslora::bench
