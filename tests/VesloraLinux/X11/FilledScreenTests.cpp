// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/FilledScreen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr QRect left(0, 0, 1600, 900);
constexpr QRect right(1600, 0, 1600, 900);
constexpr QRect barFrame(0, 0, 1600, 30);

ScreenInfo screenOf(const QRect& nativeFrame, double scale = 1) {
    ScreenInfo screen;
    screen.scale = scale;
    screen.metrics.frame = {0, 0, nativeFrame.width() / scale, nativeFrame.height() / scale};
    return screen;
}

std::vector<WindowFrame> on(const QRect& screen, const std::vector<DesktopWindow>& windows) {
    return FilledScreen::windowsThatCount(windows, screenOf(screen), screen);
}

const DesktopWindow video{.frame = left, .isFullscreen = true};
const DesktopWindow game{.frame = left};
const DesktopWindow maximised{.frame = left, .isMaximised = true};
const DesktopWindow bar{.frame = barFrame, .role = DesktopWindow::Role::bar};
const WindowFrame filling{.frame = {0, 0, 1600, 900}};
const WindowFrame menuBar{.frame = {0, 870, 1600, 30}, .layer = WindowFrame::menuBarLayer};

TEST(FilledScreenTests, AFullscreenOrBorderlessWindowCounts) {
    EXPECT_THAT(on(left, {video}), ElementsAre(filling));
    EXPECT_THAT(on(left, {game}), ElementsAre(filling));
}

TEST(FilledScreenTests, AFramedOneCountsOnlyByItsState) {
    EXPECT_THAT(on(left, {{.frame = left, .isFramed = true}}), IsEmpty());
    EXPECT_THAT(on(left, {{.frame = left, .isFullscreen = true, .isFramed = true}}), ElementsAre(filling));
}

TEST(FilledScreenTests, AMaximisedOneNeverCountsWithABarOrWithout) {
    EXPECT_THAT(on(left, {maximised}), IsEmpty());
    EXPECT_THAT(on(left, {bar, maximised}), ElementsAre(menuBar));
    EXPECT_THAT(on(left, {{.frame = left, .isFullscreen = true, .isMaximised = true}}), ElementsAre(filling))
        << "it is remembered for the time after";
}

TEST(FilledScreenTests, AWallpaperIsNoApplication) {
    EXPECT_THAT(on(left, {{.frame = left, .role = DesktopWindow::Role::other}}), IsEmpty());
    EXPECT_THAT(on(left, {{.frame = left, .isBelow = true}}), IsEmpty());
}

TEST(FilledScreenTests, OnlyBarsAboveItCount) {
    EXPECT_THAT(on(left, {bar, video}), ElementsAre(menuBar, filling));
    EXPECT_THAT(on(left, {video, bar}), ElementsAre(filling));
}

TEST(FilledScreenTests, BeneathAMaximisedOneNothingIsSeen) {
    EXPECT_THAT(on(left, {maximised, video}), IsEmpty());
    EXPECT_THAT(
        on(left, {{.frame = left.adjusted(0, 30, 0, 0), .isMaximised = true, .isFramed = true}, video}),
        IsEmpty());
    EXPECT_THAT(on(left, {{.frame = {700, 0, 200, 900}, .isMaximised = true}, video}), ElementsAre(filling))
        << "maximised in its height alone";
    EXPECT_THAT(on(left, {{.frame = right, .isMaximised = true}, video}), ElementsAre(filling))
        << "on the other screen";
}

TEST(FilledScreenTests, EachScreenHasItsOwnWindowsInItsOwnSpace) {
    const DesktopWindow elsewhere{.frame = right, .isFullscreen = true};
    EXPECT_THAT(on(left, {elsewhere}), IsEmpty());
    EXPECT_THAT(on(right, {elsewhere, video}), ElementsAre(filling));
    EXPECT_THAT(on(left, {elsewhere, video}), ElementsAre(filling));
    const DesktopWindow both{.frame = left.united(right), .isFullscreen = true};
    EXPECT_THAT(on(left, {both}), ElementsAre(WindowFrame{.frame = {0, 0, 3200, 900}}));
    EXPECT_THAT(on(right, {both}), ElementsAre(WindowFrame{.frame = {-1600, 0, 3200, 900}}));
}

TEST(FilledScreenTests, CountsInPointsAndForgivesOne) {
    const auto counts = [](const QRect& frame, double scale) {
        return !FilledScreen::windowsThatCount({{.frame = frame}}, screenOf(left, scale), left).empty();
    };
    EXPECT_TRUE(counts(left.adjusted(1, 1, -1, -1), 1));
    EXPECT_FALSE(counts(left.adjusted(2, 2, -2, -2), 1));
    EXPECT_FALSE(counts(left.adjusted(0, 0, 0, -2), 1));
    EXPECT_TRUE(counts(left.adjusted(2, 2, -2, -2), 2));
    EXPECT_FALSE(counts(left.adjusted(3, 3, -3, -3), 2));
    EXPECT_THAT(FilledScreen::windowsThatCount({bar, video}, screenOf(left, 2), left),
                ElementsAre(WindowFrame{.frame = {0, 435, 800, 15}, .layer = WindowFrame::menuBarLayer},
                            WindowFrame{.frame = {0, 0, 800, 450}}));
}

TEST(FilledScreenTests, OwnWindowsSayThatTheyAreAndHideTheRest) {
    DesktopWindow own = video;
    own.isOwn = true;
    EXPECT_THAT(on(left, {own, video}),
                ElementsAre(WindowFrame{.frame = filling.frame, .ownerIsSelf = true}));
}

TEST(FilledScreenTests, LargeIsWhatMayBeMaximised) {
    EXPECT_TRUE(FilledScreen::isLarge({1600, 815}, left)) << "below a bar and a title, above a dock";
    EXPECT_FALSE(FilledScreen::isLarge({1600, 450}, left));
    EXPECT_FALSE(FilledScreen::isLarge({800, 900}, left));
}

} // namespace
} // namespace veslora
