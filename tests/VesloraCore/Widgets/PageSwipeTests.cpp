// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/PageSwipe.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace veslora {
namespace {

using Phase = PageScroll::Phase;

class PageSwipeTest : public testing::Test {
  protected:
    /// So many points to the left under two fingers, `seconds` after the last.
    std::optional<int> fingers(double points, double seconds = 0.01, Phase phase = Phase::unknown) {
        now += seconds;
        return swipe.handle({.deltaX = -points, .isPrecise = true, .phase = phase, .time = now});
    }
    std::optional<int> wheel(double notches, double seconds = 0.01) {
        now += seconds;
        return swipe.handle({.deltaX = -notches, .time = now});
    }

    PageSwipe swipe;
    double now = 100;
};

TEST_F(PageSwipeTest, WhatIsNotClearlySidewaysBelongsToTheWidgets) {
    EXPECT_EQ(swipe.handle({.deltaX = 0, .deltaY = 90, .isPrecise = true}), std::nullopt);
    EXPECT_EQ(swipe.handle({.deltaX = 90, .deltaY = -90, .isPrecise = true}), std::nullopt);
    EXPECT_EQ(swipe.handle({}), std::nullopt);
    EXPECT_EQ(swipe.handle({.deltaX = std::numeric_limits<double>::quiet_NaN()}), std::nullopt);
    EXPECT_EQ(swipe.handle({.deltaX = std::numeric_limits<double>::infinity()}), std::nullopt);
    EXPECT_EQ(fingers(59), 0) << "and counts for nothing";
}

TEST_F(PageSwipeTest, ALongSwipeTurnsOnePage) {
    int turned = 0;
    for (int move = 0; move < 100; ++move) {
        turned += fingers(20).value_or(100);
    }
    EXPECT_EQ(turned, 1);
}

TEST_F(PageSwipeTest, APauseBeginsTheNextSwipeWhereNoPhaseTells) {
    EXPECT_EQ(fingers(60), 1);
    EXPECT_EQ(fingers(60, PageSwipe::pause - 0.001), 0);
    EXPECT_EQ(fingers(60, PageSwipe::pause + 0.001), 1);
    EXPECT_EQ(fingers(-120, 1), -1);
}

TEST_F(PageSwipeTest, WherePhasesAreToldTheyAloneBeginASwipe) {
    EXPECT_EQ(fingers(60, 0.01, Phase::began), 1);
    EXPECT_EQ(fingers(60, 5, Phase::changed), 0) << "fingers that rested on the touchpad";
    EXPECT_EQ(fingers(60, 0.01, Phase::began), 1);
}

TEST_F(PageSwipeTest, WhatGoesOnByItselfTurnsNothing) {
    EXPECT_EQ(fingers(59, 0.01, Phase::began), 0);
    EXPECT_EQ(fingers(500, 0.01, Phase::momentum), 0);
    EXPECT_EQ(fingers(1, 0.01, Phase::changed), 1) << "and moves nothing on either";
}

TEST_F(PageSwipeTest, EachNotchTurnsAPage) {
    EXPECT_EQ(wheel(1), 1);
    EXPECT_EQ(wheel(1), 1);
    EXPECT_EQ(wheel(-1), -1);
    EXPECT_EQ(wheel(3), 1) << "however many come at once";
}

TEST_F(PageSwipeTest, FractionsOfANotchAddUpToOne) {
    for (int turn = 0; turn < 3; ++turn) {
        for (int part = 0; part < 7; ++part) {
            EXPECT_EQ(wheel(0.125), 0) << turn << " " << part;
        }
        EXPECT_EQ(wheel(0.125), 1) << turn;
    }
    for (int part = 0; part < 2; ++part) {
        EXPECT_EQ(wheel(1.0 / 3), 0);
    }
    EXPECT_EQ(wheel(1.0 / 3), 1);
}

TEST_F(PageSwipeTest, AHalfTurnedNotchIsForgottenAfterAPauseAndInTheOtherDirection) {
    EXPECT_EQ(wheel(0.9), 0);
    EXPECT_EQ(wheel(-0.2), 0);
    EXPECT_EQ(wheel(-0.8), -1);
    EXPECT_EQ(wheel(0.9, 1), 0);
    EXPECT_EQ(wheel(0.9, 1), 0);
}

TEST_F(PageSwipeTest, TheMovementOfTheFingersDecidesWhicheverWayTheDesktopScrolls) {
    EXPECT_EQ(swipe.handle({.deltaX = -60, .isPrecise = true, .isInverted = false, .time = 1}), 1);
    EXPECT_EQ(swipe.handle({.deltaX = 60, .isPrecise = true, .isInverted = true, .time = 2}), 1);
}

TEST_F(PageSwipeTest, WhateverMovesNoStepIsLongerThanAPageAndNoSwipeTurnsTwo) {
    std::mt19937 random(11); // NOLINT(cert-msc32-c,cert-msc51-cpp): a test has to be repeatable
    std::uniform_real_distribution<double> points(-200, 200);
    for (int swipeNumber = 0; swipeNumber < 500; ++swipeNumber) {
        int turned = 0;
        for (int move = 0; move < 30; ++move) {
            const auto steps = fingers(points(random), move == 0 ? 1 : 0.05);
            ASSERT_TRUE(steps);
            ASSERT_LE(std::abs(*steps), 1);
            turned += std::abs(*steps);
        }
        ASSERT_LE(turned, 1);
    }
}

} // namespace
} // namespace veslora
