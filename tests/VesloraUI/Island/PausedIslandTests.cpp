// SPDX-License-Identifier: MIT
// What an island shows and lets be heard while alerts are paused, and after that.
#include "VesloraUI/Store/AlertPausing.h"
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"
#include "tests/support/FixedCalendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PausedIslandTest : public ::testing::Test, protected ControlledIsland {
  protected:
    PausedIslandTest() {
        settings.set(SettingsKeys::claudeApprovalSound, true);
        agents.obey(pausing);
        controller.start();
    }
    void pause() { pausing.pause(AlertPause::For{AlertPause::hour}); }
    void letWait(double since) {
        claude.publish({FakeMonitor::session("s1", ClaudeStatus::NeedsApproval{"", since})}, {});
    }
    [[nodiscard]] IslandState state() const { return controller.model()->state(); }

    AlertPausing pausing{settings, platform.time, platform.quiet, test::fixedCalendar()};
};

TEST_F(PausedIslandTest, EveryAgentObeys) {
    EXPECT_THAT(claude.log, ElementsAre("obey", "start"));
}

TEST_F(PausedIslandTest, NoAlertDropsAndNothingSounds) {
    pause();
    letWait(1);
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_THAT(platform.sound.played, IsEmpty());
    EXPECT_EQ(agents.waitingForApproval().size(), 1U) << "the widget goes on showing who waits";
}

TEST_F(PausedIslandTest, AnAlertThatIsDownGoesUp) {
    letWait(1);
    ASSERT_EQ(state(), IslandState::claudeAlert);
    pause();
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(PausedIslandTest, ItsEndBringsTheAlertOfOneThatStillWaitsAndNoOldSound) {
    pause();
    letWait(1);
    platform.advance(AlertPause::hour);
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_THAT(platform.sound.played, IsEmpty());
    letWait(2);
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass")) << "a new wait";
}

TEST_F(PausedIslandTest, TheDesktopsDoNotDisturbDoesTheSame) {
    letWait(1);
    platform.quiet.turn(true);
    EXPECT_EQ(state(), IslandState::closed);
    letWait(2);
    platform.quiet.turn(false);
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
}

TEST_F(PausedIslandTest, TheTimersAlertStays) {
    pause();
    controller.timer().select(1);
    controller.timer().start();
    platform.advance(60);
    EXPECT_EQ(state(), IslandState::alert);
}

TEST_F(PausedIslandTest, ADesktopsPauseIsJudgedOnce) {
    const auto before = controller.judgements();
    platform.quiet.turn(true);
    EXPECT_EQ(controller.judgements(), before + 1);
}

} // namespace
} // namespace veslora
