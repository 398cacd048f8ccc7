// SPDX-License-Identifier: MIT
// Struts and work areas as in the Extended Window Manager Hints, 1.5; areas for each screen as GTK's own hint
// has them.
#include "VesloraLinux/X11/TopInsets.h"

#include <algorithm>

namespace veslora {
namespace {

constexpr std::size_t valuesOfArea = 4;
constexpr std::size_t top = 2; // of a strut, after left and right

/// A bar takes a small part of its screen; anything else is a layout that this reading does not understand.
int plausible(std::int64_t inset, const QRect& screen) {
    return inset > 0 && inset <= screen.height() / 2 ? static_cast<int>(inset) : 0;
}

} // namespace

int topInsetOfStrut(const std::vector<std::uint32_t>& strut, const QRect& screen) {
    constexpr std::size_t topStart = 8;
    constexpr std::size_t topEnd = 9;
    constexpr std::size_t valuesOfPartial = 12;
    if (strut.size() < valuesOfArea) {
        return 0;
    }
    if (strut.size() >= valuesOfPartial &&
        (std::int64_t{strut[topStart]} > screen.right() || std::int64_t{strut[topEnd]} < screen.left())) {
        return 0;
    }
    return plausible(std::int64_t{strut[top]} - screen.top(), screen);
}

int topInsetOfAreas(const std::vector<std::uint32_t>& areas, const QRect& screen) {
    for (std::size_t at = 0; at + valuesOfArea <= areas.size(); at += valuesOfArea) {
        const std::int64_t x = static_cast<std::int32_t>(areas[at]);
        const std::int64_t y = static_cast<std::int32_t>(areas[at + 1]);
        const bool isOnScreen = x <= screen.right() && x + areas[at + 2] > screen.left() &&
                                y <= screen.bottom() && y + areas[at + 3] > screen.top();
        if (isOnScreen) {
            return plausible(y - screen.top(), screen);
        }
    }
    return 0;
}

TopInsets::TopInsets(X11Connection& connection) {
    readStruts(connection);
    const auto desktops = connection.values(connection.root(), "_NET_CURRENT_DESKTOP");
    const std::size_t desktop = desktops.empty() ? 0 : desktops.front();
    m_screenAreas = connection.values(connection.root(), "_GTK_WORKAREAS_D" + std::to_string(desktop));
    const auto areas = connection.values(connection.root(), "_NET_WORKAREA");
    // Some window managers give one area for all desktops.
    const std::size_t first = areas.size() >= (desktop + 1) * valuesOfArea ? desktop * valuesOfArea : 0;
    if (areas.size() >= first + valuesOfArea) {
        m_desktopArea.assign(areas.begin() + static_cast<std::ptrdiff_t>(first),
                             areas.begin() + static_cast<std::ptrdiff_t>(first + valuesOfArea));
    }
}

void TopInsets::readStruts(X11Connection& connection) {
    const auto windows = connection.values(connection.root(), "_NET_CLIENT_LIST");
    const auto partial = connection.values(windows, "_NET_WM_STRUT_PARTIAL");
    const auto plain = connection.values(windows, "_NET_WM_STRUT");
    for (std::size_t index = 0; index < windows.size(); ++index) {
        const auto& strut = partial[index].empty() ? plain[index] : partial[index];
        if (!strut.empty()) {
            m_struts.push_back(strut);
            m_reservingWindows.push_back(windows[index]);
        }
    }
}

int TopInsets::of(const QRect& screen, bool isFirst) const {
    int inset = topInsetOfAreas(m_screenAreas, screen);
    bool isTold = !m_screenAreas.empty();
    for (const auto& strut : m_struts) {
        inset = std::max(inset, topInsetOfStrut(strut, screen));
        isTold = isTold || (strut.size() >= valuesOfArea && strut[top] > 0);
    }
    return isFirst && !isTold ? topInsetOfAreas(m_desktopArea, screen) : inset;
}

} // namespace veslora
