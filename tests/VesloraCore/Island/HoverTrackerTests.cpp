// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/HoverTracker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// The notch is {860, 1050, 200, 30}, so the hot zone is {852, 1042, 216, 46}; the island opens to {700, 894,
// 520, 186}.
const NotchGeometry geometry({.frame = {0, 0, 1920, 1080}, .menuBarHeight = 30});
constexpr Point onNotch{960, 1070};
constexpr Point inOpenZone{960, 900};
constexpr Point faraway{10, 10};

class HoverTrackerTest : public testing::Test {
  protected:
    HoverTracker tracker{geometry, 0.5};

    void open() {
        tracker.update(onNotch, 0);
        ASSERT_TRUE(tracker.update(onNotch, 1));
    }
};

} // namespace

TEST_F(HoverTrackerTest, BeginsClosedAndTakesNoClicks) {
    EXPECT_FALSE(tracker.isExpanded());
    EXPECT_FALSE(tracker.isPinnedOpen());
    EXPECT_EQ(tracker.expandedWidth, 520);
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_FALSE(tracker.acceptsClicks(onNotch));
    EXPECT_THAT(tracker.clickZones(), IsEmpty());
    EXPECT_EQ(tracker.hotZone(), (Rect{852, 1042, 216, 46}));
}

TEST_F(HoverTrackerTest, OpensOnceThePointerHasRestedForTheDelay) {
    EXPECT_FALSE(tracker.update(onNotch, 10));
    EXPECT_EQ(tracker.pendingOpenDeadline(), 10.5);
    EXPECT_FALSE(tracker.update(onNotch, 10.25));
    EXPECT_EQ(tracker.pendingOpenDeadline(), 10.5)
        << "Movement inside the zone does not begin the wait again.";
    EXPECT_TRUE(tracker.update(onNotch, 10.5));
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_EQ(tracker.hotZone(), std::nullopt);
}

TEST_F(HoverTrackerTest, OpensAtTheVeryDeadlineThatItNames) {
    for (int step = 0; step < 1000; ++step) {
        HoverTracker fresh(geometry, 0.1);
        const Timestamp start = 1'800'000'000 + step * 0.0137;
        ASSERT_FALSE(fresh.update(onNotch, start));
        ASSERT_TRUE(fresh.update(onNotch, *fresh.pendingOpenDeadline())) << step;
    }
}

TEST_F(HoverTrackerTest, DelayOfZeroOpensAtOnce) {
    tracker.openDelay = 0;
    EXPECT_TRUE(tracker.update(onNotch, 10));
    EXPECT_TRUE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, EdgeOfTheHotZoneIsInside) {
    for (const Point corner : {Point{852, 1042}, Point{1068, 1042}, Point{852, 1088}, Point{1068, 1088}}) {
        HoverTracker fresh(geometry, 0);
        EXPECT_TRUE(fresh.update(corner, 0)) << corner.x << ", " << corner.y;
    }
    EXPECT_FALSE(tracker.update({851.9, 1070}, 0));
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
}

TEST_F(HoverTrackerTest, LeavingTheHotZoneBeginsTheWaitAgain) {
    tracker.update(onNotch, 10);
    EXPECT_FALSE(tracker.update(faraway, 10.25));
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_FALSE(tracker.update(onNotch, 10.375));
    EXPECT_EQ(tracker.pendingOpenDeadline(), 10.875);
    EXPECT_FALSE(tracker.update(onNotch, 10.5));
    EXPECT_TRUE(tracker.update(onNotch, 10.875));
}

TEST_F(HoverTrackerTest, WingsWidenTheHotZoneByAtMost80) {
    tracker.liveActivityWingWidth = 53;
    EXPECT_EQ(tracker.hotZone(), (Rect{799, 1042, 322, 46}));
    tracker.liveActivityWingWidth = 300;
    EXPECT_EQ(tracker.hotZone(), (Rect{772, 1042, 376, 46}));
    tracker.openDelay = 0;
    EXPECT_FALSE(tracker.update({771, 1070}, 0));
    EXPECT_TRUE(tracker.update({772, 1070}, 0));
}

