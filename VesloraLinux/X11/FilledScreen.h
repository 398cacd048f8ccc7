// SPDX-License-Identifier: MIT
// Which of a desktop's windows tell whether an application fills a screen. X has no word for it: programs ask
// for it by a state, or open a window without a frame that is as large as the screen. Pure.
#pragma once

#include "VesloraUI/Platform/ScreenWindows.h"

#include <QRect>

#include <vector>

namespace veslora {

/// One that can be seen, unless others lie on top of it.
struct DesktopWindow {
    enum class Role {
        application,
        bar,   ///< a panel or dock of the desktop's
        other, ///< a wallpaper, a notification and the like
    };

    QRect frame; ///< without what the window manager puts around it, in native pixels of the whole desktop
    Role role = Role::application;
    bool isFullscreen = false; ///< it has asked for the whole screen, and got it
    bool isMaximised = false;  ///< in either direction
    bool isFramed = false;     ///< the window manager has put something around it
    bool isBelow = false;      ///< it is kept beneath all others, as a wallpaper is
    bool isOwn = false;
};

namespace FilledScreen {

/// Those that count, topmost first, in the space of `screen`, whose place on the desktop is `nativeFrame`:
/// the topmost window that fills it unless a maximised one hides that, and the bars above it.
[[nodiscard]] std::vector<WindowFrame> windowsThatCount(const std::vector<DesktopWindow>& topmostFirst,
                                                        const ScreenInfo& screen, const QRect& nativeFrame);

/// Whether a window of this size may come to fill `nativeFrame` by nothing but another state.
[[nodiscard]] bool isLarge(const QSize& size, const QRect& nativeFrame);

} // namespace FilledScreen

} // namespace veslora
