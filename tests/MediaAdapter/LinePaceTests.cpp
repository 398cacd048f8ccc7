// SPDX-License-Identifier: MIT
#include "MediaAdapter/LinePace.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using Awaited = LinePace::Awaited;

TEST(LinePaceTests, NothingIsDueWithoutAChange) {
    LinePace pace;
    EXPECT_EQ(pace.due(Awaited::nothing), std::nullopt);
    pace.change(1000);
    pace.written(1000);
    EXPECT_EQ(pace.due(Awaited::nothing), std::nullopt);
}

TEST(LinePaceTests, TheFirstChangeIsDueAtOnce) {
    LinePace pace;
    pace.change(1000);
    EXPECT_EQ(pace.due(Awaited::nothing), 1000);
}

TEST(LinePaceTests, AFloodGivesALineEveryFiftyMilliseconds) {
    LinePace pace;
    int lines = 0;
    for (LinePace::Milliseconds now = 1000; now < 2000; ++now) {
        pace.change(now);
        if (*pace.due(Awaited::nothing) <= now) {
            pace.written(now);
            ++lines;
        }
    }
    EXPECT_EQ(lines, 20);
}

TEST(LinePaceTests, WaitsAMomentForThePosition) {
    LinePace pace;
    pace.change(1000);
    EXPECT_EQ(pace.due(Awaited::position), 1010);
    pace.change(1008);
    EXPECT_EQ(pace.due(Awaited::position), 1010) << "the wait counts from the first change";
    EXPECT_EQ(pace.due(Awaited::nothing), 1000) << "the position has come";
}

TEST(LinePaceTests, WaitsLongerForTheNextTrack) {
    LinePace pace;
    pace.change(1000);
    EXPECT_EQ(pace.due(Awaited::track), 1100);
    pace.change(1090);
    EXPECT_EQ(pace.due(Awaited::track), 1100) << "the wait counts from the first change";
    EXPECT_EQ(pace.due(Awaited::nothing), 1000) << "the track has come";
}

TEST(LinePaceTests, BothWaitsPassTogether) {
    LinePace pace;
    pace.change(1000);
    pace.written(1000);
    pace.change(1020);
    EXPECT_EQ(pace.due(Awaited::position), 1050);
    pace.written(1050);
    pace.change(1095);
    EXPECT_EQ(pace.due(Awaited::position), 1105);
}

} // namespace
} // namespace veslora
