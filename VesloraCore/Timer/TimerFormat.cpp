// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/TimerFormat.h"

#include <cmath>

namespace veslora::TimerFormat {

namespace {

constexpr double longestSeconds = 3600.0 * 1'000'000;

/// With a leading zero below 10.
std::string twoDigits(long number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

} // namespace

std::string remaining(double seconds) {
    // Written so that a value that is no number fails the test too.
    const double limited = seconds > 0 ? std::fmin(seconds, longestSeconds) : 0;
    const long total = std::lround(std::ceil(limited));
    const std::string tail = twoDigits(total % 60);
    if (total < 3600) {
        return std::to_string(total / 60) + ":" + tail;
    }
    return std::to_string(total / 3600) + ":" + twoDigits(total / 60 % 60) + ":" + tail;
}

} // namespace veslora::TimerFormat
