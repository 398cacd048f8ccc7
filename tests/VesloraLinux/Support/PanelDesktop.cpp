// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/PanelDesktop.h"

#include <xcb/shape.h>

#include <algorithm>

namespace veslora::testing {

std::vector<QRect> PanelDesktop::shape(std::uint8_t kind) {
    desktop.settle();
    xcb_connection_t* const xcb = desktop.connection().xcb();
    const auto cookie = xcb_shape_get_rectangles(xcb, panel.nativeWindow(), kind);
    const X11Reply<xcb_shape_get_rectangles_reply_t> reply(
        xcb_shape_get_rectangles_reply(xcb, cookie, nullptr));
    const xcb_rectangle_t* const first = xcb_shape_get_rectangles_rectangles(reply.get());
    std::vector<QRect> result;
    for (const auto* rect = first; rect != first + reply->rectangles_len; ++rect) {
        result.emplace_back(rect->x, rect->y, rect->width, rect->height);
    }
    return result;
}

QRect PanelDesktop::nativeFrame() {
    desktop.settle();
    xcb_connection_t* const xcb = desktop.connection().xcb();
    const X11Reply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, panel.nativeWindow()), nullptr));
    return {reply->x, reply->y, reply->width, reply->height};
}

bool PanelDesktop::isOnTop() {
    desktop.settle();
    xcb_connection_t* const xcb = desktop.connection().xcb();
    const auto stack = stackOf(xcb, desktop.connection().root());
    const auto own = std::ranges::find(stack, panel.nativeWindow());
    return own != stack.end() && std::all_of(own + 1, stack.end(), [&](xcb_window_t window) {
               const X11Reply<xcb_get_window_attributes_reply_t> attributes(
                   xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
               return !attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
                      attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
           });
}

} // namespace veslora::testing
