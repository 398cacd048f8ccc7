// SPDX-License-Identifier: MIT
// The two shapes of an X window: what of it is there at all, and what of it takes the pointer.
#pragma once

#include <QRegion>

#include <xcb/xcb.h>

namespace veslora::X11Shape {

/// The pixels of `window` that take the pointer; with none of them it goes to whatever lies beneath.
void setInput(xcb_connection_t* connection, xcb_window_t window, const QRegion& region);

/// The pixels of `window` that are shown.
void setBounding(xcb_connection_t* connection, xcb_window_t window, const QRegion& region);

/// Shows all of `window` again.
void resetBounding(xcb_connection_t* connection, xcb_window_t window);

} // namespace veslora::X11Shape