TEST_F(HoverTrackerTest, ClosesAtOnceOutsideTheOpenZone) {
    open();
    EXPECT_FALSE(tracker.update(inOpenZone, 2));
    EXPECT_FALSE(tracker.update({700, 894}, 3)) << "The open zone's edge is inside.";
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_TRUE(tracker.update({699, 894}, 4));
    EXPECT_FALSE(tracker.isExpanded());
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
}

TEST_F(HoverTrackerTest, OpenZoneFollowsWidthAndEditing) {
    open();
    tracker.expandedWidth = 794;
    EXPECT_THAT(tracker.clickZones(), ElementsAre(geometry.expandedFor(794, false)));
    tracker.isEditing = true;
    EXPECT_THAT(tracker.clickZones(), ElementsAre(geometry.expandedFor(794, true)));
    EXPECT_TRUE(tracker.acceptsClicks({600, 860}));
    EXPECT_FALSE(tracker.update({600, 860}, 2));
    tracker.isEditing = false;
    EXPECT_TRUE(tracker.update({600, 860}, 3));
}

TEST_F(HoverTrackerTest, ClicksBesideANarrowIslandAreNotItsOwnAlthoughHoveringThereKeepsItOpen) {
    open();
    tracker.expandedWidth = 174;
    EXPECT_THAT(tracker.clickZones(), ElementsAre(Rect{873, 894, 174, 186}));
    EXPECT_EQ(tracker.hoverZone(), (Rect{780, 894, 360, 186}));
    EXPECT_FALSE(tracker.update({790, 1000}, 2));
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_FALSE(tracker.acceptsClicks({790, 1000}));
    EXPECT_TRUE(tracker.update({779, 1000}, 3));
    EXPECT_EQ(tracker.hoverZone(), tracker.hotZone());
    EXPECT_TRUE(tracker.hotZone());
}

TEST_F(HoverTrackerTest, AnIslandAsWideAsItsZoneHasNoZoneForHoveringAlone) {
    open();
    EXPECT_EQ(tracker.hoverZone(), std::nullopt);
}

TEST_F(HoverTrackerTest, PositionAtTheFarEndOfTheWorldClosesAnOpenIsland) {
    open();
    constexpr double farthest = std::numeric_limits<double>::lowest();
    EXPECT_TRUE(tracker.update({farthest, farthest}, 2));
    EXPECT_FALSE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, AlertKeepsAParkedPointerFromArming) {
    tracker.isShowingAlert = true;
    EXPECT_FALSE(tracker.update(onNotch, 10));
    EXPECT_FALSE(tracker.update(onNotch, 100));
    EXPECT_EQ(tracker.hotZone(), std::nullopt);
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    tracker.isShowingAlert = false;
    EXPECT_FALSE(tracker.update(onNotch, 101)) << "The wait starts only now.";
    EXPECT_EQ(tracker.pendingOpenDeadline(), 101.5);
    EXPECT_TRUE(tracker.update(onNotch, 101.5));
}

TEST_F(HoverTrackerTest, AlertDisarmsAnArmedIsland) {
    tracker.update(onNotch, 10);
    tracker.isShowingAlert = true;
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_FALSE(tracker.update(onNotch, 10.5));
    tracker.isShowingAlert = false;
    EXPECT_FALSE(tracker.update(onNotch, 11));
    EXPECT_EQ(tracker.pendingOpenDeadline(), 11.5);
}

TEST_F(HoverTrackerTest, ClosedIslandTakesClicksOnTheAlertAlone) {
    tracker.isShowingAlert = true;
    tracker.isAlertOnScreen = true;
    EXPECT_THAT(tracker.clickZones(), ElementsAre(geometry.alert));
    EXPECT_TRUE(tracker.acceptsClicks({780, 974}));
    EXPECT_FALSE(tracker.acceptsClicks({779, 974}));
    tracker.alertSize = NotchGeometry::claudeRequestAlertSize;
    EXPECT_THAT(tracker.clickZones(), ElementsAre(Rect{700, 946, 520, 134}));
    EXPECT_TRUE(tracker.acceptsClicks({700, 946}));
    EXPECT_FALSE(tracker.acceptsClicks({700, 945}));
}

