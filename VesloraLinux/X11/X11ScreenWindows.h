// SPDX-License-Identifier: MIT
// The windows that may fill a screen, as the window manager tells of them. Main thread only.
#pragma once

#include "VesloraLinux/X11/FilledScreen.h"
#include "VesloraLinux/X11/X11Screens.h"
#include "VesloraLinux/X11/X11Windows.h"

#include <set>

namespace veslora {

class X11ScreenWindows final : public ScreenWindows {
    Q_OBJECT

  public:
    X11ScreenWindows(X11Connection& connection, const X11Screens& screens);

    [[nodiscard]] std::vector<WindowFrame> windowsOn(const ScreenInfo& screen) override;
    void setWatching(bool isWatching) override;

  private:
    [[nodiscard]] std::vector<X11Window> viewable();
    [[nodiscard]] std::vector<DesktopWindow> look(const QRect& nativeFrame);
    [[nodiscard]] std::vector<DesktopWindow> describe(std::vector<X11Window> windows,
                                                      const std::vector<DesktopWindow::Role>& roles);
    [[nodiscard]] bool has(const std::vector<std::uint32_t>& states, const char* state);
    void hear(std::set<xcb_window_t> windows);
    void eventArrived(const xcb_generic_event_t& event);
    [[nodiscard]] bool matters(const xcb_property_notify_event_t& event);
    [[nodiscard]] bool matters(const xcb_configure_notify_event_t& event) const;

    X11Connection& m_connection;
    const X11Screens& m_screens;
    bool m_isWatching = false;
    bool m_isDirty = false;
    bool m_isFilled = false;        ///< the last look found a window that fills the screen
    std::set<xcb_window_t> m_heard; ///< whose properties are listened to
};

} // namespace veslora
