// SPDX-License-Identifier: MIT
// The island, which steps aside while another application fills its screen.
#include "VesloraUI/Store/Defaults.h"
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

const WindowFrame video{.frame = {0, 0, 1440, 900}};
constexpr Point onNotch{720, 890};

class SteppingAsideTest : public ::testing::Test, protected ControlledIsland {
  protected:
    /// Until nothing of the beginning is left to come.
    void start() {
        controller.start();
        platform.advance(1);
    }
    [[nodiscard]] bool isShown() const { return platform.window.isShown; }
    [[nodiscard]] bool isExpanded() const { return controller.tracker()->isExpanded(); }
    void letWait() { claude.publish({FakeMonitor::session("s1", ClaudeStatus::NeedsApproval{"", 1})}, {}); }
};

TEST_F(SteppingAsideTest, GoesAndComesBackWithTheWindow) {
    start();
    EXPECT_TRUE(isShown());
    platform.others.change({video});
    EXPECT_FALSE(isShown());
    platform.others.change({});
    EXPECT_TRUE(isShown());
}

TEST_F(SteppingAsideTest, IsAsideFromTheStartOverAWindowThatIsThere) {
    platform.others.windows = {video};
    start();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(controller.closedActivity(), LiveActivityKind::none);
}

TEST_F(SteppingAsideTest, AnAlertShowsOverTheWindowAndOnlyWhileItLasts) {
    start();
    platform.others.change({video});
    letWait();
    EXPECT_TRUE(isShown());
    EXPECT_EQ(controller.model()->state(), IslandState::claudeAlert);
    claude.publish({}, {});
    EXPECT_FALSE(isShown());
}

TEST_F(SteppingAsideTest, ATimersEndShowsOverTheWindow) {
    start();
    controller.timer().start();
    platform.others.change({video});
    EXPECT_FALSE(isShown()) << "a running timer is no alert";
    platform.advance(300);
    EXPECT_TRUE(isShown());
    platform.advance(15);
    EXPECT_FALSE(isShown());
}

TEST_F(SteppingAsideTest, AnAlertThatIsThereAlreadyStays) {
    start();
    letWait();
    platform.others.change({video});
    EXPECT_TRUE(isShown());
    claude.publish({}, {});
    EXPECT_FALSE(isShown());
}

TEST_F(SteppingAsideTest, AnAgentAtWorkIsNoAlert) {
    start();
    platform.others.change({video});
    claude.publish({FakeMonitor::session("s1", ClaudeStatus::Working{1})}, {});
    EXPECT_FALSE(isShown());
}

TEST_F(SteppingAsideTest, EndsEditingAndClosesAnOpenIsland) {
    start();
    controller.rack().enterEditing();
    platform.others.change({video});
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(controller.rack().isEditing());
    EXPECT_FALSE(platform.mouse.isWatchingPresses);
    EXPECT_FALSE(isExpanded());
    platform.others.change({});
    platform.mouse.moveTo(onNotch);
    platform.advance(0.1);
    ASSERT_TRUE(isExpanded());
    platform.others.change({video});
    EXPECT_FALSE(isExpanded());
    platform.others.change({});
    EXPECT_TRUE(isShown());
    EXPECT_EQ(controller.model()->state(), IslandState::closed);
}

TEST_F(SteppingAsideTest, OutOfSightItDoesNotOpen) {
    start();
    platform.others.change({video});
    platform.advance(1);
    platform.mouse.moveTo(onNotch);
    EXPECT_EQ(platform.time.pending(), 0U) << "no wake-up waits for the pointer's rest";
    EXPECT_FALSE(controller.toggle());
    EXPECT_FALSE(controller.turnPage(1));
    EXPECT_FALSE(controller.toggleEditing());
    EXPECT_FALSE(isExpanded());
    EXPECT_FALSE(controller.rack().isEditing());
    EXPECT_EQ(controller.rack().page(), 0);
}

TEST_F(SteppingAsideTest, StaysWhereTheUserWantsIt) {
    settings.set(SettingsKeys::hideInFullscreen, false);
    start();
    EXPECT_FALSE(platform.others.isWatching);
    EXPECT_EQ(platform.others.looks, 0) << "nobody looks at windows for nothing";
    platform.others.change({video});
    EXPECT_TRUE(isShown());
}

TEST_F(SteppingAsideTest, TheSettingActsAtOnce) {
    start();
    platform.others.change({video});
    settings.set(SettingsKeys::hideInFullscreen, false);
    EXPECT_TRUE(isShown());
    EXPECT_FALSE(platform.others.isWatching);
    settings.set(SettingsKeys::hideInFullscreen, true);
    EXPECT_FALSE(isShown());
    settings.set(SettingsKeys::hideInFullscreen, false);
    platform.others.change({});
    settings.set(SettingsKeys::hideInFullscreen, true);
    EXPECT_TRUE(isShown()) << "the window went while nobody looked";
}

TEST_F(SteppingAsideTest, OtherSettingsCostNoLook) {
    start();
    const int looks = platform.others.looks;
    settings.set(SettingsKeys::accent, std::string("cyan"));
    platform.advance(1);
    EXPECT_EQ(platform.others.looks, looks);
}

TEST_F(SteppingAsideTest, AnotherScreenIsLookedAtAtOnce) {
    platform.displays.screens = {FakeScreens::make("DP-1", 1920, 1080, false),
                                 FakeScreens::make("eDP-1", 1440, 900, true)};
    start();
    platform.others.change({video});
    EXPECT_FALSE(isShown());
    settings.set(SettingsKeys::displayChoice, std::string("main"));
    EXPECT_TRUE(isShown()) << "it fills the smaller one only";
    platform.displays.screens = {FakeScreens::make("DP-1", 1440, 900, false)};
    emit platform.displays.changed();
    EXPECT_FALSE(isShown());
}

TEST_F(SteppingAsideTest, StopEndsTheWatch) {
    start();
    platform.others.change({});
    controller.stop();
    EXPECT_FALSE(platform.others.isWatching);
    EXPECT_EQ(platform.time.pending(), 0U);
}

} // namespace
} // namespace veslora
