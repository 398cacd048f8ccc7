// SPDX-License-Identifier: MIT
#include "bench/FrameWatch.h"

#include "VesloraLinux/X11/X11Reply.h"
#include "bench/Clock.h"

#include <stdexcept>

namespace veslora::bench {

namespace {
/// Damage of one frame comes rectangle by rectangle; half a frame at 60 a second tells two frames apart.
constexpr std::uint32_t gapMilliseconds = 8;
} // namespace

double Frame::area() const {
    double total = 0;
    for (const Area& each : damaged) {
        total += each.width * each.height;
    }
    return total;
}

FrameWatch::FrameWatch(xcb_window_t window) : m_connection(xcb_connect(nullptr, nullptr)) {
    xcb_connection_t* const connection = m_connection.get();
    const auto* const extension = xcb_get_extension_data(connection, &xcb_damage_id);
    if (extension == nullptr || extension->present == 0) {
        throw std::runtime_error("the display tells of no damage");
    }
    m_event = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    const X11Reply<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr));
    const xcb_void_cookie_t created = xcb_damage_create_checked(
        connection, xcb_generate_id(connection), window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(connection, created));
    if (error) {
        throw std::runtime_error("the panel's frames can't be watched");
    }
}

const std::vector<Frame>& FrameWatch::frames() {
    // What fills the socket waits in the server until it is read; only a reply proves that nothing is left
    // there.
    const X11Reply<xcb_get_input_focus_reply_t> last(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        if ((event->response_type & 0x7f) == m_event) {
            take(reinterpret_cast<const xcb_damage_notify_event_t&>(*event));
        }
    }
    return m_frames;
}

std::vector<Frame> FrameWatch::framesSince(std::size_t index) {
    const auto& all = frames();
    return {all.begin() + static_cast<std::ptrdiff_t>(index), all.end()};
}

void FrameWatch::take(const xcb_damage_notify_event_t& damage) {
    const std::uint32_t milliseconds = damage.timestamp;
    if (m_frames.empty() || milliseconds - m_last >= gapMilliseconds) {
        m_frames.push_back({milliseconds / 1000.0, {}});
    }
    m_frames.back().damaged.push_back({damage.area.x, damage.area.y, damage.area.width, damage.area.height});
    m_last = milliseconds;
}

void FrameWatch::waitForRest(double seconds) {
    std::size_t before = count();
    double since = monotonicNow();
    waitUntil("the island to come to rest", [&] {
        if (count() != before) {
            before = m_frames.size();
            since = monotonicNow();
        }
        return monotonicNow() - since >= seconds;
    });
}

} // namespace veslora::bench
