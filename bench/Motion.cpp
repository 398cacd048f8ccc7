// SPDX-License-Identifier: MIT
#include "bench/Motion.h"

#include "bench/Clock.h"

namespace veslora::bench {

void Motion::add(Island& island, const std::function<void()>& begin) {
    const std::size_t before = island.frames().count();
    const double processor = island.meter().processorTime();
    const double start = monotonicNow();
    begin();
    waitUntil("the first frame", [&] { return island.frames().count() > before; });
    constexpr double rest = 0.1;
    island.frames().waitForRest(rest);
    m_time += monotonicNow() - start - rest;
    m_processor += island.meter().processorTime() - processor;
    const auto& frames = island.frames().frames();
    m_drawnTime += frames.back().time - frames[before].time;
    m_frames += static_cast<double>(frames.size() - before - 1);
}

} // namespace veslora::bench
