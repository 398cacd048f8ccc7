// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AgentMarks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

using namespace veslora;

namespace {

/// A moment in 2025 at which both spinners are at their first frame.
constexpr Timestamp start = 1'760'000'400;

/// Where half a frame keeps the test clear of the edges between frames.
Timestamp middleOf(int frame, double period) {
    return start + (frame + 0.5) * period;
}

} // namespace

TEST(ClaudeMascot, IsFiveRowsOfSeventeenCells) {
    int filled = 0;
    for (const std::string_view row : ClaudeMascot::rows) {
        EXPECT_EQ(row.size(), 17U);
        EXPECT_TRUE(std::equal(row.begin(), row.end(), row.rbegin())) << "The picture is symmetric.";
        EXPECT_EQ(row.find_first_not_of("#."), std::string_view::npos);
        filled += static_cast<int>(std::ranges::count(row, '#'));
    }
    EXPECT_EQ(filled, 13 + 11 + 17 + 13 + 4);
}

TEST(ClaudeSpinner, GoesUpAndDownItsSixGlyphs) {
    const char* expected[] = {"·", "✢", "✳", "✶", "✻", "✽", "✽", "✻", "✶", "✳", "✢", "·"};
    for (int frame = 0; frame < 24; ++frame) {
        EXPECT_EQ(ClaudeSpinner::frame(middleOf(frame, 0.12)), expected[frame % 12]) << frame;
    }
}

TEST(CodexSpinner, GoesRoundItsTenGlyphs) {
    const char* expected[] = {"⠋", "⠙", "⠹", "⠸", "⠼", "⠴", "⠦", "⠧", "⠇", "⠏"};
    for (int frame = 0; frame < 20; ++frame) {
        EXPECT_EQ(CodexSpinner::frame(middleOf(frame, 0.1)), expected[frame % 10]) << frame;
    }
}

TEST(Spinners, KeepStillWithinAFrame) {
    EXPECT_EQ(ClaudeSpinner::frame(start + 0.125), ClaudeSpinner::frame(start + 0.235));
    EXPECT_EQ(CodexSpinner::frame(start + 0.105), CodexSpinner::frame(start + 0.195));
}

TEST(Spinners, DatesBeyondReasonStillGiveAGlyph) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double date : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(ClaudeSpinner::frame(date), "·");
        EXPECT_EQ(CodexSpinner::frame(date), "⠋");
    }
    EXPECT_EQ(CodexSpinner::frame(-0.05), "⠏") << "Before 1970 it goes round backwards.";
    EXPECT_FALSE(ClaudeSpinner::frame(std::numeric_limits<double>::max()).empty());
}

TEST(StatusBlink, TurnsEveryHalfSecond) {
    EXPECT_TRUE(StatusBlink::isLit(start));
    EXPECT_TRUE(StatusBlink::isLit(start + 0.49));
    EXPECT_FALSE(StatusBlink::isLit(start + 0.5));
    EXPECT_FALSE(StatusBlink::isLit(start + 0.99));
    EXPECT_TRUE(StatusBlink::isLit(start + 1));
    EXPECT_FALSE(StatusBlink::isLit(-0.25));
}
