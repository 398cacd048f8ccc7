// SPDX-License-Identifier: MIT
// What the program does in a stretch of time.
#pragma once

#include "bench/Island.h"

#include <vector>

namespace veslora::bench {

struct Use {
    double seconds = 0;
    double processor = 0; ///< in percent of a core
    std::vector<Frame> frames;

    [[nodiscard]] double framesPerSecond() const { return static_cast<double>(frames.size()) / seconds; }
};

/// Lets so many seconds pass.
[[nodiscard]] Use useDuring(Island& island, double seconds);

} // namespace veslora::bench
