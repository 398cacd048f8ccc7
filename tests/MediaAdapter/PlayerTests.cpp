// SPDX-License-Identifier: MIT
#include "MediaAdapter/Player.h"

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

Player playing(double position, std::optional<double> length = 200) {
    Player player;
    player.status = PlaybackStatus::playing;
    player.track.id = "/track/1";
    player.track.title = "One";
    player.track.length = length;
    player.setPosition(position, 1000);
    return player;
}

TEST(PlayerTests, MovesOnWhilePlayingAndNotPastTheEnd) {
    EXPECT_EQ(playing(10).positionAt(1005), 15);
    EXPECT_EQ(playing(10).positionAt(1500), 200);
    EXPECT_EQ(playing(10, std::nullopt).positionAt(1500), 510);
    EXPECT_EQ(playing(10).positionAt(900), 0) << "the clock was set back";
}

TEST(PlayerTests, StaysWhereItIsWhilePaused) {
    Player player = playing(10);
    player.setStatus(PlaybackStatus::paused, 1005);
    EXPECT_EQ(player.position, 15);
    EXPECT_EQ(player.positionAt(1100), 15);
}

TEST(PlayerTests, TakesAPositionThatCanNotBeForTheBeginning) {
    EXPECT_EQ(playing(-3).position, 0);
    EXPECT_EQ(playing(200000).position, 0) << "microseconds for milliseconds";
    EXPECT_EQ(playing(200.5).position, 200) << "a little late at the end";
    EXPECT_EQ(playing(9e12, std::nullopt).position, 0);
    EXPECT_EQ(playing(std::numeric_limits<double>::quiet_NaN()).position, 0);
}

TEST(PlayerTests, BeginsAnotherTrackAtItsStart) {
    Player player = playing(10);
    player.setTrack({.id = "/track/2", .title = "Two", .length = 100}, 1005);
    EXPECT_EQ(player.positionAt(1006), 1);
}

TEST(PlayerTests, StaysInATrackThatIsOnlyDescribedBetter) {
    Player player = playing(10);
    player.setTrack({.id = "/track/1", .title = "One", .artist = "Somebody", .length = 100}, 1005);
    EXPECT_EQ(player.positionAt(1006), 16);
}

} // namespace
} // namespace veslora
