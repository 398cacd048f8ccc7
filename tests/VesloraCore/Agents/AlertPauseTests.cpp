// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AlertPause.h"
#include "tests/support/FixedCalendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veslora {
namespace {

using AlertPause::For;
using AlertPause::hour;
using AlertPause::Length;
using AlertPause::minute;
using AlertPause::UntilTomorrow;

constexpr double day = 24 * hour;
/// A midnight of UTC.
constexpr Timestamp midnight = 20'000 * day;

Timestamp untilTomorrow(Timestamp now, double offset = 0) {
    return AlertPause::endOf(UntilTomorrow{}, now, test::FixedCalendar(offset));
}

TEST(AlertPause, ReadsLengths) {
    const std::pair<const char*, Length> lengths[] = {
        {"1h", For{hour}},          {"30m", For{30 * minute}},    {"90m", For{90 * minute}},
        {"2h30m", For{2.5 * hour}}, {"1m", For{minute}},          {"168h", For{7 * day}},
        {"10080m", For{7 * day}},   {"0h5m", For{5 * minute}},    {"01h", For{hour}},
        {"1h0m", For{hour}},        {"tomorrow", UntilTomorrow{}}};
    for (const auto& [text, length] : lengths) {
        EXPECT_EQ(AlertPause::parse(text), length) << text;
    }
}

TEST(AlertPause, AnyOtherTextIsNoLength) {
    for (const char* text : {"",           "0m",
                             "0h",         "0h0m",
                             "168h1m",     "169h",
                             "10081m",     "99999h",
                             "1",          "h",
                             "m",          "hm",
                             "1hm",        "h30m",
                             "30m1h",      "1h60m",
                             "1h1h",       "1m1m",
                             "-1h",        "+1h",
                             "1.5h",       "1 h",
                             " 1h",        "1h ",
                             "1H",         "1d",
                             "1h30",       "30s",
                             "Tomorrow",   "tomorrow ",
                             "nonsense",   "1e3m",
                             "000001h",    "99999999999999999999h",
                             "1\xc2\xa0h", "½h"}) {
        EXPECT_EQ(AlertPause::parse(text), std::nullopt) << text;
    }
    EXPECT_EQ(AlertPause::parse(std::string_view("1h\0", 3)), std::nullopt);
}

TEST(AlertPause, WhatALengthIsWrittenAsReadsAsThatLength) {
    for (const Length& length : {Length(For{minute}), Length(For{hour}), Length(For{7 * day}),
                                 Length(For{2.5 * hour}), Length(UntilTomorrow{})}) {
        EXPECT_EQ(AlertPause::parse(AlertPause::text(length)), length) << AlertPause::text(length);
    }
}

TEST(AlertPause, WithoutAWordItLastsAnHour) {
    EXPECT_EQ(AlertPause::endOf(Length(), midnight, test::FixedCalendar()), midnight + hour);
}

TEST(AlertPause, EndsWithAWholeSecondWithinItsBounds) {
    const Timestamp now = midnight + 0.9;
    const Timestamp end = AlertPause::endOf(For{AlertPause::longest}, now, test::FixedCalendar());
    EXPECT_EQ(end, midnight + 7 * day);
    EXPECT_EQ(AlertPause::storedEnd(end, now), end);
}

TEST(AlertPause, TomorrowIsTheNextSixOClockMoreThanThreeHoursAhead) {
    EXPECT_EQ(untilTomorrow(midnight + 14 * hour), midnight + day + 6 * hour);
    EXPECT_EQ(untilTomorrow(midnight + 6 * hour), midnight + day + 6 * hour);
    EXPECT_EQ(untilTomorrow(midnight - minute), midnight + 6 * hour);
    EXPECT_EQ(untilTomorrow(midnight + hour), midnight + 6 * hour) << "of a night that is not over";
    EXPECT_EQ(untilTomorrow(midnight + 3 * hour - 1), midnight + 6 * hour);
    EXPECT_EQ(untilTomorrow(midnight + 3 * hour), midnight + day + 6 * hour) << "no more than three";
    EXPECT_EQ(untilTomorrow(midnight + 5 * hour), midnight + day + 6 * hour);
}

TEST(AlertPause, TomorrowIsOfTheUsersOwnClocks) {
    EXPECT_EQ(untilTomorrow(midnight + 14 * hour, 5 * hour), midnight + day + 11 * hour);
    EXPECT_EQ(untilTomorrow(midnight + 14 * hour, -9.5 * hour), midnight + 20.5 * hour);
}

/// The clocks go forward in the night after `midnight`, from 2 to 3 o'clock.
class ShortenedDay final : public Calendar {
  public:
    [[nodiscard]] DaySpan dayOf(Timestamp time) const override {
        if (time < midnight) {
            return {midnight - day, midnight};
        }
        constexpr double length = 23 * hour;
        return time < midnight + length ? DaySpan{midnight, midnight + length}
                                        : DaySpan{midnight + length, midnight + length + day};
    }
};

TEST(AlertPause, AMorningAfterClocksWereChangedIsAtSixOClockAllTheSame) {
    EXPECT_EQ(AlertPause::endOf(UntilTomorrow{}, midnight - hour, ShortenedDay()), midnight + 5 * hour);
}

TEST(AlertPause, AStoredEndCountsWhileItIsAheadAndNoFurtherThanAnyPause) {
    EXPECT_EQ(AlertPause::storedEnd(midnight + 1, midnight), midnight + 1);
    EXPECT_EQ(AlertPause::storedEnd(midnight + 7 * day, midnight), midnight + 7 * day);
    for (const double none :
         {0.0, -1.0, midnight, midnight - 1, midnight + 7 * day + 1, 1e300,
          std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_EQ(AlertPause::storedEnd(none, midnight), std::nullopt) << none;
    }
    EXPECT_EQ(AlertPause::storedEnd(-5, -10), std::nullopt) << "a clock before 1970";
}

} // namespace
} // namespace veslora
