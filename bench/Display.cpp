// SPDX-License-Identifier: MIT
#include "bench/Display.h"

#include "VesloraLinux/X11/X11Reply.h"

#include <xcb/shape.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>

namespace veslora::bench {

Display::Display() : m_connection(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(m_connection.get()) != 0) {
        throw std::runtime_error("no display");
    }
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
}

std::vector<Pixel> Display::pixels(const Area& area) const {
    const auto cookie =
        xcb_get_image(m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root,
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), ~0U);
    const X11Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
    std::vector<Pixel> result(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height));
    const std::size_t bytes = result.size() * sizeof(Pixel);
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < bytes) {
        throw std::runtime_error("no image of the display");
    }
    std::memcpy(result.data(), xcb_get_image_data(image.get()), bytes);
    return result;
}

void Display::fake(std::uint8_t type, std::uint8_t detail, int x, int y) const {
    xcb_test_fake_input(m_connection.get(), type, detail, XCB_CURRENT_TIME, XCB_WINDOW_NONE,
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    xcb_flush(m_connection.get());
}

void Display::moveBy(int x, int y) const {
    constexpr std::uint8_t relative = 1;
    fake(XCB_MOTION_NOTIFY, relative, x, y);
}

Place Display::pointer() const {
    const auto cookie = xcb_query_pointer(m_connection.get(), m_screen->root);
    const X11Reply<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection.get(), cookie, nullptr));
    if (!reply) {
        throw std::runtime_error("no pointer");
    }
    return {reply->root_x, reply->root_y};
}

void Display::moveTo(Place place) const {
    const Place from = pointer();
    moveBy(place.x - from.x, place.y - from.y);
    const Place reached = pointer();
    if (reached.x != place.x || reached.y != place.y) {
        throw std::runtime_error("the pointer does not go where it is sent");
    }
}

void Display::press(std::uint8_t button) const {
    fake(XCB_BUTTON_PRESS, button, 0, 0);
}

void Display::release(std::uint8_t button) const {
    fake(XCB_BUTTON_RELEASE, button, 0, 0);
}

xcb_atom_t Display::atom(const char* name) const {
    const auto cookie =
        xcb_intern_atom(m_connection.get(), 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

pid_t Display::processOf(xcb_window_t window) const {
    const auto cookie =
        xcb_get_property(m_connection.get(), 0, window, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 0, 1);
    const X11Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    std::uint32_t process = 0;
    if (reply && xcb_get_property_value_length(reply.get()) == sizeof process) {
        std::memcpy(&process, xcb_get_property_value(reply.get()), sizeof process);
    }
    return static_cast<pid_t>(process);
}

bool Display::isPanel(xcb_window_t window) const {
    const auto cookie = xcb_get_window_attributes(m_connection.get(), window);
    const X11Reply<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(m_connection.get(), cookie, nullptr));
    return reply && reply->override_redirect != 0 && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

std::optional<xcb_window_t> Display::panelOf(pid_t process) const {
    const auto cookie = xcb_query_tree(m_connection.get(), m_screen->root);
    const X11Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(m_connection.get(), cookie, nullptr));
    const auto children = std::span(xcb_query_tree_children(tree.get()),
                                    static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    const auto found = std::ranges::find_if(
        children, [&](xcb_window_t window) { return isPanel(window) && processOf(window) == process; });
    return found == children.end() ? std::nullopt : std::optional(*found);
}

std::optional<xcb_window_t> Display::managedWindowOf(pid_t process) const {
    constexpr std::uint32_t most = 1024;
    const auto cookie = xcb_get_property(m_connection.get(), 0, m_screen->root, atom("_NET_CLIENT_LIST"),
                                         XCB_ATOM_WINDOW, 0, most);
    const X11Reply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(m_connection.get(), cookie, nullptr));
    if (!reply) {
        return std::nullopt;
    }
    const auto windows = std::span(static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get())),
                                   static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
                                       sizeof(xcb_window_t));
    const auto found =
        std::ranges::find_if(windows, [&](xcb_window_t window) { return processOf(window) == process; });
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

void Display::askToClose(xcb_window_t window) const {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("_NET_CLOSE_WINDOW");
    xcb_send_event(m_connection.get(), 0, m_screen->root,
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(m_connection.get());
}

std::optional<Area> Display::inputOf(xcb_window_t window) const {
    const auto shapeCookie = xcb_shape_get_rectangles(m_connection.get(), window, XCB_SHAPE_SK_INPUT);
    const auto placeCookie = xcb_translate_coordinates(m_connection.get(), window, m_screen->root, 0, 0);
    const X11Reply<xcb_shape_get_rectangles_reply_t> shape(
        xcb_shape_get_rectangles_reply(m_connection.get(), shapeCookie, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_connection.get(), placeCookie, nullptr));
    if (!shape || !place) {
        throw std::runtime_error("the panel has gone");
    }
    const auto rectangles =
        std::span(xcb_shape_get_rectangles_rectangles(shape.get()),
                  static_cast<std::size_t>(xcb_shape_get_rectangles_rectangles_length(shape.get())));
    if (rectangles.empty()) {
        return std::nullopt;
    }
    int left = rectangles[0].x, top = rectangles[0].y, right = left, bottom = top;
    for (const xcb_rectangle_t& rectangle : rectangles) {
        left = std::min<int>(left, rectangle.x);
        top = std::min<int>(top, rectangle.y);
        right = std::max(right, rectangle.x + rectangle.width);
        bottom = std::max(bottom, rectangle.y + rectangle.height);
    }
    return Area{left + place->dst_x, top + place->dst_y, right - left, bottom - top};
}

Area Display::areaOf(xcb_window_t window) const {
    const auto sizeCookie = xcb_get_geometry(m_connection.get(), window);
    const auto placeCookie = xcb_translate_coordinates(m_connection.get(), window, m_screen->root, 0, 0);
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(m_connection.get(), sizeCookie, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(m_connection.get(), placeCookie, nullptr));
    if (!size || !place) {
        throw std::runtime_error("the panel has gone");
    }
    return {place->dst_x, place->dst_y, size->width, size->height};
}

} // namespace veslora::bench
