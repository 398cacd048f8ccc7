// SPDX-License-Identifier: MIT
// When players are watched, and how long their wings stay.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

class MusicOnIslandTest : public ::testing::Test, protected ControlledIsland {
  protected:
    void SetUp() override { controller.start(); }
    void TearDown() override { controller.stop(); }
    void spotify(const std::string& state) {
        platform.spotify.tell({{"Player State", state}, {"Name", "Rain"}, {"Track ID", "1"}});
    }
    [[nodiscard]] LiveActivityKind shown() const { return controller.closedActivity(); }
};

TEST_F(MusicOnIslandTest, PlayersAreWatchedOnlyWhileSomethingShowsThem) {
    EXPECT_TRUE(platform.adapter.isRunning());
    settings.set(SettingsKeys::musicLiveActivity, false);
    EXPECT_TRUE(platform.adapter.isRunning()) << "the widget is in the rack";
    controller.rack().remove(WidgetID::music);
    EXPECT_FALSE(platform.adapter.isRunning());
    controller.rack().add(WidgetID::music);
    EXPECT_TRUE(platform.adapter.isRunning());
    controller.rack().remove(WidgetID::music);
    settings.set(SettingsKeys::musicLiveActivity, true);
    EXPECT_TRUE(platform.adapter.isRunning());
}

TEST_F(MusicOnIslandTest, TheProgramsEndStopsTheAdapter) {
    controller.stop();
    EXPECT_FALSE(platform.adapter.isRunning());
    spotify("Playing");
    EXPECT_NE(shown(), LiveActivityKind::music);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(MusicOnIslandTest, WingsOfPausedMusicGoByThemselves) {
    spotify("Playing");
    EXPECT_EQ(shown(), LiveActivityKind::music);
    platform.advance(100);
    EXPECT_EQ(shown(), LiveActivityKind::music);
    spotify("Paused");
    platform.advance(9.9);
    EXPECT_EQ(shown(), LiveActivityKind::music);
    platform.advance(0.2);
    EXPECT_EQ(shown(), LiveActivityKind::none);
}

TEST_F(MusicOnIslandTest, MusicThatPlaysAgainInTimeStays) {
    spotify("Playing");
    spotify("Paused");
    platform.advance(9);
    spotify("Playing");
    platform.advance(60);
    EXPECT_EQ(shown(), LiveActivityKind::music);
}

TEST_F(MusicOnIslandTest, AStoppedPlayerLeavesAtOnce) {
    spotify("Playing");
    platform.spotify.tell({{"Player State", "Stopped"}});
    EXPECT_EQ(shown(), LiveActivityKind::none);
}

TEST_F(MusicOnIslandTest, AReportIsJudgedOnce) {
    const auto before = controller.judgements();
    spotify("Playing");
    EXPECT_EQ(controller.judgements(), before + 1);
}

} // namespace
} // namespace veslora
