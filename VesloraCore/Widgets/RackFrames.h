// SPDX-License-Identifier: MIT
// Where the modules of a page are in the rack, and where one that is dragged would land. Plain functions; all
// places are points from the rack's left edge.
#pragma once

#include "VesloraCore/Widgets/WidgetLayout.h"

#include <optional>
#include <vector>

namespace veslora {

struct ModuleFrame {
    WidgetID id = WidgetID::clock;
    double x = 0;
    double width = 0;

    [[nodiscard]] double midX() const { return x + width / 2; }
    bool operator==(const ModuleFrame&) const = default;
};

/// What a row of modules has to go by.
struct RackRoom {
    double width = 0;                    ///< of the rack
    double limit = 0;                    ///< the most that the rack may ever take on its screen
    std::optional<double> customSpacing; ///< the user's own gap; absent where modules spread over the width

    static constexpr double automaticSpacing = 20; ///< the least gap of modules that spread
    static constexpr double leastSpacing = 8;      ///< what the gaps give way to on a narrow screen
};

namespace RackFrames {

/// Points from the rack's edge within which a drag flips the page.
inline constexpr double edgeBand = 24;

/// Points between two modules of `page`: the user's own, or what spreads them over the rack. On a screen that
/// is too narrow for it less, but never less than `leastSpacing`.
[[nodiscard]] double spacing(const std::vector<WidgetEntry>& page, const RackRoom& room);

/// From left to right. The row is in the middle of the rack, also where it is wider.
[[nodiscard]] std::vector<ModuleFrame> frames(const std::vector<WidgetEntry>& page, const RackRoom& room);

/// Where among `others`, the arrangement without a dragged module, that module would land with its middle at
/// `x`. `atStart` is what was on the page when it was taken up. At the end where none of the others was
/// there.
[[nodiscard]] int dropIndex(const std::vector<WidgetID>& others, const std::vector<ModuleFrame>& atStart,
                            double x);

/// The page to flip to with the pointer at `x`: -1 or 1 beside the one on show, 0 away from both edges.
[[nodiscard]] int edgeDirection(double x, double rackWidth);

} // namespace RackFrames

} // namespace veslora
