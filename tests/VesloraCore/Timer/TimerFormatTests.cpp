// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/TimerFormat.h"

#include <gtest/gtest.h>

#include <limits>

using veslora::TimerFormat::remaining;

TEST(TimerFormat, RoundsUpSoThatZeroMeansTheEnd) {
    EXPECT_EQ(remaining(0), "0:00");
    EXPECT_EQ(remaining(0.2), "0:01");
    EXPECT_EQ(remaining(59.5), "1:00");
    EXPECT_EQ(remaining(3599.5), "1:00:00");
}

TEST(TimerFormat, HoursOnlyFromAnHourOn) {
    EXPECT_EQ(remaining(9), "0:09");
    EXPECT_EQ(remaining(1122), "18:42");
    EXPECT_EQ(remaining(3599), "59:59");
    EXPECT_EQ(remaining(3600), "1:00:00");
    EXPECT_EQ(remaining(3750), "1:02:30");
    EXPECT_EQ(remaining(36000), "10:00:00");
}

TEST(TimerFormat, LengthsBeyondReasonDoNoHarm) {
    EXPECT_EQ(remaining(-5), "0:00");
    EXPECT_EQ(remaining(std::numeric_limits<double>::quiet_NaN()), "0:00");
    EXPECT_EQ(remaining(std::numeric_limits<double>::infinity()), "1000000:00:00");
}
