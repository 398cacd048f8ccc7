// SPDX-License-Identifier: MIT
#include "tests/VesloraUI/FakePlatform.h"

#include <algorithm>

namespace veslora {

ScreenInfo FakeScreens::make(const std::string& name, double width, double height, bool isBuiltIn) {
    ScreenInfo screen;
    screen.name = name;
    screen.metrics.frame = {0, 0, width, height};
    screen.metrics.menuBarHeight = 28;
    screen.isBuiltIn = isBuiltIn;
    return screen;
}

void FakePointer::moveTo(std::optional<Point> point) {
    position = point;
    emit moved();
}

void FakePanel::place(const ScreenInfo& screen, const Rect& newFrame) {
    screenName = screen.name;
    frame = newFrame;
    ++placements;
}

bool FakePanel::takesClicksAt(Point point) const {
    return std::ranges::any_of(zones.clicks, [point](const Rect& zone) { return zone.contains(point); });
}

FakePlatform::FakePlatform() {
    paths = {.home = "/home/me",
             .support = "/home/me/.local/share/Veslora",
             .runtime = "/run/user/1000/veslora",
             .configuration = "/home/me/.config/Veslora",
             .claude = "/home/me/.claude",
             .codex = "/home/me/.codex",
             .executables = "/opt/veslora"};
    displays.screens = {FakeScreens::make("eDP-1", 1440, 900, true)};
    disk.clock = time.now();
}

void FakePlatform::advance(double seconds) {
    // Files that a callback writes on the way carry the clock at the end; no test asks for more.
    disk.clock = time.now() + seconds;
    time.advance(seconds);
}

} // namespace veslora
