// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeUsageText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;
using ClaudeUsageText::tokens;

TEST(ClaudeUsageText, SmallCountsAreWrittenOut) {
    EXPECT_EQ(tokens(0), "0");
    EXPECT_EQ(tokens(999), "999");
    EXPECT_EQ(tokens(-1), "-1");
    EXPECT_EQ(tokens(-5'000'000), "-5000000");
    EXPECT_EQ(tokens(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(ClaudeUsageText, ThousandsAreCutOff) {
    EXPECT_EQ(tokens(1'000), "1K");
    EXPECT_EQ(tokens(1'999), "1K");
    EXPECT_EQ(tokens(200'000), "200K");
    EXPECT_EQ(tokens(999'999), "999K");
}

TEST(ClaudeUsageText, MillionsAreRoundedAndTrimmed) {
    EXPECT_EQ(tokens(1'000'000), "1M");
    EXPECT_EQ(tokens(1'234'567), "1.23M");
    EXPECT_EQ(tokens(1'500'000), "1.5M");
    EXPECT_EQ(tokens(4'820'000), "4.82M");
    EXPECT_EQ(tokens(9'999'999), "10M");
    EXPECT_EQ(tokens(10'000'000), "10M");
    EXPECT_EQ(tokens(12'340'000), "12.3M");
    EXPECT_EQ(tokens(100'000'000), "100M");
    EXPECT_EQ(tokens(std::numeric_limits<std::int64_t>::max()), "9223372036854.8M");
}
