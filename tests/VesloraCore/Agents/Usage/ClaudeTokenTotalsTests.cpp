// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

TEST(ClaudeTokenTotals, TotalIsTheSumOfTheFour) {
    EXPECT_EQ((ClaudeTokenTotals{1, 20, 300, 4000}).total(), 4321);
    EXPECT_EQ(ClaudeTokenTotals::zero.total(), 0);
}

TEST(ClaudeTokenTotals, TotalRestsAtTheEndsOf64Bits) {
    EXPECT_EQ((ClaudeTokenTotals{largest, 1, 0, 0}).total(), largest);
    EXPECT_EQ((ClaudeTokenTotals{smallest, -1, 0, 0}).total(), smallest);
}

TEST(TokenSum, AddsAndTakesAway) {
    TokenSum sum;
    sum.add({1, 2, 3, 4});
    sum.add({10, 20, 30, 40});
    sum.subtract({1, 2, 3, 4});
    EXPECT_EQ(sum.totals(), (ClaudeTokenTotals{10, 20, 30, 40}));
}

TEST(TokenSum, ComesBackFromBeyond64Bits) {
    TokenSum sum;
    sum.add({largest, smallest, 0, 0});
    sum.add({largest, smallest, 0, 0});
    EXPECT_EQ(sum.totals(), (ClaudeTokenTotals{largest, smallest, 0, 0}));
    sum.subtract({largest, smallest, 0, 0});
    sum.subtract({largest, smallest, 0, 0});
    EXPECT_EQ(sum.totals(), ClaudeTokenTotals::zero);
}

} // namespace
} // namespace veslora
