// SPDX-License-Identifier: MIT
#include "bench/ServerClock.h"

#include "VesloraLinux/X11/X11Reply.h"
#include "bench/Clock.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <stdexcept>

namespace veslora::bench {

namespace {

constexpr double millisecond = 0.001;

struct Close {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A window that is never shown: its changes are told, with the server's time.
class Stamper {
  public:
    Stamper() : m_connection(xcb_connect(nullptr, nullptr)), m_window(xcb_generate_id(m_connection.get())) {
        const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get())).data;
        const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_create_window(m_connection.get(), XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    }

    /// The server's time now, in seconds.
    [[nodiscard]] double stamp() const {
        xcb_change_property(m_connection.get(), XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME,
                            XCB_ATOM_STRING, 8, 0, nullptr);
        xcb_flush(m_connection.get());
        while (const X11Reply<xcb_generic_event_t> event{xcb_wait_for_event(m_connection.get())}) {
            if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY) {
                return reinterpret_cast<const xcb_property_notify_event_t&>(*event).time * millisecond;
            }
        }
        throw std::runtime_error("the display does not tell its time");
    }

  private:
    std::unique_ptr<xcb_connection_t, Close> m_connection;
    xcb_window_t m_window;
};

} // namespace

ServerClock::ServerClock() {
    constexpr int requests = 100;
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    const Stamper stamper;
    for (int count = 0; count < requests; ++count) {
        const double before = monotonicNow();
        const double stamped = stamper.stamp();
        const double after = monotonicNow();
        lowest = std::max(lowest, before - (stamped + millisecond));
        highest = std::min(highest, after - stamped);
        // No whole number of milliseconds.
        sleepFor(0.00137);
    }
    if (lowest > highest + millisecond) {
        throw std::runtime_error("the display's clock does not go as the machine's does");
    }
    m_offset = (lowest + highest) / 2 + millisecond / 2;
}

} // namespace veslora::bench
