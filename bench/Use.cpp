// SPDX-License-Identifier: MIT
#include "bench/Use.h"

#include "bench/Clock.h"

namespace veslora::bench {

Use useDuring(Island& island, double seconds) {
    const std::size_t frames = island.frames().count();
    const double time = island.meter().processorTime();
    const double start = monotonicNow();
    sleepFor(seconds);
    const double elapsed = monotonicNow() - start;
    const double processor = 100 * (island.meter().processorTime() - time) / elapsed;
    return {elapsed, processor, island.frames().framesSince(frames)};
}

} // namespace veslora::bench
