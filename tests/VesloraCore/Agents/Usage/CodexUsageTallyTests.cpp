// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/CodexUsageTally.h"
#include "tests/support/FixedCalendar.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;

namespace {

constexpr double day = 86'400;
constexpr double noon = 10 * day + day / 2;

CodexUsageLine tokens(const std::string& key, std::int64_t output, Timestamp at = noon) {
    return {CodexUsageLine::Tokens{key, {1, output, 0, 0}, at}};
}

CodexUsageTally tallyAt(Timestamp time) {
    return CodexUsageTally(time, std::make_shared<test::FixedCalendar>());
}

} // namespace

TEST(CodexUsageTally, BeginsAtTheStartOfTheDay) {
    EXPECT_EQ(tallyAt(noon).day(), 10 * day);
    EXPECT_EQ(tallyAt(noon).totals(), ClaudeTokenTotals::zero);
    EXPECT_EQ(CodexUsageTally(noon, std::make_shared<test::FixedCalendar>(3'600)).day(), 10 * day + 3'600);
}

TEST(CodexUsageTally, AResponseCountsOnceAsItCameLast) {
    auto tally = tallyAt(noon);
    tally.add(tokens("a", 10));
    tally.add(tokens("b", 100));
    tally.add(tokens("a", 25));
    EXPECT_EQ(tally.totals(), (ClaudeTokenTotals{2, 125, 0, 0}));
    tally.add(tokens("a", 5));
    EXPECT_EQ(tally.totals(), (ClaudeTokenTotals{2, 105, 0, 0}));
    tally.add(tokens("", 1));
    EXPECT_EQ(tally.totals(), (ClaudeTokenTotals{3, 106, 0, 0}));
}

TEST(CodexUsageTally, OnlyTokensOfTheDayCount) {
    auto tally = tallyAt(noon);
    tally.add({CodexLimits{{{5, {}}}, {}, noon}});
    tally.add({CodexContext{5, 1'000, noon}});
    tally.add(tokens("yesterday", 1, 10 * day - 0.001));
    tally.add(tokens("tomorrow", 1, 11 * day));
    EXPECT_EQ(tally.totals(), ClaudeTokenTotals::zero);
    tally.add(tokens("first", 1, 10 * day));
    tally.add(tokens("last", 1, 11 * day - 0.001));
    EXPECT_EQ(tally.totals().output, 2);
}

TEST(CodexUsageTally, ALineOfAnotherDayLeavesTheResponseAsItWas) {
    auto tally = tallyAt(noon);
    tally.add(tokens("a", 10));
    tally.add(tokens("a", 99, noon + day));
    EXPECT_EQ(tally.totals().output, 10);
}

TEST(CodexUsageTally, RollsToAnotherDayOnly) {
    auto tally = tallyAt(noon);
    tally.add(tokens("a", 10));
    tally.roll(11 * day - 1);
    EXPECT_EQ(tally.totals().output, 10);
    tally.roll(11 * day);
    EXPECT_EQ(tally.day(), 11 * day);
    EXPECT_EQ(tally.totals(), ClaudeTokenTotals::zero);
    tally.add(tokens("b", 1, noon));
    EXPECT_EQ(tally.totals(), ClaudeTokenTotals::zero);
    // The response was forgotten: nothing is taken off for what it counted before.
    tally.add(tokens("a", 7, noon + day));
    EXPECT_EQ(tally.totals().output, 7);
    // A clock that was set back.
    tally.roll(noon);
    EXPECT_EQ(tally.day(), 10 * day);
    EXPECT_EQ(tally.totals(), ClaudeTokenTotals::zero);
}

TEST(CodexUsageTally, CopiesCountOnTheirOwn) {
    auto tally = tallyAt(noon);
    tally.add(tokens("a", 10));
    auto copy = tally;
    copy.add(tokens("a", 1));
    copy.add(tokens("b", 1));
    EXPECT_EQ(tally.totals().output, 10);
    EXPECT_EQ(copy.totals().output, 2);
}

TEST(CodexUsageTally, HugeCountsRestAtTheEndAndComeBack) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    auto tally = tallyAt(noon);
    tally.add(tokens("a", most));
    tally.add(tokens("b", most));
    EXPECT_EQ(tally.totals().output, most);
    tally.add(tokens("a", 0));
    tally.add(tokens("b", 3));
    EXPECT_EQ(tally.totals().output, 3);
    tally.add(tokens("c", std::numeric_limits<std::int64_t>::min()));
    tally.add(tokens("d", std::numeric_limits<std::int64_t>::min()));
    EXPECT_EQ(tally.totals().output, std::numeric_limits<std::int64_t>::min());
}
