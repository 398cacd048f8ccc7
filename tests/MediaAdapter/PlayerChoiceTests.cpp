// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerChoice.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

Player with(PlaybackStatus status, std::uint64_t lastStatusChange, std::uint64_t connection = 1) {
    Player player;
    player.status = status;
    player.lastStatusChange = lastStatusChange;
    player.connection = connection;
    return player;
}

TEST(PlayerChoiceTests, ChoosesNobodyOfNobody) {
    EXPECT_EQ(PlayerChoice::choose({}), nullptr);
}

TEST(PlayerChoiceTests, PlayingComesBeforePausedBeforeStopped) {
    const Player playing = with(PlaybackStatus::playing, 1);
    const Player paused = with(PlaybackStatus::paused, 2);
    const Player stopped = with(PlaybackStatus::stopped, 3);
    EXPECT_EQ(PlayerChoice::choose({&stopped, &playing, &paused}), &playing);
    EXPECT_EQ(PlayerChoice::choose({&stopped, &paused}), &paused);
}

TEST(PlayerChoiceTests, OfEqualOnesTheLastToChangeItsStatusIsChosen) {
    const Player earlier = with(PlaybackStatus::paused, 4, 9);
    const Player later = with(PlaybackStatus::paused, 5, 3);
    EXPECT_EQ(PlayerChoice::choose({&earlier, &later}), &later);
    EXPECT_EQ(PlayerChoice::choose({&later, &earlier}), &later);
}

TEST(PlayerChoiceTests, WithoutAnyChangeTheLastToComeIsChosen) {
    const Player older = with(PlaybackStatus::playing, 0, 3);
    const Player newer = with(PlaybackStatus::playing, 0, 9);
    EXPECT_EQ(PlayerChoice::choose({&newer, &older}), &newer);
    EXPECT_EQ(PlayerChoice::choose({&older, &newer}), &newer);
}

} // namespace
} // namespace veslora
