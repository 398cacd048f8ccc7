// SPDX-License-Identifier: MIT
// A connection of our own to the X server, for watching: apart from Qt's, whose reader would wake the program
// for every single event. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Reply.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>
#include <QSocketNotifier>

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace veslora {

class X11Connection : public QObject {
    Q_OBJECT

  public:
    /// Null when no server answers at the address in DISPLAY.
    [[nodiscard]] static std::unique_ptr<X11Connection> open(Scheduler& scheduler);
    ~X11Connection() override;
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* xcb() const { return m_connection; }
    [[nodiscard]] xcb_window_t root() const { return m_root; }
    [[nodiscard]] int screenNumber() const { return m_screenNumber; }
    [[nodiscard]] Scheduler& scheduler() const { return m_scheduler; }

    /// The server's number for a name, asked for once.
    [[nodiscard]] xcb_atom_t atom(const std::string& name);

    /// Asks for events of the root window, beside those that others asked for.
    void selectRootEvents(std::uint32_t mask);

    /// The 32-bit values of a window's property; empty when window or property are missing.
    [[nodiscard]] std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property);
    /// The same of many windows in one round trip, in their order.
    [[nodiscard]] std::vector<std::vector<std::uint32_t>> values(const std::vector<xcb_window_t>& windows,
                                                                 const std::string& property);
    /// The bytes of each window's text property; empty where there are none.
    [[nodiscard]] std::vector<std::string> texts(const std::vector<xcb_window_t>& windows,
                                                 const std::string& property);

    /// Has to follow whatever waited for a reply by itself: events that came along would lie unseen.
    void takeQueuedEvents();
    void flush() { xcb_flush(m_connection); }

  signals:
    void eventArrived(const xcb_generic_event_t* event);

    /// Follows the last event of those that arrived together. Batches come at most once a frame.
    void batchEnded();

  private:
    X11Connection(Scheduler& scheduler, xcb_connection_t* connection, int screenNumber);

    [[nodiscard]] std::vector<X11Reply<xcb_get_property_reply_t>>
    properties(const std::vector<xcb_window_t>& windows, const std::string& property);
    void handleEvents();

    Scheduler& m_scheduler;
    xcb_connection_t* m_connection;
    int m_screenNumber;
    xcb_window_t m_root;
    std::uint32_t m_rootEvents = 0;
    std::map<std::string, xcb_atom_t> m_atoms;
    std::vector<X11Reply<xcb_generic_event_t>> m_queued;
    QSocketNotifier m_notifier;
    Task m_pause;
};

} // namespace veslora
