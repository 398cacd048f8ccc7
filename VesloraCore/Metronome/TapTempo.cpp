// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/TapTempo.h"

#include "VesloraCore/Metronome/MetronomeTempo.h"

#include <algorithm>
#include <cmath>

namespace veslora {

std::optional<int> TapTempo::tap(Timestamp at) {
    constexpr std::size_t mostTaps = 4;
    if (!taps.empty() && at - taps.back() > resetGap) {
        taps.clear();
    }
    taps.push_back(at);
    if (taps.size() > mostTaps) {
        taps.erase(taps.begin());
    }
    const double interval = (taps.back() - taps.front()) / static_cast<double>(taps.size() - 1);
    if (taps.size() < 2 || !(interval > 0)) {
        return std::nullopt;
    }
    // Held before it is rounded: the tempo of two taps that nearly coincide is no integer.
    constexpr auto range = MetronomeTempo::range;
    return static_cast<int>(std::lround(std::clamp<double>(60 / interval, range.lower, range.upper)));
}

} // namespace veslora
