// SPDX-License-Identifier: MIT
#include "VesloraCore/KeepAwake/KeepAwakeState.h"

#include <algorithm>
#include <cmath>

namespace veslora {

void KeepAwakeState::start(std::optional<double> seconds, Timestamp now) {
    isIndefinite = !seconds;
    endsAt.reset();
    if (seconds) {
        endsAt = now + std::clamp(*seconds, 1.0, longest);
    }
}

void KeepAwakeState::stop() {
    endsAt.reset();
    isIndefinite = false;
}

bool KeepAwakeState::isManualActive(Timestamp now) const {
    return isIndefinite || (endsAt && now < *endsAt);
}

std::optional<double> KeepAwakeState::remaining(Timestamp now) const {
    if (isIndefinite || !endsAt || !(now < *endsAt)) {
        return std::nullopt;
    }
    return std::max(std::round(*endsAt - now), 1.0);
}

void KeepAwakeState::adjust(int steps, Timestamp now) {
    const auto left = remaining(now);
    if (!left) {
        return;
    }
    const double length = steps * step + std::round(*left / step) * step;
    endsAt = now + std::clamp(length, step, longest);
}

std::optional<KeepAwakeHold> KeepAwakeState::hold(Timestamp now) const {
    if (isManualActive(now)) {
        return KeepAwakeHold{keepsDisplayOn, KeepAwakeHold::Reason::manual};
    }
    if (whileClaudeWorks && claudeIsWorking) {
        return KeepAwakeHold{false, KeepAwakeHold::Reason::claude};
    }
    return std::nullopt;
}

} // namespace veslora
