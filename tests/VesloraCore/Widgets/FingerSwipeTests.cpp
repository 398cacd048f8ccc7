// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/FingerSwipe.h"

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

TEST(FingerSwipeTest, DrawsThePageAlong) {
    EXPECT_EQ(FingerSwipe().moveTo(-60, 0), 1);
    EXPECT_EQ(FingerSwipe().moveTo(60, 0), -1);
    EXPECT_EQ(FingerSwipe().moveTo(-59, 0), 0);
}

TEST(FingerSwipeTest, TurnsOnePageHoweverFarItGoesAndWhicheverWay) {
    FingerSwipe swipe;
    EXPECT_EQ(swipe.moveTo(-61, 0), 1);
    EXPECT_EQ(swipe.moveTo(-500, 0), 0);
    EXPECT_EQ(swipe.moveTo(500, 0), 0);
}

TEST(FingerSwipeTest, ATremblingFingerMeansWhatLiesBelow) {
    FingerSwipe swipe;
    for (const double tremble : {-9.0, 10.0, 0.0}) {
        EXPECT_EQ(swipe.moveTo(tremble, -tremble), 0);
        EXPECT_FALSE(swipe.isSideways());
    }
    EXPECT_EQ(swipe.moveTo(11, 10), 0);
    EXPECT_TRUE(swipe.isSideways());
}

TEST(FingerSwipeTest, TheWayInWhichItSetsOutDecides) {
    FingerSwipe down;
    EXPECT_EQ(down.moveTo(0, 11), 0);
    EXPECT_EQ(down.moveTo(-300, 11), 0);
    EXPECT_FALSE(down.isSideways());
    FingerSwipe diagonal;
    EXPECT_EQ(diagonal.moveTo(-80, 80), 0);
    EXPECT_FALSE(diagonal.isSideways());
    FingerSwipe sideways;
    EXPECT_EQ(sideways.moveTo(-12, 5), 0);
    EXPECT_EQ(sideways.moveTo(-70, 200), 1);
}

TEST(FingerSwipeTest, WhatIsNoPlaceTurnsNothing) {
    FingerSwipe swipe;
    EXPECT_EQ(swipe.moveTo(std::numeric_limits<double>::quiet_NaN(), 0), 0);
    EXPECT_FALSE(swipe.isSideways());
    EXPECT_EQ(swipe.moveTo(-60, 0), 1);
}

} // namespace
} // namespace veslora
