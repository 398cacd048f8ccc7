// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/Countdown.h"

#include <algorithm>

namespace veslora {

Countdown::Countdown(double seconds, Timestamp startingAt)
    : duration(seconds), phase(Running{startingAt + seconds}) {}

bool Countdown::isPaused() const {
    return std::holds_alternative<Paused>(phase);
}

double Countdown::remaining(Timestamp at) const {
    if (const auto* paused = std::get_if<Paused>(&phase)) {
        return paused->remaining;
    }
    return std::max(std::get<Running>(phase).endsAt - at, 0.0);
}

double Countdown::fractionRemaining(Timestamp at) const {
    return duration > 0 ? std::min(remaining(at) / duration, 1.0) : 0;
}

bool Countdown::isFinished(Timestamp at) const {
    return remaining(at) == 0;
}

bool Countdown::isUrgent(Timestamp at) const {
    const double left = remaining(at);
    return !isPaused() && left > 0 && left <= urgentThreshold;
}

void Countdown::pause(Timestamp at) {
    if (!isPaused()) {
        phase = Paused{remaining(at)};
    }
}

void Countdown::resume(Timestamp at) {
    if (isPaused()) {
        phase = Running{at + remaining(at)};
    }
}

void Countdown::extend(double seconds, Timestamp at) {
    if (isFinished(at)) {
        *this = Countdown(seconds, at);
        return;
    }
    duration += seconds;
    if (auto* paused = std::get_if<Paused>(&phase)) {
        paused->remaining += seconds;
    } else {
        std::get<Running>(phase).endsAt += seconds;
    }
}

} // namespace veslora
