// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/TimerLengths.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace veslora::TimerLengths {

namespace {

constexpr auto count = static_cast<long long>(minutes.size());

/// Where the steps begin: at the value's own place, or else at the one that a step away from leads to its
/// neighbour.
long long base(int current, int steps) {
    const auto* const found = std::ranges::lower_bound(minutes, current);
    const auto place = std::distance(minutes.begin(), found);
    const bool isOnLadder = found != minutes.end() && *found == current;
    return isOnLadder || steps <= 0 ? place : place - 1;
}

} // namespace

int adjust(int current, int steps) {
    const long long place = std::clamp(base(current, steps) + steps, 0LL, count - 1);
    return minutes[static_cast<std::size_t>(place)];
}

double fraction(int current) {
    const auto* const found = std::ranges::find(minutes, current);
    const auto place = found == minutes.end() ? 0 : std::distance(minutes.begin(), found);
    return static_cast<double>(place + 1) / static_cast<double>(count);
}

} // namespace veslora::TimerLengths
