// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Windows.h"

#include <utility>

namespace veslora::X11Windows {

std::vector<xcb_window_t> childrenOf(X11Connection& connection, xcb_window_t window) {
    const auto cookie = xcb_query_tree(connection.xcb(), window);
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(connection.xcb(), cookie, nullptr));
    connection.takeQueuedEvents();
    if (!tree) {
        return {};
    }
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    return {first, first + tree->children_len};
}

std::vector<xcb_window_t> managed(X11Connection& connection) {
    auto windows = connection.values(connection.root(), "_NET_CLIENT_LIST_STACKING");
    // Some tell of no order while there is a single window.
    return windows.empty() ? connection.values(connection.root(), "_NET_CLIENT_LIST") : windows;
}

std::vector<X11Window> describe(X11Connection& connection, const std::vector<xcb_window_t>& windows) {
    xcb_connection_t* const xcb = connection.xcb();
    std::vector<std::pair<xcb_get_window_attributes_cookie_t, xcb_get_geometry_cookie_t>> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        cookies.emplace_back(xcb_get_window_attributes(xcb, window), xcb_get_geometry(xcb, window));
    }
    std::vector<X11Window> result;
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, cookies[index].first, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(xcb, cookies[index].second, nullptr));
        X11Window& window = result.emplace_back();
        window.id = windows[index];
        if (attributes && geometry) {
            window.border = geometry->border_width;
            window.frame = {geometry->x, geometry->y, geometry->width + 2 * window.border,
                            geometry->height + 2 * window.border};
            window.isViewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
            window.isOverrideRedirect = attributes->override_redirect != 0;
        }
    }
    connection.takeQueuedEvents();
    return result;
}

void placeOnRoot(X11Connection& connection, std::vector<X11Window>& windows) {
    xcb_connection_t* const xcb = connection.xcb();
    std::vector<xcb_translate_coordinates_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const X11Window& window : windows) {
        const auto outside = static_cast<std::int16_t>(-window.border);
        cookies.push_back(xcb_translate_coordinates(xcb, window.id, connection.root(), outside, outside));
    }
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const X11Reply<xcb_translate_coordinates_reply_t> place(
            xcb_translate_coordinates_reply(xcb, cookies[index], nullptr));
        if (place) {
            windows[index].frame.moveTo(place->dst_x, place->dst_y);
        } else {
            windows[index].isViewable = false;
        }
    }
    connection.takeQueuedEvents();
}

} // namespace veslora::X11Windows
