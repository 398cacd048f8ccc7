// SPDX-License-Identifier: MIT
#include "VesloraCore/KeepAwake/KeepAwakeText.h"

#include <algorithm>
#include <cmath>

namespace veslora::KeepAwakeText {

namespace {

constexpr double longestSeconds = 3600.0 * 1'000'000;

/// Written so that a value that is no number counts as nothing too.
double limited(double seconds) {
    return seconds > 0 ? std::fmin(seconds, longestSeconds) : 0;
}

/// A colon and the number, with a leading zero below 10.
std::string colonAnd(long number) {
    return (number < 10 ? ":0" : ":") + std::to_string(number);
}

} // namespace

std::string remaining(std::optional<double> seconds, bool indefinite) {
    if (indefinite) {
        return "∞";
    }
    const long total = std::lround(std::ceil(limited(seconds.value_or(0))));
    return std::to_string(total / 3600) + colonAnd(total / 60 % 60) + colonAnd(total % 60);
}

std::string shortText(double seconds, const Words& words) {
    const long minutes = std::lround(std::trunc(limited(seconds) / 60));
    if (minutes < 60) {
        return Words::filled(words.translate("KeepAwake", "%1M"), {std::to_string(std::max(minutes, 1L))});
    }
    return std::to_string(minutes / 60) + colonAnd(minutes % 60);
}

} // namespace veslora::KeepAwakeText
