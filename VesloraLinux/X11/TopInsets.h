// SPDX-License-Identifier: MIT
// How much of each screen's top the desktop keeps for its bar, in native pixels. X has no single word for it,
// so three are asked and the largest answer counts.
#pragma once

#include "VesloraLinux/X11/X11Connection.h"

#include <QRect>

#include <cstdint>
#include <vector>

namespace veslora {

/// What is reserved of `screen`'s top by a window's `strut`: the values of _NET_WM_STRUT_PARTIAL or
/// _NET_WM_STRUT, which count from the edge of the whole desktop. 0 for any other form and for a strut of
/// another screen.
[[nodiscard]] int topInsetOfStrut(const std::vector<std::uint32_t>& strut, const QRect& screen);

/// What the first of `areas`, each given by x, y, width and height, that lies on `screen` leaves free at its
/// top.
[[nodiscard]] int topInsetOfAreas(const std::vector<std::uint32_t>& areas, const QRect& screen);

/// The state of the desktop at the time of construction.
class TopInsets {
  public:
    explicit TopInsets(X11Connection& connection);

    /// `isFirst` tells the screen on which a desktop that gives one area for all of its screens is taken to
    /// have its bar, unless windows tell where it is.
    [[nodiscard]] int of(const QRect& screen, bool isFirst) const;

    /// The windows that reserve something, so that their changes can be heard.
    [[nodiscard]] const std::vector<xcb_window_t>& reservingWindows() const { return m_reservingWindows; }

  private:
    void readStruts(X11Connection& connection);

    std::vector<std::vector<std::uint32_t>> m_struts;
    std::vector<xcb_window_t> m_reservingWindows;
    std::vector<std::uint32_t> m_screenAreas;
    std::vector<std::uint32_t> m_desktopArea;
};

} // namespace veslora
