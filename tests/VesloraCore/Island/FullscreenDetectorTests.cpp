// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/FullscreenDetector.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

constexpr Rect screen{0, 0, 1920, 1080};
constexpr double menuBarHeight = 30;
constexpr Rect body{0, 0, 1920, 1050};

bool isFullscreen(const std::vector<WindowFrame>& windows, bool menuBarAutoHides = false) {
    return FullscreenDetector::isFullscreen(windows, screen, menuBarHeight, menuBarAutoHides);
}

} // namespace

TEST(FullscreenDetector, NoWindowsAreNotFullscreen) {
    EXPECT_FALSE(isFullscreen({}));
}

TEST(FullscreenDetector, WindowOverTheWholeScreenIsFullscreen) {
    EXPECT_TRUE(isFullscreen({{.frame = screen}}));
}

TEST(FullscreenDetector, WindowMayFallShortByOnePoint) {
    EXPECT_TRUE(isFullscreen({{.frame = body}}));
    EXPECT_TRUE(isFullscreen({{.frame = body.grownBy(-1, -1)}}));
    EXPECT_FALSE(isFullscreen({{.frame = body.grownBy(-2, -2)}}));
    EXPECT_FALSE(isFullscreen({{.frame = body.grownBy(-2, 0)}}));
    EXPECT_FALSE(isFullscreen({{.frame = body.grownBy(0, -2)}}));
}

TEST(FullscreenDetector, OwnPanelNeverCovers) {
    EXPECT_FALSE(isFullscreen({{.frame = screen, .ownerIsSelf = true}}));
}

TEST(FullscreenDetector, OnlyTheNormalLayerCovers) {
    EXPECT_FALSE(isFullscreen({{.frame = screen, .layer = 3}}));
    EXPECT_FALSE(isFullscreen({{.frame = screen, .layer = -1}}));
}

TEST(FullscreenDetector, VisibleMenuBarMeansAMerelyLargeWindow) {
    const WindowFrame large{.frame = body};
    EXPECT_FALSE(isFullscreen({large, {.frame = {0, 1050, 1920, 30}, .layer = 25}}));
    EXPECT_FALSE(isFullscreen({large, {.frame = {0, 1050, 1920, 30}, .layer = 25, .ownerIsSelf = true}}));
    EXPECT_FALSE(isFullscreen({large, {.frame = {1800, 1049, 20, 2}, .layer = 25}}));
}

TEST(FullscreenDetector, MenuBarElsewhereDoesNotCount) {
    const WindowFrame large{.frame = body};
    EXPECT_TRUE(isFullscreen({large, {.frame = {0, 0, 1920, 1050}, .layer = 25}}))
        << "It only touches the strip.";
    EXPECT_TRUE(isFullscreen({large, {.frame = {1920, 1050, 1920, 30}, .layer = 25}}))
        << "On the next screen.";
    EXPECT_TRUE(isFullscreen({large, {.frame = {0, 1050, 1920, 30}, .layer = 24}}));
}

TEST(FullscreenDetector, MenuBarThatHidesItselfGivesNoAnswer) {
    EXPECT_FALSE(isFullscreen({{.frame = screen}}, true));
}

TEST(FullscreenDetector, IslandStepsAsideOnlyWhenAskedAndWithoutAnAlert) {
    using FullscreenDetector::shouldShowIsland;
    EXPECT_TRUE(shouldShowIsland(false, false, false));
    EXPECT_TRUE(shouldShowIsland(false, true, false));
    EXPECT_TRUE(shouldShowIsland(true, false, false));
    EXPECT_FALSE(shouldShowIsland(true, true, false));
    EXPECT_TRUE(shouldShowIsland(true, true, true));
}
