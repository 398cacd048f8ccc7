// SPDX-License-Identifier: MIT
// From what one screen reports to the rectangles that the island works with. Pure arithmetic; screen coordinates,
// points, origin at the bottom left, so that the screen's top edge is its largest y.
#pragma once

#include "VesloraCore/Geometry.h"

#include <optional>

namespace veslora {

/// What was read from one screen.
struct ScreenMetrics {
    Rect frame;             ///< the whole screen
    double safeAreaTop = 0; ///< height of the strip beside the camera notch; 0 on a screen without one
    std::optional<double> auxiliaryLeftWidth;  ///< free width left of the notch, where the system tells
    std::optional<double> auxiliaryRightWidth; ///< free width right of the notch
    double menuBarHeight = 0; ///< from the top of `frame` down to the area that windows may use

    [[nodiscard]] bool hasNotch() const { return safeAreaTop > 0; }
    bool operator==(const ScreenMetrics&) const = default;
};

} // namespace veslora