TEST_F(HoverTrackerTest, AnAlertTakesNoClicksBeforeItIsDrawn) {
    tracker.isShowingAlert = true;
    EXPECT_THAT(tracker.clickZones(), ElementsAre());
    tracker.isShowingAlert = false;
    tracker.isAlertOnScreen = true;
    EXPECT_THAT(tracker.clickZones(), ElementsAre()) << "none shows any more";
}

TEST_F(HoverTrackerTest, ClosedIslandWithWingsTakesNoClicks) {
    tracker.liveActivityWingWidth = 53;
    tracker.update(onNotch, 0);
    EXPECT_FALSE(tracker.acceptsClicks(onNotch));
}

TEST_F(HoverTrackerTest, OpenIslandWithAnAlertTakesClicksOnBoth) {
    open();
    tracker.expandedWidth = 400;
    tracker.isShowingAlert = true;
    tracker.isAlertOnScreen = true;
    tracker.alertSize = NotchGeometry::claudeRequestAlertSize;
    EXPECT_EQ(tracker.clickZones().size(), 2U);
    EXPECT_TRUE(tracker.acceptsClicks({960, 895})) << "Below the alert, inside the open zone.";
    EXPECT_TRUE(tracker.acceptsClicks({705, 1070})) << "Beside the open zone, inside the alert.";
    EXPECT_FALSE(tracker.acceptsClicks({705, 900}));
}

TEST_F(HoverTrackerTest, OpenIslandWithAnAlertClosesAsUsualAndStillTakesTheAlertsClicks) {
    open();
    tracker.isShowingAlert = true;
    tracker.isAlertOnScreen = true;
    EXPECT_FALSE(tracker.update(inOpenZone, 2));
    EXPECT_TRUE(tracker.update(faraway, 3));
    EXPECT_FALSE(tracker.isExpanded());
    EXPECT_TRUE(tracker.acceptsClicks({960, 1000}));
    EXPECT_FALSE(tracker.acceptsClicks(inOpenZone));
}

TEST_F(HoverTrackerTest, PinningOpensWithoutAnUpdate) {
    tracker.update(onNotch, 10);
    tracker.setPinnedOpen(true);
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_FALSE(tracker.update(faraway, 11));
    EXPECT_TRUE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, UnpinningLeavesItOpenUntilThePointerIsSeenOutside) {
    tracker.setPinnedOpen(true);
    tracker.setPinnedOpen(false);
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_FALSE(tracker.update(inOpenZone, 1));
    EXPECT_TRUE(tracker.update(faraway, 2));
    EXPECT_FALSE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, PinningWinsOverAnAlert) {
    tracker.isShowingAlert = true;
    tracker.setPinnedOpen(true);
    EXPECT_FALSE(tracker.update(faraway, 1));
    EXPECT_TRUE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, HeldOpenItStaysUntilThePointerHasBeenInAndLeft) {
    tracker.holdOpen();
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_TRUE(tracker.isHeldOpen());
    EXPECT_FALSE(tracker.update(faraway, 1));
    EXPECT_FALSE(tracker.update(faraway, 1000)) << "However long it takes.";
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_TRUE(tracker.acceptsClicks(inOpenZone));
    EXPECT_EQ(tracker.hotZone(), std::nullopt);
    EXPECT_FALSE(tracker.update(inOpenZone, 1001));
    EXPECT_FALSE(tracker.isHeldOpen());
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_TRUE(tracker.update(faraway, 1002));
    EXPECT_FALSE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, HoldingForgetsAnArmedPointer) {
    tracker.update(onNotch, 10);
    tracker.holdOpen();
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_FALSE(tracker.update(onNotch, 10.1));
    EXPECT_FALSE(tracker.isHeldOpen()) << "The pointer is in it.";
    EXPECT_TRUE(tracker.update(faraway, 11));
}

TEST_F(HoverTrackerTest, HoldingWhatIsOpenAlreadyChangesNothing) {
    open();
    tracker.holdOpen();
    EXPECT_FALSE(tracker.isHeldOpen());
    EXPECT_TRUE(tracker.update(faraway, 2)) << "The pointer that opened it has left.";
}

