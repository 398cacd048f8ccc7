// SPDX-License-Identifier: MIT
// The pointer anywhere on an X desktop, by XInput's raw events, which arrive whatever window it is over and
// whichever client has grabbed it. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"
#include "VesloraLinux/X11/X11Screens.h"
#include "VesloraUI/Platform/Pointer.h"

#include <functional>

namespace veslora {

class X11Pointer final : public Pointer {
    Q_OBJECT

  public:
    /// `panel` tells the window whose presses are not outside. Its maker has it filter the events of
    /// the toolkit's window there, from which it hears of releases.
    X11Pointer(X11Connection& connection, const X11Screens& screens, std::function<xcb_window_t()> panel);

    [[nodiscard]] std::optional<Point> positionOn(const ScreenInfo& screen) const override;
    [[nodiscard]] bool isButtonDown() const override;
    void setTracking(bool isTracking) override;
    [[nodiscard]] bool hearsPressesOutside() const override { return m_inputOpcode != 0; }
    void setWatchingPresses(bool isWatching) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct State {
        QPoint place;                          ///< in native pixels, on the whole desktop
        xcb_window_t window = XCB_WINDOW_NONE; ///< the top-level window that would take a press there
        bool isButtonDown = false;
    };

    void selectEvents();
    void eventArrived(const xcb_generic_event_t& event);
    void batchEnded();
    /// Absent when the pointer is on another X screen or the server is gone.
    [[nodiscard]] std::optional<State> state() const;
    [[nodiscard]] std::optional<State> ask() const;

    X11Connection& m_connection;
    const X11Screens& m_screens;
    std::function<xcb_window_t()> m_panel;
    std::uint8_t m_inputOpcode = 0; ///< 0 without the extension: then nothing is ever told
    bool m_isTracking = false;
    bool m_isWatchingPresses = false;
    bool m_hasMoved = false;
    bool m_wasPressed = false;
    bool m_isTelling = false;
    std::optional<State> m_told; ///< valid while the signals of one batch are given
};

} // namespace veslora
