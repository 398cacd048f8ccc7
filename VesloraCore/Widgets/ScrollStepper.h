// SPDX-License-Identifier: MIT
// Gathers the movement of a wheel or a touchpad into whole steps.
#pragma once

namespace veslora {

struct ScrollStepper {
    static constexpr double pointsPerStep = 60;

    double accumulated = 0; ///< points moved that have not made a step yet; less than a step either way

    /// How many steps `delta` completes, negative for the other direction. A notch of a wheel, which is not
    /// precise, is one step whatever its size. A delta that is no finite number makes none.
    int steps(double delta, bool isPrecise);

    bool operator==(const ScrollStepper&) const = default;
};

} // namespace veslora
