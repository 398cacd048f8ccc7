// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/FullscreenMonitor.h"

#include "VesloraUI/Platform/Logs.h"

#include <algorithm>

namespace veslora {

namespace {

/// Desktops slide when they change: the first look may see the windows of the one that is being left.
constexpr double settling = 0.4;

/// A fullscreen window hides the bar, and is measured against the notch's own strip then.
double stripHeight(const ScreenMetrics& metrics) {
    return std::max({metrics.menuBarHeight, metrics.safeAreaTop, NotchGeometry::fakeNotchMinHeight});
}

/// The platform tells a large window from one that fills the screen by itself, whatever the bar does.
constexpr bool menuBarAutoHides = false;

} // namespace

void FullscreenMonitor::start(TargetScreen screen) {
    m_screen = std::move(screen);
    QObject::disconnect(m_observer);
    m_observer = QObject::connect(&m_windows, &ScreenWindows::changed, &m_windows, [this] { recheck(); });
    m_windows.setWatching(true);
    recheck();
}

void FullscreenMonitor::stop() {
    if (isRunning()) {
        QObject::disconnect(m_observer);
        m_windows.setWatching(false);
        m_settleTask.cancel();
        m_screen = nullptr;
    }
}

void FullscreenMonitor::recheck() {
    if (isRunning()) {
        update();
        m_settleTask = m_scheduler.after(settling, [this] { update(); });
    }
}

void FullscreenMonitor::update() {
    const auto screen = m_screen();
    if (!screen) {
        return;
    }
    const bool isFullscreen = FullscreenDetector::isFullscreen(
        m_windows.windowsOn(*screen), screen->metrics.frame, stripHeight(screen->metrics), menuBarAutoHides);
    if (isFullscreen == m_isFullscreen) {
        return;
    }
    m_isFullscreen = isFullscreen;
    qCInfo(Logs::island, isFullscreen ? "an application fills %s" : "no application fills %s",
           screen->name.c_str());
    if (onChange) {
        onChange(isFullscreen);
    }
}

} // namespace veslora
