// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/NotchGeometry.h"

#include <algorithm>

namespace veslora {

namespace {

Size notchSizeOf(const ScreenMetrics& screen) {
    if (screen.hasNotch() && screen.auxiliaryLeftWidth && screen.auxiliaryRightWidth) {
        return {screen.frame.width - *screen.auxiliaryLeftWidth - *screen.auxiliaryRightWidth,
                screen.safeAreaTop};
    }
    return {NotchGeometry::fakeNotchWidth, std::max(screen.menuBarHeight, NotchGeometry::fakeNotchMinHeight)};
}

/// A rectangle of `size` centred on `midX`, its upper edge on `top`.
Rect hanging(double midX, double top, Size size) {
    return {midX - size.width / 2, top - size.height, size.width, size.height};
}

} // namespace

NotchGeometry::NotchGeometry(const ScreenMetrics& screen, std::optional<Size> expandedSize)
    : screenWidth(screen.frame.width) {
    const double midX = screen.frame.midX();
    const double top = screen.frame.maxY();
    const Size notchSize = notchSizeOf(screen);
    const Size wanted = expandedSize.value_or(Size{defaultExpandedWidth, expandedHeight(notchSize.height)});

    notch = hanging(midX, top, notchSize);
    alert = hanging(
        midX, top,
        {std::max(notchSize.width + sideAllowance, alertSize.width), notchSize.height + alertSize.height});
    expanded =
        hanging(midX, top, {std::max(wanted.width, alert.width), std::max(wanted.height, alert.height)});
}

double NotchGeometry::expandedHeight(double notchHeight) {
    return notchHeight + rackTopInset + rackHeight + rackBottomInset;
}

Rect NotchGeometry::expandedFor(double width, bool editing) const {
    const double floor = notch.width + sideAllowance;
    const double cap = std::min(screenWidth, std::max(expanded.width, maxExpandedWidth));
    const double limited = std::min(cap, std::max(width, floor));
    const double pad = editing ? editTrayHeight : 0;
    return {expanded.midX() - limited / 2, expanded.minY() - pad, limited, expanded.height + pad};
}

Rect NotchGeometry::liveActivity(double wingWidth) const {
    return notch.grownBy(std::min(wingWidth, maxLiveActivityWingWidth), 0);
}

Rect NotchGeometry::alertFor(Size size) const {
    return hanging(notch.midX(), notch.maxY(), {size.width, size.height + notch.height});
}

Rect NotchGeometry::windowFrame() const {
    Rect frame = expandedFor(maxExpandedWidth, true);
    frame.y -= shadowMargin;
    frame.height += shadowMargin;
    return frame;
}

} // namespace veslora
