// SPDX-License-Identifier: MIT
// Tells when a frame of the panel is on an X server's screen, on the server's own clock, by which it also
// stamps the pointer's events. Behind the frame's pixels, on the same connection, a property of the window is
// changed by nothing at all: the server does both in order and tells the time of the change.
//
// It also keeps pointer events from the panel that other programs made up (`XSendEvent`): those carry
// whatever time their sender wrote. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Panel.h"
#include "VesloraUI/Platform/FrameClock.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace veslora {

class X11FrameClock final : public QObject, public FrameClock, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    /// Both must outlive it.
    X11FrameClock(X11Connection& connection, X11Panel& panel);
    ~X11FrameClock() override;
    X11FrameClock(const X11FrameClock&) = delete;
    X11FrameClock& operator=(const X11FrameClock&) = delete;

    [[nodiscard]] Task afterFrame(std::function<void(std::uint32_t eventTime)> shown) override;

    /// Reads the root window's pixels. That fails, or finds nothing of ours, below Wayland and where a
    /// compositor keeps its picture to itself or changes colours; so the screen counts as readable only once
    /// it was seen to show what was drawn, and until the compositor changes.
    [[nodiscard]] ScreenLook look(const QRectF& area) override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    struct Mark {
        std::uint32_t sequence = 0; ///< of the request that changes the property
        std::shared_ptr<TaskState> state;
        std::shared_ptr<std::uint32_t> eventTime;
    };
    void takeMark(std::uint32_t sequence, std::uint32_t eventTime);
    [[nodiscard]] bool isOfPanel(std::uint32_t window) const { return window == m_panel.nativeWindow(); }
    /// Whether the screen shows the panel's pixels in that part of it; absent when either can't be read.
    struct Comparison;
    [[nodiscard]] std::optional<Comparison> compare(const QRect& nativeArea) const;

    X11Connection& m_connection;
    X11Panel& m_panel;
    xcb_atom_t m_property;
    std::vector<Mark> m_marks;
    bool m_isReadable = false;
};

} // namespace veslora
