// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/ScrollStepper.h"

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

/// Far more than any list has entries, and far within what an int holds.
constexpr double mostSteps = 1'000'000;

} // namespace

int ScrollStepper::steps(double delta, bool isPrecise) {
    if (!std::isfinite(delta)) {
        return 0;
    }
    if (!isPrecise) {
        return (delta > 0) - (delta < 0);
    }
    const double total = accumulated + delta;
    accumulated = std::fmod(total, pointsPerStep);
    return static_cast<int>(std::clamp(std::trunc(total / pointsPerStep), -mostSteps, mostSteps));
}

} // namespace veslora
