// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/TimerFlicker.h"

#include <cmath>

namespace veslora {

namespace {

constexpr double pausedOpacity = 0.4;
constexpr double darkOpacity = 0.25;
constexpr double changesPerSecond = 4;

} // namespace

double flickerOpacity(const Countdown& countdown, Timestamp date) {
    if (countdown.isPaused()) {
        return pausedOpacity;
    }
    // Whole quarters of a second; a remainder, since a date of any size must do no harm.
    const bool isOdd = std::abs(std::fmod(std::trunc(date * changesPerSecond), 2)) == 1;
    return countdown.isUrgent(date) && isOdd ? darkOpacity : 1;
}

} // namespace veslora
