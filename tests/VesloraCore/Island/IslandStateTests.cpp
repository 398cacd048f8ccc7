// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/IslandState.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

IslandLayoutInputs inputs(IslandState state) {
    return {.state = state,
            .notchSize = {200, 30},
            .alertSize = {360, 106},
            .expandedSize = {520, 186},
            .islandWidth = 794};
}

} // namespace

TEST(IslandState, FollowsTheKindWhileClosed) {
    const std::pair<LiveActivityKind, IslandState> table[] = {
        {LiveActivityKind::timerAlert, IslandState::alert},
        {LiveActivityKind::claudeAlert, IslandState::claudeAlert},
        {LiveActivityKind::claudeFinished, IslandState::claudeActivity},
        {LiveActivityKind::metronome, IslandState::metronomeActivity},
        {LiveActivityKind::timer, IslandState::liveActivity},
        {LiveActivityKind::music, IslandState::musicActivity},
        {LiveActivityKind::claudeWorking, IslandState::claudeWorkingActivity},
        {LiveActivityKind::keepAwake, IslandState::keepAwakeActivity},
        {LiveActivityKind::none, IslandState::closed},
    };
    for (const auto& [kind, state] : table) {
        EXPECT_EQ(islandStateOf(false, kind), state);
        EXPECT_EQ(islandStateOf(true, kind), IslandState::expanded);
    }
}

TEST(IslandState, OnlyAlertsAndTheOpenRackStandOut) {
    EXPECT_TRUE(isOpen(IslandState::alert));
    EXPECT_TRUE(isOpen(IslandState::claudeAlert));
    EXPECT_TRUE(isOpen(IslandState::expanded));
    EXPECT_FALSE(isOpen(IslandState::closed));
    EXPECT_FALSE(isOpen(IslandState::musicActivity));
}

TEST(IslandLayout, ClosedIsWiderThanTheNotchByItsFlare) {
    EXPECT_EQ(islandLayout(inputs(IslandState::closed)), (IslandLayout{212, 30, 6, 8}));
}

TEST(IslandLayout, EveryActivityAddsTwoWings) {
    for (const auto state :
         {IslandState::liveActivity, IslandState::musicActivity, IslandState::metronomeActivity,
          IslandState::claudeActivity, IslandState::claudeWorkingActivity, IslandState::keepAwakeActivity}) {
        auto values = inputs(state);
        values.wingWidth = 37;
        EXPECT_EQ(islandLayout(values), (IslandLayout{274, 30, 6, 8}));
    }
}

TEST(IslandLayout, TimerWithoutACountdownHasNoWings) {
    EXPECT_EQ(islandLayout(inputs(IslandState::liveActivity)), (IslandLayout{200, 30, 6, 8}));
}

TEST(IslandLayout, AlertsTakeTheirOwnSize) {
    EXPECT_EQ(islandLayout(inputs(IslandState::alert)), (IslandLayout{360, 106, 10, 14}));
    EXPECT_EQ(islandLayout(inputs(IslandState::claudeAlert)), (IslandLayout{360, 106, 10, 14}));
}

TEST(IslandLayout, RequestThatCanBeAnsweredIsLarger) {
    auto values = inputs(IslandState::claudeAlert);
    values.hasPendingRequests = true;
    EXPECT_EQ(islandLayout(values), (IslandLayout{520, 134, 10, 14}));
    values.state = IslandState::alert;
    EXPECT_EQ(islandLayout(values), (IslandLayout{360, 106, 10, 14}))
        << "The timer's alert is none of its concern.";
}

TEST(IslandLayout, OpenFollowsTheRackAndGrowsWhileEditing) {
    auto values = inputs(IslandState::expanded);
    EXPECT_EQ(islandLayout(values), (IslandLayout{794, 186, 12, 16}));
    values.isEditing = true;
    EXPECT_EQ(islandLayout(values), (IslandLayout{794, 230, 12, 16}));
}
