// SPDX-License-Identifier: MIT
// Keeps an override-redirect window above all others. No window manager does that for it, so it goes up again
// by itself whenever another one was put over it. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Screens.h"
#include "VesloraLinux/X11/X11Windows.h"

#include <deque>
#include <optional>

namespace veslora {

class X11Stacking final : public QObject {
    Q_OBJECT

  public:
    X11Stacking(X11Connection& connection, const X11Screens& screens, xcb_window_t window);

    /// Raises the window, if it is shown, and watches over it from then on.
    void setShown(bool isShown);

    /// How often it went up again because of another window.
    [[nodiscard]] int raises() const { return m_raises; }

  private:
    void eventArrived(const xcb_generic_event_t& event);
    void raise();
    void check();
    [[nodiscard]] std::optional<xcb_window_t> highestToPass(const std::vector<X11Window>& above,
                                                            const QRect& frame);
    [[nodiscard]] bool hidesWholeScreen(const X11Window& window);
    [[nodiscard]] bool isManaged(xcb_window_t window);
    [[nodiscard]] bool mayRaise();
    void putBeside(xcb_window_t sibling, std::uint32_t mode);

    X11Connection& m_connection;
    const X11Screens& m_screens;
    xcb_window_t m_window;
    bool m_isShown = false;
    bool m_isDirty = false;
    int m_raises = 0;
    std::deque<Timestamp> m_recentRaises;
    double m_pause;
    Task m_retry;
};

} // namespace veslora
