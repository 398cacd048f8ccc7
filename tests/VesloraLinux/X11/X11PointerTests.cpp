// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Pointer.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QScreen>

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Desktop;
using testing::handleEventsFor;
using testing::waitUntil;

TEST(X11PointerTests, TellsWhereThePointerIs) {
    Desktop desktop;
    const X11Screens screens(desktop.connection());
    X11Pointer pointer(desktop.connection(), screens, [] { return 0; });
    const ScreenInfo screen = screens.list().front();
    desktop.movePointerTo(100, 0);
    EXPECT_TRUE(waitUntil([&] { return pointer.positionOn(screen) == Point{100, 900}; }));
    desktop.movePointerTo(7, 899);
    EXPECT_TRUE(waitUntil([&] { return pointer.positionOn(screen) == Point{7, 1}; }));
}

} // namespace
} // namespace veslora
