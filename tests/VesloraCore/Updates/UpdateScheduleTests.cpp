// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/UpdateSchedule.h"

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

using UpdateSchedule::period;
using UpdateSchedule::waitFor;

constexpr Timestamp now = 1'800'000'000;

TEST(UpdateScheduleTests, IsDueADayAfterTheLastLook) {
    EXPECT_EQ(waitFor(now, now), period);
    EXPECT_EQ(waitFor(now - 3600, now), period - 3600);
    EXPECT_EQ(waitFor(now - period, now), 0);
    EXPECT_EQ(waitFor(now - 10 * period, now), 0);
}

TEST(UpdateScheduleTests, IsDueAtOnceWhereNobodyHasEverLooked) {
    for (const Timestamp never :
         {0.0, -5.0, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(waitFor(never, now), 0) << never;
        EXPECT_FALSE(UpdateSchedule::isFromFuture(never, now)) << never;
    }
}

TEST(UpdateScheduleTests, ALookInTheFutureIsNoReasonToBeSilentForLonger) {
    for (const Timestamp future : {now + 1, now + 100 * period, 1e300}) {
        EXPECT_EQ(waitFor(future, now), period) << future;
        EXPECT_TRUE(UpdateSchedule::isFromFuture(future, now)) << future;
    }
    EXPECT_FALSE(UpdateSchedule::isFromFuture(now, now));
}

TEST(UpdateScheduleTests, AnOfferIsShownOnceADay) {
    EXPECT_TRUE(UpdateSchedule::mayShowAgain(0, now));
    EXPECT_FALSE(UpdateSchedule::mayShowAgain(now, now));
    EXPECT_FALSE(UpdateSchedule::mayShowAgain(now - period + 1, now));
    EXPECT_TRUE(UpdateSchedule::mayShowAgain(now - period, now));
    EXPECT_FALSE(UpdateSchedule::mayShowAgain(now + 1, now));
}

} // namespace
} // namespace veslora
