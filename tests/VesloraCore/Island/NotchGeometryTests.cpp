// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/NotchGeometry.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

/// A laptop's screen with a real notch of 180 by 32, away from the origin so that a mixed-up edge shows.
ScreenMetrics notched() {
    return {.frame = {100, 50, 1440, 900},
            .safeAreaTop = 32,
            .auxiliaryLeftWidth = 620,
            .auxiliaryRightWidth = 640,
            .menuBarHeight = 37};
}

ScreenMetrics plain(double menuBarHeight = 30) {
    return {.frame = {0, 0, 1920, 1080}, .menuBarHeight = menuBarHeight};
}

} // namespace

TEST(NotchGeometry, TakesARealNotchFromTheFreeWidthsBesideIt) {
    const NotchGeometry geometry(notched());
    EXPECT_TRUE(notched().hasNotch());
    EXPECT_EQ(geometry.notch, (Rect{730, 918, 180, 32}));
    EXPECT_EQ(geometry.screenWidth, 1440);
}

TEST(NotchGeometry, MakesUpANotchAsHighAsTheMenuBar) {
    EXPECT_FALSE(plain().hasNotch());
    EXPECT_EQ(NotchGeometry(plain()).notch, (Rect{860, 1050, 200, 30}));
}

TEST(NotchGeometry, MadeUpNotchIsNeverLowerThan24) {
    EXPECT_EQ(NotchGeometry(plain(0)).notch, (Rect{860, 1056, 200, 24}));
    EXPECT_EQ(NotchGeometry(plain(23.5)).notch.height, 24);
}

TEST(NotchGeometry, MissingWidthOnEitherSideMakesUpANotchFromTheMenuBar) {
    ScreenMetrics left = notched();
    left.auxiliaryLeftWidth.reset();
    EXPECT_EQ(NotchGeometry(left).notch.size(), (Size{200, 37}));
    ScreenMetrics right = notched();
    right.auxiliaryRightWidth.reset();
    EXPECT_EQ(NotchGeometry(right).notch.size(), (Size{200, 37}));
}

TEST(NotchGeometry, WidthsWithoutASafeAreaMakeNoNotch) {
    ScreenMetrics screen = notched();
    screen.safeAreaTop = 0;
    EXPECT_EQ(NotchGeometry(screen).notch.size(), (Size{200, 37}));
}

TEST(NotchGeometry, DefaultAlertLeavesRoomOnBothSidesOfTheNotch) {
    EXPECT_EQ(NotchGeometry(plain()).alert, (Rect{780, 974, 360, 106}));
    ScreenMetrics wide = notched();
    wide.auxiliaryLeftWidth = 520;
    EXPECT_EQ(NotchGeometry(wide).alert.size(), (Size{440, 108}));
}

TEST(NotchGeometry, DefaultExpandedSizeHoldsTheRack) {
    EXPECT_EQ(NotchGeometry::expandedHeight(30), 186);
    EXPECT_EQ(NotchGeometry(plain()).expanded, (Rect{700, 894, 520, 186}));
}

TEST(NotchGeometry, GivenExpandedSizeIsRaisedToTheAlertInEachDimensionByItself) {
    EXPECT_EQ(NotchGeometry(plain(), Size{100, 300}).expanded.size(), (Size{360, 300}));
    EXPECT_EQ(NotchGeometry(plain(), Size{700, 10}).expanded.size(), (Size{700, 106}));
    EXPECT_EQ(NotchGeometry(plain(), Size{700, 300}).expanded, (Rect{610, 780, 700, 300}));
}

TEST(NotchGeometry, ExpandedWidthIsHeldBetweenFloorAndCap) {
    const NotchGeometry geometry(plain());
    EXPECT_EQ(geometry.expandedFor(10, false), (Rect{780, 894, 360, 186}));
    EXPECT_EQ(geometry.expandedFor(794, false), (Rect{563, 894, 794, 186}));
    EXPECT_EQ(geometry.expandedFor(99999, false), (Rect{393, 894, 1134, 186}));
}

TEST(NotchGeometry, EditingGrowsDownwardsAndKeepsTheTopEdge) {
    const NotchGeometry geometry(plain());
    const Rect editing = geometry.expandedFor(794, true);
    EXPECT_EQ(editing, (Rect{563, 850, 794, 230}));
    EXPECT_EQ(editing.maxY(), geometry.expandedFor(794, false).maxY());
}

TEST(NotchGeometry, CapIsTheGivenExpandedWidthWhereThatIsLarger) {
    EXPECT_EQ(NotchGeometry(plain(), Size{1400, 200}).expandedFor(99999, false).width, 1400);
}

TEST(NotchGeometry, CapWinsOverTheFloorOnAVeryNarrowScreen) {
    const NotchGeometry geometry({.frame = {0, 0, 300, 600}, .menuBarHeight = 24});
    EXPECT_EQ(geometry.expandedFor(100, false).width, 300);
    EXPECT_EQ(geometry.windowFrame().width, 300);
}

TEST(NotchGeometry, LiveActivityWidensTheNotchByAtMost80OnEachSide) {
    const NotchGeometry geometry(plain());
    EXPECT_EQ(geometry.liveActivity(0), geometry.notch);
    EXPECT_EQ(geometry.liveActivity(53), (Rect{807, 1050, 306, 30}));
    EXPECT_EQ(geometry.liveActivity(300), (Rect{780, 1050, 360, 30}));
}

TEST(NotchGeometry, AlertOfASizeHangsBelowTheNotch) {
    const NotchGeometry geometry(plain());
    EXPECT_EQ(geometry.alertFor(NotchGeometry::claudeRequestAlertSize), (Rect{700, 946, 520, 134}));
    EXPECT_EQ(geometry.alertFor(NotchGeometry::alertSize), geometry.alert);
}

TEST(NotchGeometry, WindowHoldsTheLargestStateAndItsShadow) {
    const NotchGeometry geometry(plain());
    const Rect window = geometry.windowFrame();
    EXPECT_EQ(window, (Rect{393, 826, 1134, 254}));
    EXPECT_TRUE(window.contains(geometry.expandedFor(99999, true)));
    EXPECT_TRUE(window.contains(geometry.alertFor(NotchGeometry::claudeRequestAlertSize)));
}

TEST(NotchGeometry, WindowHasTheScreensWidthWhereThatIsSmaller) {
    const NotchGeometry geometry({.frame = {0, 0, 1024, 768}, .menuBarHeight = 24});
    EXPECT_EQ(geometry.windowFrame().x, 0);
    EXPECT_EQ(geometry.windowFrame().width, 1024);
}
