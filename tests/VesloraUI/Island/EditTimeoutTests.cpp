// SPDX-License-Identifier: MIT
// Edit mode where nobody tells of presses outside the island, and where somebody does.
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

constexpr Point inOpenIsland{720, 760};
constexpr Point farAway{100, 100};

class EditTimeoutTest : public ::testing::Test, protected ControlledIsland {
  protected:
    void SetUp() override {
        platform.mouse.hearsPresses = false;
        controller.start();
        // Until nothing of the beginning is left to come.
        platform.advance(1);
        platform.mouse.position = inOpenIsland;
        controller.rack().enterEditing();
        platform.mouse.moveTo(inOpenIsland);
    }
    [[nodiscard]] bool isEditing() { return controller.rack().isEditing(); }
};

TEST_F(EditTimeoutTest, EditingLastsWhileThePointerRestsOnTheIsland) {
    platform.advance(100);
    EXPECT_TRUE(isEditing());
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(EditTimeoutTest, EndsOnceThePointerHasBeenAwayForAWhile) {
    for (const auto place : {std::optional(farAway), std::optional<Point>()}) {
        platform.mouse.moveTo(inOpenIsland);
        controller.rack().enterEditing();
        platform.mouse.moveTo(place);
        platform.advance(9.9);
        EXPECT_TRUE(isEditing());
        platform.advance(0.2);
        EXPECT_FALSE(isEditing());
        EXPECT_EQ(controller.model()->state(), IslandState::closed);
        EXPECT_EQ(platform.time.pending(), 0U);
    }
}

TEST_F(EditTimeoutTest, MovementFarFromTheIslandDoesNotPutItOff) {
    platform.mouse.moveTo(farAway);
    platform.advance(6);
    platform.mouse.moveTo({{110, 100}});
    platform.advance(4.1);
    EXPECT_FALSE(isEditing());
}

TEST_F(EditTimeoutTest, ComingBackStartsTheCountAgain) {
    platform.mouse.moveTo(farAway);
    platform.advance(9);
    platform.mouse.moveTo(inOpenIsland);
    platform.mouse.moveTo(farAway);
    platform.advance(9);
    EXPECT_TRUE(isEditing());
    platform.advance(1.1);
    EXPECT_FALSE(isEditing());
}

TEST_F(EditTimeoutTest, WhatIsDraggedMayLeaveTheIslandAndCountsFromTheRelease) {
    platform.mouse.isDown = true;
    platform.mouse.moveTo(farAway);
    platform.advance(60);
    EXPECT_TRUE(isEditing());
    platform.mouse.isDown = false;
    emit platform.mouse.released();
    platform.advance(9.9);
    EXPECT_TRUE(isEditing());
    platform.advance(0.2);
    EXPECT_FALSE(isEditing());
}

TEST_F(EditTimeoutTest, CountsFromTheCommandWhereThePointerWasNeverThere) {
    controller.rack().exitEditing();
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(controller.toggleEditing());
    platform.advance(9.9);
    EXPECT_TRUE(isEditing());
    platform.advance(0.2);
    EXPECT_FALSE(isEditing());
}

TEST_F(EditTimeoutTest, AClockThatIsSetChangesNothing) {
    platform.mouse.moveTo(farAway);
    platform.advance(5);
    platform.time.setClock(platform.time.now() + 3600);
    platform.advance(4.9);
    EXPECT_TRUE(isEditing());
    platform.advance(0.2);
    EXPECT_FALSE(isEditing());
}

TEST_F(EditTimeoutTest, NothingIsLeftToWaitForAfterEditing) {
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(platform.time.pending(), 1U);
    controller.rack().exitEditing();
    EXPECT_EQ(platform.time.pending(), 0U);
    controller.rack().enterEditing();
    controller.stop();
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(EditTimeoutTest, WherePressesOutsideAreHeardOnlyTheyEndEditing) {
    platform.mouse.hearsPresses = true;
    platform.mouse.moveTo(farAway);
    platform.advance(100);
    EXPECT_TRUE(isEditing());
    emit platform.mouse.pressedOutside();
    EXPECT_FALSE(isEditing());
}

} // namespace
} // namespace veslora
