// SPDX-License-Identifier: MIT
// Whether the position that a metronome says is heard is the one that was heard.
#pragma once

#include "bench/Recording.h"
#include "bench/inside/BeatRecord.h"

#include <cstdint>
#include <vector>

namespace veslora::bench {

/// What the metronome said of the sample that is heard, and when, on the monotonic clock.
struct Claim {
    double time = 0;
    std::int64_t sample = 0;
};

/// In milliseconds. Above 0, a sample was heard before the metronome said so.
struct HeardError {
    double offset = 0; ///< the median
    double spread = 0; ///< from the lowest hundredth to the highest
    double range = 0;  ///< from the lowest to the highest
};

/// The first onset of the recording is the first beat of the plan, which ties the metronome's samples to
/// those of the recording.
[[nodiscard]] HeardError heardError(const std::vector<Claim>& claims, const Recording& recording,
                                    const BeatPlan& plan);

} // namespace veslora::bench