TEST_F(HoverTrackerTest, ShuttingClosesAHeldIslandAndOneOpenByHover) {
    tracker.holdOpen();
    tracker.shut();
    EXPECT_FALSE(tracker.isExpanded());
    EXPECT_FALSE(tracker.isHeldOpen());
    EXPECT_THAT(tracker.clickZones(), IsEmpty());
    EXPECT_FALSE(tracker.update(faraway, 1));
    open();
    tracker.shut();
    EXPECT_FALSE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, APointerOnTheIslandDoesNotOpenWhatWasShutUnderItUntilItHasLeft) {
    open();
    tracker.shut();
    EXPECT_FALSE(tracker.update(onNotch, 2));
    EXPECT_FALSE(tracker.update(onNotch, 100));
    EXPECT_EQ(tracker.pendingOpenDeadline(), std::nullopt);
    EXPECT_FALSE(tracker.update(faraway, 101));
    EXPECT_FALSE(tracker.update(onNotch, 102));
    EXPECT_EQ(tracker.pendingOpenDeadline(), 102.5);
    EXPECT_TRUE(tracker.update(onNotch, 102.5));
}

TEST_F(HoverTrackerTest, AnAlertDoesNotCountAsHavingLeftWhatWasShut) {
    open();
    tracker.shut();
    tracker.isShowingAlert = true;
    EXPECT_FALSE(tracker.update(onNotch, 2));
    tracker.isShowingAlert = false;
    EXPECT_FALSE(tracker.update(onNotch, 3));
    EXPECT_FALSE(tracker.update(onNotch, 4));
    EXPECT_FALSE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, WhatWasShutCanBeHeldOpenAgain) {
    tracker.holdOpen();
    tracker.shut();
    tracker.holdOpen();
    EXPECT_TRUE(tracker.isExpanded());
    EXPECT_FALSE(tracker.update(faraway, 1));
    EXPECT_FALSE(tracker.update(inOpenZone, 2));
    EXPECT_TRUE(tracker.update(faraway, 3));
    EXPECT_FALSE(tracker.update(onNotch, 4));
    EXPECT_TRUE(tracker.update(onNotch, 5)) << "Hovering is as ever.";
}

TEST_F(HoverTrackerTest, AnAlertThatComesEndsTheHoldSinceTheOpenIslandWouldHideIt) {
    tracker.holdOpen();
    tracker.update(faraway, 1);
    tracker.isShowingAlert = true;
    EXPECT_TRUE(tracker.update(faraway, 2));
    EXPECT_FALSE(tracker.isExpanded());
    tracker.isShowingAlert = false;
    EXPECT_FALSE(tracker.update(faraway, 3));
    EXPECT_FALSE(tracker.isExpanded()) << "The hold does not come back.";
}

TEST_F(HoverTrackerTest, AnAlertDoesNotCloseAHeldIslandUnderThePointer) {
    tracker.holdOpen();
    tracker.isShowingAlert = true;
    EXPECT_FALSE(tracker.update(inOpenZone, 1));
    EXPECT_TRUE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, AnAlertThatTheUserCoveredStaysCoveredAndTheNextOneDoesNot) {
    tracker.isShowingAlert = true;
    tracker.holdOpen();
    EXPECT_FALSE(tracker.update(faraway, 1));
    EXPECT_FALSE(tracker.update(faraway, 2));
    EXPECT_TRUE(tracker.isExpanded());
    tracker.isShowingAlert = false;
    EXPECT_FALSE(tracker.update(faraway, 3));
    tracker.isShowingAlert = true;
    EXPECT_TRUE(tracker.update(faraway, 4));
    EXPECT_FALSE(tracker.isExpanded());
}

TEST_F(HoverTrackerTest, PinningTakesTheHoldsPlace) {
    tracker.holdOpen();
    tracker.setPinnedOpen(true);
    EXPECT_FALSE(tracker.isHeldOpen());
    tracker.shut();
    EXPECT_TRUE(tracker.isExpanded()) << "Edit mode has to end first.";
    tracker.setPinnedOpen(false);
    EXPECT_TRUE(tracker.update(faraway, 1));
}
