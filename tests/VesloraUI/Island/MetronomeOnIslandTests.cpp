// SPDX-License-Identifier: MIT
// The metronome and the island: what a start shows, and what ends it.
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

class MetronomeOnIslandTest : public ::testing::Test, protected ControlledIsland {
  protected:
    void SetUp() override { controller.start(); }
    void TearDown() override { controller.stop(); }
    [[nodiscard]] LiveActivityKind shown() const { return controller.closedActivity(); }
};

TEST_F(MetronomeOnIslandTest, ItsWingsComeAndGoWithIt) {
    controller.metronome().start();
    EXPECT_EQ(shown(), LiveActivityKind::metronome);
    controller.metronome().stop();
    EXPECT_EQ(shown(), LiveActivityKind::none);
}

TEST_F(MetronomeOnIslandTest, ItStandsBeforeMusicAndATimer) {
    platform.spotify.tell({{"Player State", "Playing"}, {"Name", "Rain"}, {"Track ID", "1"}});
    controller.timer().start();
    controller.metronome().start();
    EXPECT_EQ(shown(), LiveActivityKind::metronome);
}

TEST_F(MetronomeOnIslandTest, OneThatCannotStartShowsNothing) {
    platform.beats.canStart = false;
    controller.metronome().start();
    EXPECT_EQ(shown(), LiveActivityKind::none);
}

TEST_F(MetronomeOnIslandTest, TheProgramsEndSilencesIt) {
    controller.metronome().start();
    controller.stop();
    EXPECT_FALSE(platform.beats.isStarted());
    EXPECT_EQ(platform.time.pending(), 0U);
}

} // namespace
} // namespace veslora
