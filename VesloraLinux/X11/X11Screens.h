// SPDX-License-Identifier: MIT
// The monitors of an X desktop: place and scale from Qt, exact sizes from RandR, the desktop's bar from the
// window manager's hints. Main thread only.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"
#include "VesloraUI/Platform/Screens.h"
#include "VesloraUI/Platform/Trouble.h"

#include <QRect>

#include <map>
#include <optional>
#include <set>

class QScreen;

namespace veslora {

class X11Screens final : public Screens {
    Q_OBJECT

  public:
    explicit X11Screens(X11Connection& connection);

    [[nodiscard]] std::vector<ScreenInfo> list() const override;

    /// The screen's place on the whole desktop, in native pixels from the desktop's top left corner.
    [[nodiscard]] std::optional<QRect> nativeFrame(const std::string& name) const;
    [[nodiscard]] std::vector<QRect> nativeFrames() const;

  private:
    struct Entry {
        ScreenInfo info;
        QRect nativeFrame;
        bool operator==(const Entry&) const = default;
    };

    void watch(QScreen* screen) const;
    void eventArrived(const xcb_generic_event_t& event);
    void lookAgain();
    void update();
    void tell() const;
    [[nodiscard]] std::vector<Entry> read();
    [[nodiscard]] std::map<std::pair<int, int>, QSize> monitorSizes();
    void hearChangesOf(const std::vector<xcb_window_t>& windows);

    X11Connection& m_connection;
    std::vector<Entry> m_entries;
    std::set<xcb_window_t> m_heardWindows;
    Task m_lookingAgain;
    Trouble m_trouble;
};

} // namespace veslora
