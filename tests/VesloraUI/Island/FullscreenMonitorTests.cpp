// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/FullscreenMonitor.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const WindowFrame video{.frame = {0, 0, 1440, 900}};
const WindowFrame bar{.frame = {0, 872, 1440, 28}, .layer = WindowFrame::menuBarLayer};

class FullscreenMonitorTest : public ::testing::Test {
  protected:
    FullscreenMonitorTest() {
        monitor.onChange = [this](bool isFullscreen) { changes.push_back(isFullscreen); };
    }
    void start() {
        monitor.start([this] { return screen; });
    }

    FakePlatform platform;
    FakeScreenWindows& windows = platform.others;
    std::optional<ScreenInfo> screen = platform.displays.screens.front();
    FullscreenMonitor monitor{platform.others, platform.time};
    std::vector<bool> changes;
};

TEST_F(FullscreenMonitorTest, NothingRunsBeforeStart) {
    windows.change({video});
    monitor.recheck();
    EXPECT_FALSE(monitor.isRunning());
    EXPECT_FALSE(monitor.isFullscreen());
    EXPECT_EQ(windows.looks, 0);
    EXPECT_FALSE(windows.isWatching);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(FullscreenMonitorTest, SeesAtItsStartWhatIsThereAlready) {
    windows.windows = {video};
    start();
    EXPECT_TRUE(monitor.isFullscreen());
    EXPECT_THAT(changes, ElementsAre(true));
}

TEST_F(FullscreenMonitorTest, TellsOfEachChangeOnce) {
    start();
    windows.change({video});
    windows.change({video, bar});
    windows.change({video});
    windows.change({video, video});
    platform.advance(1);
    windows.change({});
    platform.advance(1);
    EXPECT_THAT(changes, ElementsAre(true, false, true, false));
}

TEST_F(FullscreenMonitorTest, LooksAgainOnceTheWindowsHaveComeToRest) {
    start();
    windows.change({video});
    ASSERT_TRUE(monitor.isFullscreen());
    windows.windows = {}; // the end of a slide, of which nothing tells
    platform.advance(0.39);
    EXPECT_TRUE(monitor.isFullscreen());
    platform.advance(0.01);
    EXPECT_THAT(changes, ElementsAre(true, false));
    EXPECT_EQ(platform.time.pending(), 0U) << "nothing is left to wake the program";
}

TEST_F(FullscreenMonitorTest, ManyChangesLeaveOneLookForTheEnd) {
    start();
    platform.advance(1);
    const int before = windows.looks;
    for (int change = 0; change < 10; ++change) {
        platform.advance(0.1);
        windows.change({video});
        EXPECT_EQ(platform.time.pending(), 1U);
    }
    EXPECT_EQ(windows.looks, before + 10);
    platform.advance(0.4);
    EXPECT_EQ(windows.looks, before + 11);
}

TEST_F(FullscreenMonitorTest, WithoutAScreenTheResultStays) {
    start();
    windows.change({video});
    screen.reset();
    windows.change({});
    platform.advance(1);
    EXPECT_TRUE(monitor.isFullscreen());
    EXPECT_THAT(changes, ElementsAre(true));
    screen = platform.displays.screens.front();
    monitor.recheck();
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_F(FullscreenMonitorTest, MeasuresOnTheScreenOfTheMoment) {
    windows.windows = {video};
    screen = FakeScreens::make("HDMI-1", 1920, 1080, false);
    start();
    EXPECT_FALSE(monitor.isFullscreen()) << "it fills a smaller one";
    screen = platform.displays.screens.front();
    monitor.recheck();
    EXPECT_TRUE(monitor.isFullscreen());
}

TEST_F(FullscreenMonitorTest, TheStripIsAsHighAsTheNotchWhereNoBarReservesAny) {
    screen->metrics.menuBarHeight = 0;
    windows.windows = {{.frame = {0, 0, 1440, 876}}};
    start();
    EXPECT_TRUE(monitor.isFullscreen()) << "all but the 24 points of the made-up notch";
    windows.change({{.frame = {0, 0, 1440, 874}}});
    EXPECT_FALSE(monitor.isFullscreen());
    screen->metrics.safeAreaTop = 40;
    windows.change({{.frame = {0, 0, 1440, 860}}});
    EXPECT_TRUE(monitor.isFullscreen()) << "a real notch";
    windows.change({{.frame = {0, 0, 1440, 858}}});
    EXPECT_FALSE(monitor.isFullscreen());
}

TEST_F(FullscreenMonitorTest, OwnWindowsNeverCount) {
    start();
    windows.change({{.frame = video.frame, .ownerIsSelf = true}});
    EXPECT_THAT(changes, IsEmpty());
}

TEST_F(FullscreenMonitorTest, StopEndsItAndStartBeginsAgain) {
    start();
    windows.change({video});
    monitor.stop();
    EXPECT_FALSE(windows.isWatching);
    EXPECT_EQ(platform.time.pending(), 0U);
    const int before = windows.looks;
    windows.windows = {};
    emit windows.changed();
    monitor.recheck();
    platform.advance(1);
    EXPECT_EQ(windows.looks, before);
    EXPECT_TRUE(monitor.isFullscreen()) << "nobody has looked since";
    start();
    EXPECT_THAT(changes, ElementsAre(true, false));
    start();
    windows.change({video});
    EXPECT_THAT(changes, ElementsAre(true, false, true)) << "a second start hears no change twice";
    const int looks = windows.looks;
    windows.change({video});
    EXPECT_EQ(windows.looks, looks + 1);
}

TEST_F(FullscreenMonitorTest, ItsEndLeavesNobodyWatching) {
    {
        FullscreenMonitor passing(windows, platform.time);
        passing.start([this] { return screen; });
        EXPECT_TRUE(windows.isWatching);
    }
    EXPECT_FALSE(windows.isWatching);
    EXPECT_EQ(platform.time.pending(), 0U);
}

} // namespace
} // namespace veslora
