// SPDX-License-Identifier: MIT
// Turns sideways scrolling over the rack into steps from page to page. Plain values without a clock.
#pragma once

#include "VesloraCore/Widgets/ScrollStepper.h"

#include <optional>

namespace veslora {

struct PageScroll {
    enum class Phase {
        unknown, ///< the window system tells of none, as X11
        began,
        changed,
        momentum ///< goes on by itself after the fingers were lifted
    };

    double deltaX = 0;      ///< to the right above 0: points of a touchpad or screen, notches of a wheel
    double deltaY = 0;      ///< in the same unit
    bool isPrecise = false; ///< of a touchpad or screen
    bool isInverted =
        false; ///< the desktop has turned the movement round, so that content follows the fingers
    Phase phase = Phase::unknown;
    double time = 0; ///< steady seconds
};

class PageSwipe {
  public:
    /// Steady seconds without any movement after which the next begins a gesture, where no phase tells.
    static constexpr double pause = 0.2;

    /// How far to turn the page: 1, -1 or, where the movement was taken but does not turn it, 0. Nothing for
    /// one that is not clearly sideways, which belongs to whatever lies below. Fingers turn one page a
    /// gesture, however far they go; a wheel one a notch, of which fine wheels send fractions.
    std::optional<int> handle(const PageScroll& scroll);

  private:
    [[nodiscard]] int fingerSteps(double delta);
    [[nodiscard]] int wheelSteps(double delta);

    ScrollStepper m_stepper;
    double m_notch = 0;        ///< fractions of a notch that have not made one yet
    bool m_hasStepped = false; ///< in this gesture
    std::optional<double> m_last;
};

} // namespace veslora
