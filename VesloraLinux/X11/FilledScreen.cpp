// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/FilledScreen.h"

#include <cmath>

namespace veslora::FilledScreen {

namespace {

using Role = DesktopWindow::Role;

Rect inPoints(const QRect& frame, const ScreenInfo& screen, const QRect& nativeFrame) {
    const QRect place = frame.translated(-nativeFrame.topLeft());
    return {place.x() / screen.scale,
            screen.metrics.frame.height - (place.y() + place.height()) / screen.scale,
            place.width() / screen.scale, place.height() / screen.scale};
}

/// By the point by which a window may fall short.
bool covers(const DesktopWindow& window, const ScreenInfo& screen, const QRect& nativeFrame) {
    const int slack = static_cast<int>(std::lround(screen.scale));
    return window.frame.adjusted(-slack, -slack, slack, slack).contains(nativeFrame);
}

bool fills(const DesktopWindow& window) {
    const bool isBorderless = !window.isFramed && !window.isMaximised && !window.isBelow;
    return window.isFullscreen || (isBorderless && window.role == Role::application);
}

/// A user who has it in front looks at it, and at the desktop's bars beside it.
bool hidesTheRest(const DesktopWindow& window, const QRect& nativeFrame) {
    return window.isMaximised && isLarge(window.frame.size(), nativeFrame) &&
           window.frame.contains(nativeFrame.center());
}

} // namespace

std::vector<WindowFrame> windowsThatCount(const std::vector<DesktopWindow>& topmostFirst,
                                          const ScreenInfo& screen, const QRect& nativeFrame) {
    std::vector<WindowFrame> result;
    for (const DesktopWindow& window : topmostFirst) {
        const WindowFrame frame{.frame = inPoints(window.frame, screen, nativeFrame),
                                .ownerIsSelf = window.isOwn};
        if (window.role == Role::bar) {
            result.push_back(frame);
            result.back().layer = WindowFrame::menuBarLayer;
        } else if (fills(window) && covers(window, screen, nativeFrame)) {
            // Whatever lies beneath, nobody sees it.
            result.push_back(frame);
            break;
        } else if (hidesTheRest(window, nativeFrame)) {
            break;
        }
    }
    return result;
}

bool isLarge(const QSize& size, const QRect& nativeFrame) {
    // Frames and bars take the rest.
    constexpr double leastShare = 0.75;
    return size.width() >= leastShare * nativeFrame.width() &&
           size.height() >= leastShare * nativeFrame.height();
}

} // namespace veslora::FilledScreen
