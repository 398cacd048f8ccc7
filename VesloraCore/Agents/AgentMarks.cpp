// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AgentMarks.h"

#include <cmath>
#include <cstddef>

namespace veslora {

namespace {

/// Which of `count` equal stretches of time, going round since 1970, a date falls into.
std::size_t phase(Timestamp date, double period, std::size_t count) {
    const double steps = std::fmod(std::floor(date / period), static_cast<double>(count));
    if (!std::isfinite(steps)) {
        return 0;
    }
    // Before 1970 the remainder is negative.
    return static_cast<std::size_t>(steps < 0 ? steps + static_cast<double>(count) : steps);
}

} // namespace

std::string_view ClaudeSpinner::frame(Timestamp date) {
    return frames[phase(date, period, frames.size())];
}

std::string_view CodexSpinner::frame(Timestamp date) {
    return frames[phase(date, period, frames.size())];
}

bool StatusBlink::isLit(Timestamp date) {
    return phase(date, period, 2) == 0;
}

} // namespace veslora
