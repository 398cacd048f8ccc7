// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/PanelPlacement.h"
#include "VesloraLinux/X11/X11Pointer.h"
#include "tests/VesloraLinux/Support/Bystander.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace veslora {
namespace {

using testing::Bystander;
using testing::Desktop;
using testing::DesktopOptions;
using testing::handleEventsFor;
using testing::waitUntil;

/// A desktop with a pointer that belongs to a panel of window id `panel`.
struct PointerDesktop {
    explicit PointerDesktop(const DesktopOptions& options = {}) : desktop(options) {}

    /// `pixel` counts from the screen's top left corner.
    [[nodiscard]] bool isAt(std::size_t screen, QPoint pixel) {
        const ScreenInfo info = screens.list()[screen];
        return waitUntil(
            [&] { return pointer.positionOn(info) == PanelPlacement::placeOfPixel(info, pixel); });
    }
    [[nodiscard]] bool isElsewhere(std::size_t screen) {
        return waitUntil([&] { return !pointer.positionOn(screens.list()[screen]); });
    }

    Desktop desktop;
    X11Screens screens{desktop.connection()};
    xcb_window_t panel = XCB_WINDOW_NONE;
    X11Pointer pointer{desktop.connection(), screens, [this] { return panel; }};
};

TEST(X11PointerTests, TellsWhereThePointerIsFromTheBottomLeft) {
    PointerDesktop x;
    x.desktop.movePointerTo(100, 0);
    EXPECT_TRUE(x.isAt(0, QPoint(100, 0)));
    x.desktop.movePointerTo(7, 899);
    EXPECT_TRUE(x.isAt(0, QPoint(7, 899)));
}

TEST(X11PointerTests, TellsAScreensOwnPlaceAndNothingOfOtherScreens) {
    PointerDesktop x({.scale = "1",
                      .hasWindowManager = false,
                      .hasCompositor = false,
                      .monitors = {"eDP-1 800/200x900/225+0+0", "HDMI-1 800/200x900/225+800+0"}});
    ASSERT_EQ(x.screens.list().size(), 2U);
    x.desktop.movePointerTo(810, 5);
    EXPECT_TRUE(x.isAt(1, QPoint(10, 5)));
    EXPECT_TRUE(x.isElsewhere(0));
    x.desktop.movePointerTo(799, 5);
    EXPECT_TRUE(x.isAt(0, QPoint(799, 5)));
    EXPECT_TRUE(x.isElsewhere(1));
    ScreenInfo gone = x.screens.list().front();
    gone.name = "none";
    EXPECT_EQ(x.pointer.positionOn(gone), std::nullopt);
}

TEST(X11PointerTests, CountsInPointsWhereAPointIsSeveralPixels) {
    for (const auto& [scale, ratio] : {std::pair("1.5", 1.5), std::pair("2", 2.0)}) {
        PointerDesktop x({.scale = scale, .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
        x.desktop.movePointerTo(300, 0);
        EXPECT_TRUE(x.isAt(0, QPoint(300, 0))) << scale;
        const auto place = x.pointer.positionOn(x.screens.list().front());
        ASSERT_TRUE(place);
        EXPECT_NEAR(place->x, 300 / ratio, 1);
        EXPECT_NEAR(place->y, 900 / ratio, 1);
        x.desktop.movePointerTo(3, 600);
        EXPECT_TRUE(x.isAt(0, QPoint(3, 600))) << scale;
    }
}

TEST(X11PointerTests, TellsOfMovementOverOtherProgramsWindowsToo) {
    PointerDesktop x;
    const Bystander window({.frame = {0, 0, 1600, 900}});
    QSignalSpy moved(&x.pointer, &Pointer::moved);
    x.pointer.setTracking(true);
    x.desktop.movePointerBy(20, 20);
    EXPECT_TRUE(waitUntil([&] { return moved.count() == 1; }));
    handleEventsFor(50);
    x.desktop.press();
    x.desktop.movePointerBy(20, 20);
    EXPECT_TRUE(waitUntil([&] { return moved.count() >= 2; }));
    EXPECT_TRUE(waitUntil([&] { return x.pointer.isButtonDown(); }));
    x.desktop.release();
    EXPECT_TRUE(waitUntil([&] { return !x.pointer.isButtonDown(); }));
}

TEST(X11PointerTests, TellsNothingUnlessItIsAskedTo) {
    PointerDesktop x({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    QSignalSpy moved(&x.pointer, &Pointer::moved);
    QSignalSpy pressed(&x.pointer, &Pointer::pressedOutside);
    x.pointer.setTracking(true);
    x.pointer.setWatchingPresses(true);
    x.pointer.setTracking(false);
    x.pointer.setWatchingPresses(false);
    x.desktop.movePointerBy(20, 20);
    x.desktop.click();
    handleEventsFor(100);
    EXPECT_EQ(moved.count() + pressed.count(), 0);
}

TEST(X11PointerTests, TellsOfPressesOutsideThePanelButNotOfTheWheel) {
    PointerDesktop x({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    const Bystander panel({.frame = {0, 0, 200, 200}, .isOverrideRedirect = true});
    const Bystander other({.frame = {200, 0, 200, 200}, .isOverrideRedirect = true});
    x.panel = panel.window();
    QSignalSpy pressed(&x.pointer, &Pointer::pressedOutside);
    EXPECT_TRUE(x.pointer.hearsPressesOutside());
    x.pointer.setWatchingPresses(true);
    x.desktop.movePointerTo(300, 100);
    x.desktop.click(1);
    EXPECT_TRUE(waitUntil([&] { return pressed.count() == 1; }));
    handleEventsFor(50);
    x.desktop.click(3);
    EXPECT_TRUE(waitUntil([&] { return pressed.count() == 2; }));
    x.desktop.click(4);
    x.desktop.click(5);
    x.desktop.movePointerTo(100, 100);
    x.desktop.click(1);
    handleEventsFor(100);
    EXPECT_EQ(pressed.count(), 2);
}

TEST(X11PointerTests, TellsAtMostOnceAFrameAndCostsNextToNothing) {
    PointerDesktop x({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    const ScreenInfo screen = x.screens.list().front();
    int moved = 0;
    QObject::connect(&x.pointer, &Pointer::moved, [&] {
        ++moved;
        // What a listener asks for each time.
        static_cast<void>(x.pointer.positionOn(screen));
        static_cast<void>(x.pointer.isButtonDown());
    });
    x.pointer.setTracking(true);
    handleEventsFor(100);
    const double before = testing::processorSeconds(RUSAGE_SELF);
    QElapsedTimer watch;
    watch.start();
    testing::RestlessMouse mouse(1000);
    QEventLoop loop;
    QTimer::singleShot(2000, &loop, &QEventLoop::quit);
    loop.exec();
    mouse.stop();
    const double passed = static_cast<double>(watch.elapsed()) / 1000;
    const double used = testing::processorSeconds(RUSAGE_SELF) - before - mouse.processorSeconds();
    RecordProperty("events", mouse.events());
    RecordProperty("calls", moved);
    RecordProperty("percent", std::to_string(100 * used / passed));
    EXPECT_GE(mouse.events(), 500);
    EXPECT_LE(moved, passed * 60 + 1);
    EXPECT_GE(moved, 20);
    // A hundredth of a core is the aim; sanitizers and a loaded machine take several times as much.
    EXPECT_LT(used / passed, 0.05);
}

} // namespace
} // namespace veslora
