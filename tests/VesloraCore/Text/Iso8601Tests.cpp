// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Iso8601.h"

#include <gtest/gtest.h>

#include <string>

using namespace veslora;

TEST(Iso8601, ReadsUtcWithAndWithoutFraction) {
    EXPECT_EQ(Iso8601::parse("1970-01-01T00:00:00Z"), 0.0);
    EXPECT_EQ(Iso8601::parse("2023-11-14T22:13:20Z"), 1700000000.0);
    EXPECT_EQ(Iso8601::parse("2023-11-14T22:13:20.000Z"), 1700000000.0);
    EXPECT_NEAR(*Iso8601::parse("2023-11-14T22:13:20.125Z"), 1700000000.125, 1e-6);
    EXPECT_NEAR(*Iso8601::parse("2023-11-14T22:13:20.123456789Z"), 1700000000.123456789, 1e-6);
    EXPECT_EQ(Iso8601::parse("1969-12-31T23:59:59Z"), -1.0);
}

TEST(Iso8601, RefusesAFractionWhereNoneIsWanted) {
    using Iso8601::Fraction;
    EXPECT_EQ(Iso8601::parse("2023-11-14T22:13:20Z", Fraction::refused), 1700000000.0);
    EXPECT_EQ(Iso8601::parse("2023-11-14T23:13:20+01:00", Fraction::refused), 1700000000.0);
    EXPECT_FALSE(Iso8601::parse("2023-11-14T22:13:20.5Z", Fraction::refused));
    EXPECT_FALSE(Iso8601::parse("2023-11-14T23:13:20.250+01:00", Fraction::refused));
    EXPECT_FALSE(Iso8601::parse("2023-11-14T22:13:20.Z", Fraction::refused));
}

TEST(Iso8601, ReadsOffsets) {
    EXPECT_EQ(Iso8601::parse("2023-11-14T23:13:20+01:00"), 1700000000.0);
    EXPECT_EQ(Iso8601::parse("2023-11-14T16:43:20-05:30"), 1700000000.0);
    EXPECT_EQ(Iso8601::parse("2023-11-14T22:13:20.000+00:00"), 1700000000.0);
}

TEST(Iso8601, KnowsTheCalendar) {
    EXPECT_EQ(Iso8601::parse("2024-02-29T00:00:00Z"), 1709164800.0);
    EXPECT_FALSE(Iso8601::parse("2023-02-29T00:00:00Z"));
    EXPECT_FALSE(Iso8601::parse("1900-02-29T00:00:00Z"));
    EXPECT_TRUE(Iso8601::parse("2000-02-29T00:00:00Z"));
    EXPECT_FALSE(Iso8601::parse("2023-13-01T00:00:00Z"));
    EXPECT_FALSE(Iso8601::parse("2023-00-01T00:00:00Z"));
    EXPECT_FALSE(Iso8601::parse("2023-04-31T00:00:00Z"));
    EXPECT_FALSE(Iso8601::parse("2023-04-00T00:00:00Z"));
}

TEST(Iso8601, RefusesEverythingElse) {
    for (const char* text : {"",
                             "now",
                             "2023-11-14",
                             "2023-11-14T22:13:20",
                             "2023-11-14 22:13:20Z",
                             "2023-11-14t22:13:20Z",
                             "2023-11-14T22:13Z",
                             "2023-11-14T24:00:00Z",
                             "2023-11-14T22:60:00Z",
                             "2023-11-14T22:13:60Z",
                             "2023-11-14T22:13:20.Z",
                             "2023-11-14T22:13:20.5",
                             "2023-11-14T22:13:20+0100",
                             "2023-11-14T22:13:20+25:00",
                             "2023-11-14T22:13:20ZZ",
                             "2023-11-14T22:13:20Z ",
                             " 2023-11-14T22:13:20Z",
                             "20231114T221320Z",
                             "23-11-14T22:13:20Z",
                             "2023-1-14T22:13:20Z",
                             "-023-11-14T22:13:20Z",
                             "+2023-11-14T22:13:20Z",
                             "1700000000000",
                             "2023-11-14T22:13:20,5Z"}) {
        EXPECT_FALSE(Iso8601::parse(text)) << text;
    }
}

TEST(Iso8601, NothingComesOfATruncatedDate) {
    const std::string whole = "2023-11-14T22:13:20.250+01:00";
    for (std::size_t kept = 0; kept < whole.size(); ++kept) {
        EXPECT_FALSE(Iso8601::parse(whole.substr(0, kept))) << kept;
    }
}

TEST(Iso8601, SurvivesAFractionOfAnyLength) {
    const auto time = Iso8601::parse("2023-11-14T22:13:20." + std::string(5000, '9') + "Z");
    ASSERT_TRUE(time);
    EXPECT_NEAR(*time, 1700000001.0, 1e-6);
}
