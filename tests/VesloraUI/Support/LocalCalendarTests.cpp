// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraUI/Support/LocalCalendar.h"

#include <gtest/gtest.h>

#include <string_view>

namespace veslora {
namespace {

Timestamp at(std::string_view text) {
    return Iso8601::parse(text).value();
}

DaySpan dayIn(const char* zone, std::string_view time) {
    return LocalCalendar(QTimeZone(zone)).dayOf(at(time));
}

TEST(LocalCalendar, DaysAreThePlacesOwn) {
    EXPECT_EQ(dayIn("UTC", "2026-11-21T23:30:00Z"),
              (DaySpan{at("2026-11-21T00:00:00Z"), at("2026-11-22T00:00:00Z")}));
    EXPECT_EQ(dayIn("Asia/Tokyo", "2026-11-21T23:30:00Z"),
              (DaySpan{at("2026-11-22T00:00:00+09:00"), at("2026-11-23T00:00:00+09:00")}));
    EXPECT_EQ(dayIn("America/New_York", "2026-11-21T03:30:00Z"),
              (DaySpan{at("2026-11-20T00:00:00-05:00"), at("2026-11-21T00:00:00-05:00")}));
    EXPECT_EQ(dayIn("Asia/Kathmandu", "2026-11-21T18:14:59Z"),
              (DaySpan{at("2026-11-21T00:00:00+05:45"), at("2026-11-22T00:00:00+05:45")}));
}

TEST(LocalCalendar, ADayHas23Or25HoursWhereClocksChange) {
    EXPECT_EQ(dayIn("Europe/Berlin", "2026-03-29T12:00:00Z"),
              (DaySpan{at("2026-03-29T00:00:00+01:00"), at("2026-03-30T00:00:00+02:00")}));
    EXPECT_EQ(dayIn("Europe/Berlin", "2026-10-25T12:00:00Z"),
              (DaySpan{at("2026-10-25T00:00:00+02:00"), at("2026-10-26T00:00:00+01:00")}));
    EXPECT_EQ(dayIn("Australia/Lord_Howe", "2026-10-04T12:00:00+11:00"),
              (DaySpan{at("2026-10-04T00:00:00+10:30"), at("2026-10-05T00:00:00+11:00")}));
}

TEST(LocalCalendar, ADayBeginsLaterWhereItHasNoMidnight) {
    EXPECT_EQ(dayIn("Asia/Beirut", "2026-03-29T12:00:00+03:00").start, at("2026-03-29T01:00:00+03:00"));
    EXPECT_EQ(dayIn("Asia/Beirut", "2026-03-28T12:00:00+02:00").end, at("2026-03-29T01:00:00+03:00"));
}

TEST(LocalCalendar, ADayWithTwoMidnightsBeginsAtTheFirst) {
    EXPECT_EQ(dayIn("Atlantic/Azores", "2026-10-25T12:00:00Z"),
              (DaySpan{at("2026-10-25T00:00:00Z"), at("2026-10-26T00:00:00-01:00")}));
    EXPECT_EQ(dayIn("Atlantic/Azores", "2026-10-24T12:00:00Z").end, at("2026-10-25T00:00:00Z"));
    EXPECT_EQ(dayIn("America/Havana", "2026-11-01T12:00:00Z").start, at("2026-11-01T00:00:00-04:00"));
    // Half an hour, between both.
    EXPECT_EQ(dayIn("Atlantic/Azores", "2026-10-25T00:30:00Z").start, at("2026-10-25T00:00:00Z"));
}

TEST(LocalCalendar, EveryMomentOfAYearLiesInItsDayWhereverItIs) {
    for (const char* zone : {"Atlantic/Azores", "America/Havana", "Asia/Beirut", "Australia/Lord_Howe",
                             "America/Santiago", "Africa/Cairo", "America/Nuuk", "Asia/Gaza"}) {
        const LocalCalendar calendar{QTimeZone(zone)};
        Timestamp end = calendar.dayOf(at("2026-01-01T12:00:00Z")).start;
        for (int day = 0; day < 366; ++day) {
            const DaySpan span = calendar.dayOf(end);
            ASSERT_EQ(span.start, end) << zone << " " << day << ": days follow each other";
            ASSERT_GE(span.end - span.start, 22 * 3600) << zone << " " << day;
            ASSERT_EQ(calendar.dayOf(span.end - 0.001), span) << zone << " " << day;
            end = span.end;
        }
    }
}

TEST(LocalCalendar, ItsEndsBelongToOneDayEach) {
    const DaySpan day = dayIn("Europe/Berlin", "2026-03-29T12:00:00Z");
    EXPECT_TRUE(day.contains(day.start));
    EXPECT_FALSE(day.contains(day.end));
    EXPECT_EQ(LocalCalendar(QTimeZone("Europe/Berlin")).dayOf(day.end).start, day.end);
    EXPECT_EQ(LocalCalendar(QTimeZone("Europe/Berlin")).dayOf(day.end - 0.0004).start, day.start);
}

TEST(LocalCalendar, AnyMomentHasADay) {
    for (const Timestamp time : {-1e300, -1e12, 0.0, 1e12, 1e300}) {
        const DaySpan day = LocalCalendar(QTimeZone("Europe/Berlin")).dayOf(time);
        EXPECT_LT(day.start, day.end) << time;
    }
}

TEST(LocalCalendar, WithoutAZoneItIsTheMachines) {
    const Timestamp now = at("2026-11-21T12:00:00Z");
    const DaySpan day = LocalCalendar().dayOf(now);
    EXPECT_TRUE(day.contains(now));
    EXPECT_EQ(day, LocalCalendar(QTimeZone::systemTimeZone()).dayOf(now));
}

} // namespace
} // namespace veslora
