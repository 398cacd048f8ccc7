// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudeStatusText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;

namespace {

constexpr Timestamp now = 1'760'000'400;

std::string working(double seconds) {
    return ClaudeStatusText::label(ClaudeStatus::Working{now - seconds}, now);
}

} // namespace

TEST(ClaudeStatusText, NamesEveryStatusButWork) {
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::NeedsApproval{"Run it?", now}, now), "APPROVE");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Finished{now}, now), "DONE");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Idle{}, now), "IDLE");
}

TEST(ClaudeStatusText, TellsHowLongWorkHasBeenGoingOn) {
    EXPECT_EQ(working(0), "<1M");
    EXPECT_EQ(working(59), "<1M");
    EXPECT_EQ(working(60), "1M");
    EXPECT_EQ(working(3599), "59M");
    EXPECT_EQ(working(3600), "1H00");
    EXPECT_EQ(working(3900), "1H05");
    EXPECT_EQ(working(36000 + 59 * 60), "10H59");
}

TEST(ClaudeStatusText, WorkThatBeginsInTheFutureHasOnlyJustBegun) {
    EXPECT_EQ(working(-500), "<1M");
}

TEST(ClaudeStatusText, SpansBeyondReasonDoNoHarm) {
    EXPECT_EQ(working(std::numeric_limits<double>::infinity()), "100000H00");
    EXPECT_EQ(working(std::numeric_limits<double>::quiet_NaN()), "<1M");
}

TEST(ClaudeStatusText, OnlyWorkBlinks) {
    for (const double date : {now, now + 0.5, now + 0.9}) {
        EXPECT_TRUE(ClaudeStatusText::isLit(ClaudeStatus::NeedsApproval{}, date));
        EXPECT_TRUE(ClaudeStatusText::isLit(ClaudeStatus::Finished{}, date));
        EXPECT_FALSE(ClaudeStatusText::isLit(ClaudeStatus::Idle{}, date));
    }
    EXPECT_TRUE(ClaudeStatusText::isLit(ClaudeStatus::Working{now}, now + 0.4));
    EXPECT_FALSE(ClaudeStatusText::isLit(ClaudeStatus::Working{now}, now + 0.5));
    EXPECT_TRUE(ClaudeStatusText::isLit(ClaudeStatus::Working{now}, now + 1));
}
