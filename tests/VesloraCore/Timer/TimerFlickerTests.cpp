// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/TimerFlicker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veslora {
namespace {

constexpr Timestamp start = 1'800'000'000;

TEST(TimerFlicker, ShinesUntilTheLastTenSeconds) {
    const Countdown countdown(60, start);
    EXPECT_EQ(flickerOpacity(countdown, start), 1);
    EXPECT_EQ(flickerOpacity(countdown, start + 0.25), 1);
    EXPECT_EQ(flickerOpacity(countdown, start + 49.75), 1);
}

TEST(TimerFlicker, BlinksTwiceASecondOnTheWallClock) {
    const Countdown countdown(60.1, start + 0.07);
    EXPECT_EQ(flickerOpacity(countdown, start + 51), 1);
    EXPECT_EQ(flickerOpacity(countdown, start + 51.24), 1);
    EXPECT_EQ(flickerOpacity(countdown, start + 51.25), 0.25);
    EXPECT_EQ(flickerOpacity(countdown, start + 51.5), 1);
    EXPECT_EQ(flickerOpacity(countdown, start + 51.75), 0.25);
    EXPECT_EQ(flickerOpacity(countdown, start + 52), 1);
}

TEST(TimerFlicker, BeginsAtExactlyTenSecondsAndEndsWithTheTimer) {
    const Countdown countdown(60.25, start);
    EXPECT_EQ(flickerOpacity(countdown, start + 50.25), 0.25) << "exactly ten seconds are left";
    EXPECT_EQ(flickerOpacity(countdown, start + 60.25), 1) << "none is left";
    EXPECT_EQ(flickerOpacity(countdown, start + 61.25), 1);
}

TEST(TimerFlicker, PausedItIsDimAndStill) {
    Countdown countdown(60, start);
    countdown.pause(start + 55);
    for (const double later : {55.0, 55.25, 55.5, 100.75}) {
        EXPECT_EQ(flickerOpacity(countdown, start + later), 0.4) << later;
    }
}

TEST(TimerFlicker, DatesBeyondReasonDoNoHarm) {
    const Countdown countdown(60, start);
    EXPECT_EQ(flickerOpacity(countdown, 1e300), 1);
    EXPECT_EQ(flickerOpacity(countdown, -1e300), 1);
    EXPECT_EQ(flickerOpacity(countdown, std::numeric_limits<double>::quiet_NaN()), 1);
}

} // namespace
} // namespace veslora
