// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/FullscreenDetector.h"

#include <algorithm>

namespace veslora::FullscreenDetector {

namespace {

/// Points by which a covering window may fall short on each side.
constexpr double slack = 1;

} // namespace

bool isFullscreen(const std::vector<WindowFrame>& windows, const Rect& screen, double menuBarHeight,
                  bool menuBarAutoHides) {
    if (menuBarAutoHides) {
        return false;
    }
    const Rect body{screen.x, screen.y, screen.width, screen.height - menuBarHeight};
    const Rect strip{screen.x, screen.maxY() - menuBarHeight, screen.width, menuBarHeight};
    const bool showsMenuBar = std::ranges::any_of(windows, [&](const WindowFrame& window) {
        return window.layer == WindowFrame::menuBarLayer && window.frame.intersects(strip);
    });
    return !showsMenuBar && std::ranges::any_of(windows, [&](const WindowFrame& window) {
        return window.layer == WindowFrame::normalLayer && !window.ownerIsSelf &&
               window.frame.grownBy(slack, slack).contains(body);
    });
}

bool shouldShowIsland(bool isFullscreen, bool hideInFullscreen, bool isShowingAlert) {
    return isShowingAlert || !(isFullscreen && hideInFullscreen);
}

} // namespace veslora::FullscreenDetector
