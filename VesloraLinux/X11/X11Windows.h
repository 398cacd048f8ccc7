// SPDX-License-Identifier: MIT
// What the X server itself knows of windows: their order, place and state. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"

#include <QRect>

#include <vector>

namespace veslora {

struct X11Window {
    xcb_window_t id = XCB_WINDOW_NONE;
    QRect frame; ///< with its border, in native pixels from the top left corner of its parent
    int border = 0;
    bool isViewable = false;
    bool isOverrideRedirect = false;
};

namespace X11Windows {

/// From the bottom of the stack to its top; empty when the window has gone.
[[nodiscard]] std::vector<xcb_window_t> childrenOf(X11Connection& connection, xcb_window_t window);

/// The windows that a window manager keeps, from the bottom of the stack to its top; in the order of their
/// age where it tells no other; empty without one.
[[nodiscard]] std::vector<xcb_window_t> managed(X11Connection& connection);

/// In one round trip, in the order of `windows`. One that has gone has its id alone.
[[nodiscard]] std::vector<X11Window> describe(X11Connection& connection,
                                              const std::vector<xcb_window_t>& windows);

/// The same with every frame counted from the root's top left corner, however deep its window lies.
void placeOnRoot(X11Connection& connection, std::vector<X11Window>& windows);

} // namespace X11Windows

} // namespace veslora
