// SPDX-License-Identifier: MIT
// The lengths that a timer offers: a ladder which gets coarser the higher it climbs.
#pragma once

#include <array>

namespace veslora::TimerLengths {

/// Minutes, ascending: 1 to 10 one by one, then to 60 by fives, then to 180 by quarters of an hour.
inline constexpr std::array minutes{1,  2,  3,  4,  5,  6,  7,  8,  9,   10,  15,  20,  25,  30,
                                    35, 40, 45, 50, 55, 60, 75, 90, 105, 120, 135, 150, 165, 180};

/// The length that lies `steps` up the ladder from `current`, or down for a negative number; at the ladder's
/// end it stays. The first step from a value beside the ladder leads to the nearest length on that side. No
/// step from there leads to the next one above it, or to the last.
[[nodiscard]] int adjust(int current, int steps);

/// How far up the ladder a length is: from one part in 28 for the first to 1 for the last. A value beside
/// the ladder counts as the first.
[[nodiscard]] double fraction(int current);

} // namespace veslora::TimerLengths
