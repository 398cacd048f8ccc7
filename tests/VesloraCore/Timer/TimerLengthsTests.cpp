// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/TimerLengths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace veslora::TimerLengths {
namespace {

TEST(TimerLengths, ClimbInThreeRuns) {
    ASSERT_EQ(minutes.size(), 28u);
    for (std::size_t i = 0; i + 1 < minutes.size(); ++i) {
        const int step = minutes[i] < 10 ? 1 : minutes[i] < 60 ? 5 : 15;
        EXPECT_EQ(minutes[i + 1] - minutes[i], step) << minutes[i];
    }
    EXPECT_EQ(minutes.front(), 1);
    EXPECT_EQ(minutes.back(), 180);
}

TEST(TimerLengths, StepsFollowTheLadder) {
    EXPECT_EQ(adjust(5, 1), 6);
    EXPECT_EQ(adjust(10, 1), 15);
    EXPECT_EQ(adjust(60, 1), 75);
    EXPECT_EQ(adjust(75, -1), 60);
    EXPECT_EQ(adjust(5, 10), 35);
    EXPECT_EQ(adjust(25, 0), 25);
}

TEST(TimerLengths, StopAtEitherEnd) {
    EXPECT_EQ(adjust(180, 1), 180);
    EXPECT_EQ(adjust(1, -1), 1);
    EXPECT_EQ(adjust(165, 5), 180);
    EXPECT_EQ(adjust(3, -5), 1);
}

TEST(TimerLengths, AStepFromBesideTheLadderLandsOnTheNeighbour) {
    EXPECT_EQ(adjust(12, 1), 15);
    EXPECT_EQ(adjust(12, -1), 10);
    EXPECT_EQ(adjust(12, 0), 15);
    EXPECT_EQ(adjust(12, 2), 20);
    EXPECT_EQ(adjust(0, 1), 1);
    EXPECT_EQ(adjust(0, 0), 1);
    EXPECT_EQ(adjust(-7, -1), 1);
    EXPECT_EQ(adjust(200, 1), 180);
    EXPECT_EQ(adjust(200, -1), 180);
}

TEST(TimerLengths, NumbersBeyondReasonDoNoHarm) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_EQ(adjust(5, most), 180);
    EXPECT_EQ(adjust(5, least), 1);
    EXPECT_EQ(adjust(most, most), 180);
    EXPECT_EQ(adjust(least, least), 1);
}

TEST(TimerLengths, FractionIsThePlaceOnTheLadder) {
    EXPECT_DOUBLE_EQ(fraction(1), 1.0 / 28);
    EXPECT_DOUBLE_EQ(fraction(25), 13.0 / 28);
    EXPECT_DOUBLE_EQ(fraction(180), 1);
    EXPECT_DOUBLE_EQ(fraction(12), 1.0 / 28);
    EXPECT_DOUBLE_EQ(fraction(-1), 1.0 / 28);
}

} // namespace
} // namespace veslora::TimerLengths
