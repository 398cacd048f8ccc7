// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Shape.h"

#include <xcb/shape.h>

#include <vector>

namespace veslora::X11Shape {
namespace {

void set(xcb_connection_t* connection, xcb_window_t window, xcb_shape_kind_t kind, const QRegion& region) {
    std::vector<xcb_rectangle_t> rectangles;
    for (const QRect& rect : region) {
        rectangles.push_back({static_cast<std::int16_t>(rect.x()), static_cast<std::int16_t>(rect.y()),
                              static_cast<std::uint16_t>(rect.width()),
                              static_cast<std::uint16_t>(rect.height())});
    }
    // A region's rectangles come in rows from top to bottom, as the server likes them best.
    xcb_shape_rectangles(connection, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED, window, 0, 0,
                         static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(connection);
}

} // namespace

void setInput(xcb_connection_t* connection, xcb_window_t window, const QRegion& region) {
    set(connection, window, XCB_SHAPE_SK_INPUT, region);
}

void setBounding(xcb_connection_t* connection, xcb_window_t window, const QRegion& region) {
    set(connection, window, XCB_SHAPE_SK_BOUNDING, region);
}

void resetBounding(xcb_connection_t* connection, xcb_window_t window) {
    xcb_shape_mask(connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING, window, 0, 0, XCB_PIXMAP_NONE);
    xcb_flush(connection);
}

} // namespace veslora::X11Shape
