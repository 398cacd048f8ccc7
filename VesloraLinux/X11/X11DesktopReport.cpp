// SPDX-License-Identifier: MIT
// The window manager's name is where the Extended Window Manager Hints put it.
#include "VesloraLinux/X11/X11DesktopReport.h"

#include "VesloraLinux/X11/CompositorWatch.h"
#include "VesloraLinux/X11/X11Screens.h"
#include "VesloraLinux/X11/X11WindowSystem.h"

#include <cmath>

namespace veslora::X11DesktopReport {

namespace {

std::string windowManagerOf(X11Connection& connection) {
    const auto windows = connection.values(connection.root(), "_NET_SUPPORTING_WM_CHECK");
    return windows.empty() ? std::string() : connection.texts({windows.front()}, "_NET_WM_NAME").front();
}

BugReport::Screen describe(const ScreenInfo& screen) {
    return {.name = screen.name,
            .width = static_cast<int>(std::lround(screen.metrics.frame.width)),
            .height = static_cast<int>(std::lround(screen.metrics.frame.height)),
            .scale = screen.scale,
            .isBuiltIn = screen.isBuiltIn,
            .hasNotch = screen.metrics.hasNotch()};
}

} // namespace

std::optional<BugReport::Display> gather(Scheduler& scheduler) {
    const auto connection = X11Connection::open(scheduler);
    if (!connection) {
        return std::nullopt;
    }
    BugReport::Display display{.windowManager = windowManagerOf(*connection),
                               .isComposited = CompositorWatch(*connection).isComposited(),
                               .isBelowWayland = X11WindowSystem::formOfSession() == PanelForm::shrinking};
    for (const ScreenInfo& screen : X11Screens(*connection).list()) {
        display.screens.push_back(describe(screen));
    }
    return display;
}

} // namespace veslora::X11DesktopReport
