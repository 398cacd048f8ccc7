// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/MessageCounts.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>

namespace veslora {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

MessageCounts countsOf(int messages, std::int64_t output) {
    MessageCounts counts;
    for (int i = 0; i < messages; ++i) {
        counts.count("m" + std::to_string(i), {.output = output});
    }
    return counts;
}

TEST(MessageCounts, NothingIsCountedAtFirst) {
    const MessageCounts counts;
    EXPECT_EQ(counts.totals(), ClaudeTokenTotals::zero);
    EXPECT_EQ(counts.size(), 0U);
}

TEST(MessageCounts, ALaterCountTakesThePlaceOfTheEarlier) {
    MessageCounts counts;
    counts.count("a", {1, 20, 300, 4000});
    counts.count("b", {5, 6, 7, 8});
    counts.count("a", {1, 2, 3, 4});
    EXPECT_EQ(counts.totals(), (ClaudeTokenTotals{6, 8, 10, 12}));
    EXPECT_EQ(counts.size(), 2U);
}

TEST(MessageCounts, TheEmptyNameAndZeroBytesAreNamesLikeOthers) {
    MessageCounts counts;
    counts.count("", {.output = 1});
    counts.count(std::string_view("\0", 1), {.output = 2});
    counts.count(std::string_view("\0\0", 2), {.output = 4});
    counts.count("", {.output = 8});
    EXPECT_EQ(counts.totals().output, 14);
}

TEST(MessageCounts, KeepsAGreatManyApart) {
    constexpr int many = 100'000;
    MessageCounts counts = countsOf(many, 1);
    EXPECT_EQ(counts.size(), std::size_t{many});
    EXPECT_EQ(counts.totals().output, many);
    for (int i = 0; i < many; ++i) {
        counts.count("m" + std::to_string(i), {.output = i});
    }
    EXPECT_EQ(counts.size(), std::size_t{many});
    EXPECT_EQ(counts.totals().output, std::int64_t{many} * (many - 1) / 2);
}

TEST(MessageCounts, MergesAGreatMany) {
    MessageCounts counts = countsOf(40'000, 1);
    MessageCounts later = countsOf(70'000, 3);
    MessageCounts copy = later;
    EXPECT_TRUE(counts.merge(std::move(later)));
    EXPECT_EQ(counts.totals().output, 210'000);
    copy.count("one more", {.output = 1});
    EXPECT_TRUE(counts.merge(std::move(copy)));
    EXPECT_EQ(counts.totals().output, 210'001);
    EXPECT_EQ(counts.size(), 70'001U);
}

TEST(MessageCounts, CountsOfAnySizeComeBackAsTheyWere) {
    constexpr std::int64_t edge = std::int64_t{1} << 32;
    for (const std::int64_t count : {edge - 2, edge - 1, edge, std::int64_t{-1}, largest, smallest}) {
        for (const ClaudeTokenTotals& totals :
             {ClaudeTokenTotals{count, 1, 2, 3}, ClaudeTokenTotals{1, count, 2, 3},
              ClaudeTokenTotals{1, 2, count, 3}, ClaudeTokenTotals{1, 2, 3, count}}) {
            MessageCounts counts;
            counts.count("a", totals);
            EXPECT_EQ(counts.totals(), totals);
            counts.count("a", {9, 8, 7, 6});
            EXPECT_EQ(counts.totals(), (ClaudeTokenTotals{9, 8, 7, 6})) << count;
        }
    }
}

TEST(MessageCounts, LargeCountsKeepApartAndMayChange) {
    MessageCounts counts;
    counts.count("a", {.output = largest});
    counts.count("b", {.output = largest - 5});
    counts.count("c", {.output = 7});
    counts.count("a", {.output = 1});
    EXPECT_EQ(counts.totals().output, largest);
    counts.count("b", {.output = largest - 6});
    counts.count("c", {.output = 0});
    EXPECT_EQ(counts.totals().output, largest - 5);
    counts.count("a", {.output = largest});
    counts.count("b", {.output = 3});
    counts.count("a", {.output = 2});
    EXPECT_EQ(counts.totals().output, 5);
}

TEST(MessageCounts, MergingCountsTheLaterOnesOver) {
    MessageCounts counts = countsOf(300, 10);
    counts.count("large", {.output = largest});
    MessageCounts later = counts.emptied();
    later.count("m7", {.output = 2});
    later.count("new", {.output = 5});
    later.count("large", {.output = std::int64_t{1} << 40});
    EXPECT_TRUE(counts.merge(std::move(later)));
    EXPECT_EQ(counts.totals().output, 299 * 10 + 2 + 5 + (std::int64_t{1} << 40));
    EXPECT_EQ(counts.size(), 302U);
}

TEST(MessageCounts, WhatWasMergedIsEmptyAndCountsOn) {
    MessageCounts counts;
    MessageCounts later = countsOf(300, 10);
    EXPECT_TRUE(counts.merge(std::move(later)));
    // NOLINTNEXTLINE(bugprone-use-after-move): what is left of it is promised
    EXPECT_EQ(later.size(), 0U);
    EXPECT_EQ(later.totals(), ClaudeTokenTotals::zero);
    later.count("m7", {.output = 1});
    EXPECT_EQ(later.totals().output, 1);
    EXPECT_EQ(counts.totals().output, 3000);
}

TEST(MessageCounts, AnotherSecretIsNotMerged) {
    MessageCounts counts(SipHash::Key{1, 2});
    MessageCounts later(SipHash::Key{1, 3});
    counts.count("a", {.output = 1});
    later.count("b", {.output = 2});
    EXPECT_FALSE(counts.merge(std::move(later)));
    EXPECT_EQ(counts.totals().output, 1);
    // NOLINTNEXTLINE(bugprone-use-after-move): nothing of it was taken
    EXPECT_EQ(later.totals().output, 2);
    EXPECT_FALSE(counts.emptied().merge(std::move(later)));
    EXPECT_TRUE(counts.merge(counts.emptied()));
}

TEST(MessageCounts, CopiesCountOnTheirOwn) {
    MessageCounts counts = countsOf(100, 1);
    counts.count("large", {.input = largest});
    MessageCounts copy = counts;
    copy.count("m5", {.output = 50});
    copy.count("large", {.input = 3});
    EXPECT_EQ(counts.totals(), (ClaudeTokenTotals{largest, 100, 0, 0}));
    EXPECT_EQ(copy.totals(), (ClaudeTokenTotals{3, 149, 0, 0}));
}

} // namespace
} // namespace veslora
