// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Connection.h"

#include "VesloraUI/Platform/Logs.h"

namespace veslora {
namespace {

constexpr double frame = 1.0 / 60;

/// Another program's window may go at any moment, between the look at it and the use of it.
void tellOfError(const xcb_generic_error_t& error) {
    constexpr std::uint8_t badWindow = 3;
    if (error.error_code == badWindow) {
        qCInfo(Logs::x11, "window 0x%x was gone at request %d", error.resource_id, error.major_code);
    } else {
        qCWarning(Logs::x11, "X error %d at request %d.%d, of 0x%x", error.error_code, error.major_code,
                  error.minor_code, error.resource_id);
    }
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open(Scheduler& scheduler) {
    int screenNumber = 0;
    xcb_connection_t* const connection = xcb_connect(nullptr, &screenNumber);
    if (const int error = xcb_connection_has_error(connection); error != 0) {
        qCWarning(Logs::x11, "no connection to the X server at %s: error %d of xcb",
                  qUtf8Printable(qEnvironmentVariable("DISPLAY")), error);
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(scheduler, connection, screenNumber));
}

X11Connection::X11Connection(Scheduler& scheduler, xcb_connection_t* connection, int screenNumber)
    : m_scheduler(scheduler), m_connection(connection), m_screenNumber(screenNumber),
      m_notifier(xcb_get_file_descriptor(connection), QSocketNotifier::Read) {
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int index = 0; index < screenNumber && screen.rem > 1; ++index) {
        xcb_screen_next(&screen);
    }
    m_root = screen.data->root;
    connect(&m_notifier, &QSocketNotifier::activated, this, &X11Connection::handleEvents);
}

X11Connection::~X11Connection() {
    m_notifier.setEnabled(false);
    xcb_disconnect(m_connection);
}

xcb_atom_t X11Connection::atom(const std::string& name) {
    const auto [entry, isNew] = m_atoms.try_emplace(name, XCB_ATOM_NONE);
    if (isNew) {
        const auto cookie =
            xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
        const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        entry->second = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
        if (!reply && xcb_connection_has_error(m_connection) == 0) {
            qCWarning(Logs::x11, "the X server gives no number for %s", name.c_str());
        }
        takeQueuedEvents();
    }
    return entry->second;
}

void X11Connection::selectRootEvents(std::uint32_t mask) {
    m_rootEvents |= mask;
    xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &m_rootEvents);
    flush();
}

std::vector<std::uint32_t> X11Connection::values(xcb_window_t window, const std::string& property) {
    return values(std::vector{window}, property).front();
}

std::vector<std::vector<std::uint32_t>> X11Connection::values(const std::vector<xcb_window_t>& windows,
                                                              const std::string& property) {
    std::vector<std::vector<std::uint32_t>> result;
    for (const auto& reply : properties(windows, property)) {
        auto& values = result.emplace_back();
        if (reply && reply->format == 32) {
            const auto* const first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
            values.assign(first, first + reply->value_len);
        }
    }
    return result;
}

std::vector<std::string> X11Connection::texts(const std::vector<xcb_window_t>& windows,
                                              const std::string& property) {
    std::vector<std::string> result;
    for (const auto& reply : properties(windows, property)) {
        auto& text = result.emplace_back();
        if (reply && reply->format == 8) {
            text.assign(static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len);
        }
    }
    return result;
}

std::vector<X11Reply<xcb_get_property_reply_t>>
X11Connection::properties(const std::vector<xcb_window_t>& windows, const std::string& property) {
    // In units of four bytes; far more windows than a desktop has.
    constexpr std::uint32_t mostUnits = 16384;
    const xcb_atom_t name = atom(property);
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        cookies.push_back(
            xcb_get_property(m_connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, mostUnits));
    }
    std::vector<X11Reply<xcb_get_property_reply_t>> replies;
    replies.reserve(windows.size());
    for (const xcb_get_property_cookie_t cookie : cookies) {
        replies.emplace_back(xcb_get_property_reply(m_connection, cookie, nullptr));
    }
    takeQueuedEvents();
    return replies;
}

void X11Connection::takeQueuedEvents() {
    const bool isScheduled = !m_queued.empty();
    while (auto* const event = xcb_poll_for_queued_event(m_connection)) {
        m_queued.emplace_back(event);
    }
    if (!isScheduled && !m_queued.empty() && !m_pause.isActive()) {
        m_pause = m_scheduler.after(0, [this] { handleEvents(); });
    }
}

/// Takes everything that has arrived and then looks away for a frame. A pointer that reports a thousand times
/// a second costs sixty turns this way, and a program at rest is not woken at all.
void X11Connection::handleEvents() {
    m_notifier.setEnabled(false);
    auto events = std::exchange(m_queued, {});
    while (auto* const event = xcb_poll_for_event(m_connection)) {
        events.emplace_back(event);
    }
    if (const int error = xcb_connection_has_error(m_connection); error != 0) {
        qCWarning(Logs::x11, "the X server is lost: error %d of xcb", error);
        return;
    }
    if (events.empty()) {
        m_notifier.setEnabled(true);
        return;
    }
    m_pause = m_scheduler.after(frame, [this] { handleEvents(); });
    for (const auto& event : events) {
        if (event->response_type == 0) {
            tellOfError(reinterpret_cast<const xcb_generic_error_t&>(*event));
        }
        emit eventArrived(event.get());
    }
    emit batchEnded();
}

} // namespace veslora
