// SPDX-License-Identifier: MIT
// Tells from the windows on a screen whether an application fills it, and whether the island then steps
// aside.
#pragma once

#include "VesloraCore/Island/Geometry.h"

#include <vector>

namespace veslora {

/// One window on the screen in question.
struct WindowFrame {
    static constexpr int normalLayer = 0;
    static constexpr int menuBarLayer = 25; ///< the visible menu bar, or what stands for it

    Rect frame; ///< in the screen's space, origin at the bottom left
    int layer = normalLayer;
    bool ownerIsSelf = false; ///< one of this program's own
    bool operator==(const WindowFrame&) const = default;
};

namespace FullscreenDetector {

/// True when an ordinary window of another program covers `screen` below the strip of `menuBarHeight` and no
/// menu bar shows in that strip. With a menu bar that hides itself a large window can't be told from a
/// fullscreen one, so the answer is then always false.
[[nodiscard]] bool isFullscreen(const std::vector<WindowFrame>& windows, const Rect& screen,
                                double menuBarHeight, bool menuBarAutoHides);

/// An alert shows even over a fullscreen application.
[[nodiscard]] bool shouldShowIsland(bool isFullscreen, bool hideInFullscreen, bool isShowingAlert);

} // namespace FullscreenDetector

} // namespace veslora
