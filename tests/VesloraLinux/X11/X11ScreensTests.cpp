// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Screens.h"
#include "tests/VesloraLinux/Support/Bystander.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Bystander;
using testing::Desktop;
using testing::handleEventsFor;
using testing::waitUntil;

const std::vector<std::string> twoMonitors{"HDMI-1 800/200x900/225+0+0", "eDP-1 800/200x600/150+800+0"};

TEST(X11ScreensTests, DescribesTheOnlyScreen) {
    Desktop desktop({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    const X11Screens screens(desktop.connection());
    ASSERT_EQ(screens.list().size(), 1U);
    const ScreenInfo screen = screens.list().front();
    EXPECT_EQ(screen.metrics.frame, (Rect{0, 0, 1600, 900}));
    EXPECT_EQ(screen.metrics.menuBarHeight, 0);
    EXPECT_FALSE(screen.metrics.hasNotch());
    EXPECT_EQ(screen.scale, 1);
    EXPECT_FALSE(screen.isBuiltIn);
    EXPECT_EQ(screens.nativeFrame(screen.name), QRect(0, 0, 1600, 900));
    EXPECT_EQ(screens.nativeFrame("none"), std::nullopt);
}

TEST(X11ScreensTests, GivesEachScreenItsOwnSpaceAndKnowsTheLid) {
    Desktop desktop(
        {.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = twoMonitors});
    const X11Screens screens(desktop.connection());
    const auto list = screens.list();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].name, "HDMI-1");
    EXPECT_FALSE(list[0].isBuiltIn);
    EXPECT_EQ(list[1].name, "eDP-1");
    EXPECT_TRUE(list[1].isBuiltIn);
    EXPECT_EQ(list[1].metrics.frame, (Rect{0, 0, 800, 600}));
    EXPECT_EQ(screens.nativeFrame("eDP-1"), QRect(800, 0, 800, 600));
}

TEST(X11ScreensTests, CountsInPointsWithoutRoundingThem) {
    for (const auto& [scale, ratio] : {std::pair("1.5", 1.5), std::pair("1.75", 1.75), std::pair("2", 2.0)}) {
        Desktop desktop(
            {.scale = scale, .hasWindowManager = false, .hasCompositor = false, .monitors = twoMonitors});
        const X11Screens screens(desktop.connection());
        ASSERT_EQ(screens.list().size(), 2U);
        const ScreenInfo second = screens.list()[1];
        EXPECT_EQ(second.scale, ratio);
        EXPECT_EQ(second.metrics.frame, (Rect{0, 0, 800 / ratio, 600 / ratio}));
        EXPECT_EQ(screens.nativeFrame("eDP-1"), QRect(800, 0, 800, 600));
    }
}

TEST(X11ScreensTests, TakesTheScaleFromTheDesktopsDotsPerInch) {
    testing::DesktopOptions options;
    options.hasWindowManager = false;
    options.resources = "Xft.dpi: 144";
    Desktop desktop(options);
    const X11Screens screens(desktop.connection());
    EXPECT_EQ(screens.list().front().scale, 1.5);
    EXPECT_EQ(screens.list().front().metrics.frame, (Rect{0, 0, 1600 / 1.5, 600}));
}

TEST(X11ScreensTests, FindsTheBarOnTheScreenThatHasIt) {
    Desktop desktop(
        {.scale = "2", .hasWindowManager = true, .hasCompositor = false, .monitors = twoMonitors});
    X11Screens screens(desktop.connection());
    QSignalSpy changed(&screens, &Screens::changed);
    Bystander bar({.frame = {800, 0, 800, 40},
                   .type = "_NET_WM_WINDOW_TYPE_DOCK",
                   .strut = {0, 0, 40, 0, 0, 0, 0, 0, 800, 1599, 0, 0}});
    EXPECT_TRUE(waitUntil([&] { return screens.list()[1].metrics.menuBarHeight == 20; }));
    EXPECT_EQ(screens.list()[0].metrics.menuBarHeight, 0);
    EXPECT_EQ(changed.count(), 1);
    bar.setStrut({0, 0, 60, 0, 0, 0, 0, 0, 800, 1599, 0, 0});
    EXPECT_TRUE(waitUntil([&] { return screens.list()[1].metrics.menuBarHeight == 30; }));
    EXPECT_EQ(changed.count(), 2);
}

TEST(X11ScreensTests, ForgetsTheBarWhenItGoes) {
    Desktop desktop;
    X11Screens screens(desktop.connection());
    {
        const Bystander bar({.frame = {0, 0, 1600, 30},
                             .type = "_NET_WM_WINDOW_TYPE_DOCK",
                             .strut = {0, 0, 30, 0, 0, 0, 0, 0, 0, 1599, 0, 0}});
        EXPECT_TRUE(waitUntil([&] { return screens.list()[0].metrics.menuBarHeight == 30; }));
    }
    EXPECT_TRUE(waitUntil([&] { return screens.list()[0].metrics.menuBarHeight == 0; }));
}

TEST(X11ScreensTests, HearsOfScreensThatComeGoAndChange) {
    Desktop desktop({.scale = "1",
                     .hasWindowManager = false,
                     .hasCompositor = false,
                     .monitors = {"HDMI-1 800/200x900/225+0+0"}});
    X11Screens screens(desktop.connection());
    QSignalSpy changed(&screens, &Screens::changed);
    ASSERT_EQ(screens.list().size(), 1U);
    desktop.xrandr({"--setmonitor", "eDP-1", "800/200x600/150+800+0", "none"});
    EXPECT_TRUE(waitUntil([&] { return screens.list().size() == 2; }));
    EXPECT_EQ(screens.list()[1].name, "eDP-1");
    desktop.xrandr({"--delmonitor", "eDP-1"});
    EXPECT_TRUE(waitUntil([&] { return screens.list().size() == 1; }));
    EXPECT_GE(changed.count(), 2);
}

TEST(X11ScreensTests, HearsOfANewResolution) {
    Desktop desktop({.scale = "1", .hasWindowManager = false, .hasCompositor = false, .monitors = {}});
    X11Screens screens(desktop.connection());
    QSignalSpy changed(&screens, &Screens::changed);
    desktop.xrandr({"--newmode", "small", "0", "1200", "0", "0", "1200", "700", "0", "0", "700"});
    desktop.xrandr({"--addmode", "screen", "small"});
    desktop.xrandr({"--output", "screen", "--mode", "small"});
    EXPECT_TRUE(waitUntil([&] { return screens.list().front().metrics.frame == Rect{0, 0, 1200, 700}; }));
    EXPECT_GE(changed.count(), 1);
}

TEST(X11ScreensTests, StaysSilentWhenNothingOfItChanged) {
    Desktop desktop;
    X11Screens screens(desktop.connection());
    QSignalSpy changed(&screens, &Screens::changed);
    const Bystander window;
    handleEventsFor(100);
    EXPECT_EQ(changed.count(), 0);
}

} // namespace
} // namespace veslora
