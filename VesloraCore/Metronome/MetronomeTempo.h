// SPDX-License-Identifier: MIT
// How fast the metronome may beat.
#pragma once

#include <algorithm>

namespace veslora::MetronomeTempo {

/// Beats per minute; both ends belong to it.
struct Range {
    int lower = 0;
    int upper = 0;
};

inline constexpr Range range{30, 300};
inline constexpr int defaultBPM = 120;

/// The nearest tempo within `range`.
[[nodiscard]] constexpr int clamped(int bpm) {
    return std::clamp(bpm, range.lower, range.upper);
}

} // namespace veslora::MetronomeTempo
