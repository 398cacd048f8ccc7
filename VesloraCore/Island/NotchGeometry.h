// SPDX-License-Identifier: MIT
// From what one screen reports to the rectangles that the island works with. Pure arithmetic; screen
// coordinates, points, origin at the bottom left, so that the screen's top edge is its largest y.
#pragma once

#include "VesloraCore/Island/Geometry.h"
#include "VesloraCore/Widgets/WidgetLayout.h"

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

/// Where the island and its panel lie on one screen. A screen without a notch gets a made-up one, so that
/// nobody else has to ask whether a real one exists. Every rectangle hangs from the screen's top edge.
struct NotchGeometry {
    static constexpr double fakeNotchWidth = 200;
    static constexpr double fakeNotchMinHeight = 24;
    static constexpr double minExpandedWidth = 520;
    static constexpr double defaultExpandedWidth = minExpandedWidth;
    static constexpr double maxExpandedWidth = 1134; ///< widest that the panel ever plans for
    static constexpr double rackTopInset = 18;       ///< from the notch's lower edge to the rack
    static constexpr double rackHeight = WidgetLayout::widgetHeight;
    static constexpr double rackBottomInset = 26;
    static constexpr double editTrayHeight = 44; ///< how much taller edit mode makes the island
    static constexpr double shadowMargin = 24;   ///< panel height kept below the island for its shadow
    static constexpr double maxLiveActivityWingWidth = 80; ///< widest that one wing counts for hover
    static constexpr double sideAllowance = 160; ///< least width beyond the notch, both sides together
    static constexpr Size alertSize{360, 76};    ///< body of an alert, the notch not counted
    static constexpr Size claudeRequestAlertSize{520, 104}; ///< body of an approval request

    Rect notch;             ///< the notch, or the made-up one
    Rect alert;             ///< the island in its default alert size
    Rect expanded;          ///< the island open, before the rack's own width is applied
    double screenWidth = 0; ///< width of the screen

    /// `expandedSize` is raised to the alert's size in each dimension by itself; absent means the default
    /// size.
    explicit NotchGeometry(const ScreenMetrics& screen, std::optional<Size> expandedSize = std::nullopt);

    [[nodiscard]] static double expandedHeight(double notchHeight);

    /// The island open at `width`, which is held between the least width round the notch and what the screen
    /// and the panel allow; on a very narrow screen the latter wins. Edit mode grows it downwards.
    [[nodiscard]] Rect expandedFor(double width, bool editing) const;

    /// The notch with a wing on both sides, each counting for `maxLiveActivityWingWidth` at most.
    [[nodiscard]] Rect liveActivity(double wingWidth) const;

    /// An alert with a body of `size` below the notch.
    [[nodiscard]] Rect alertFor(Size size) const;

    /// The panel: planned for the largest state, so that it never changes its size while the island does.
    [[nodiscard]] Rect windowFrame() const;

    bool operator==(const NotchGeometry&) const = default;
};

} // namespace veslora
