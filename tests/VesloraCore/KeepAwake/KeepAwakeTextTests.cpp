// SPDX-License-Identifier: MIT
#include "VesloraCore/KeepAwake/KeepAwakeText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;

namespace {
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
} // namespace

TEST(KeepAwakeText, TheClockAlwaysShowsItsHours) {
    EXPECT_EQ(KeepAwakeText::remaining(1800, false), "0:30:00");
    EXPECT_EQ(KeepAwakeText::remaining(5050, false), "1:24:10");
    EXPECT_EQ(KeepAwakeText::remaining(43200, false), "12:00:00");
    EXPECT_EQ(KeepAwakeText::remaining(1, false), "0:00:01");
    EXPECT_EQ(KeepAwakeText::remaining(std::nullopt, false), "0:00:00");
}

TEST(KeepAwakeText, TheClockRoundsUp) {
    EXPECT_EQ(KeepAwakeText::remaining(0.1, false), "0:00:01");
    EXPECT_EQ(KeepAwakeText::remaining(59.001, false), "0:01:00");
}

TEST(KeepAwakeText, ASessionWithoutAnEndHasNoTime) {
    EXPECT_EQ(KeepAwakeText::remaining(std::nullopt, true), "∞");
    EXPECT_EQ(KeepAwakeText::remaining(1800, true), "∞");
}

TEST(KeepAwakeText, ShortIsMinutesBelowAnHour) {
    EXPECT_EQ(KeepAwakeText::shortText(0), "1M");
    EXPECT_EQ(KeepAwakeText::shortText(119), "1M");
    EXPECT_EQ(KeepAwakeText::shortText(120), "2M");
    EXPECT_EQ(KeepAwakeText::shortText(3540), "59M");
    EXPECT_EQ(KeepAwakeText::shortText(3599.9), "59M");
}

TEST(KeepAwakeText, ShortIsHoursAndMinutesFromAnHourOn) {
    EXPECT_EQ(KeepAwakeText::shortText(3600), "1:00");
    EXPECT_EQ(KeepAwakeText::shortText(5050), "1:24");
    EXPECT_EQ(KeepAwakeText::shortText(43200), "12:00");
}

TEST(KeepAwakeText, WhatIsNoLengthOfTimeIsNoMatter) {
    for (const double odd : {-1.0, -infinite, noNumber}) {
        EXPECT_EQ(KeepAwakeText::remaining(odd, false), "0:00:00");
        EXPECT_EQ(KeepAwakeText::shortText(odd), "1M");
    }
    EXPECT_EQ(KeepAwakeText::remaining(infinite, false), "1000000:00:00");
    EXPECT_EQ(KeepAwakeText::shortText(infinite), "1000000:00");
}
