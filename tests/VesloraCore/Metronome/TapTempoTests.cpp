// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/TapTempo.h"

#include <gtest/gtest.h>

#include <limits>

namespace veslora {
namespace {

constexpr Timestamp start = 1'800'000'000;

TEST(TapTempo, HalfASecondApartIs120FromTheSecondTapOn) {
    TapTempo tempo;
    EXPECT_EQ(tempo.tap(start), std::nullopt);
    for (int tap = 1; tap < 10; ++tap) {
        EXPECT_EQ(tempo.tap(start + 0.5 * tap), 120) << tap;
    }
}

TEST(TapTempo, IsTheMeanOfThreeIntervalsAtMost) {
    TapTempo tempo;
    tempo.tap(0);
    EXPECT_EQ(tempo.tap(1), 60);
    EXPECT_EQ(tempo.tap(1.5), 80);
    EXPECT_EQ(tempo.tap(2.25), 80);
    // The first interval no longer counts.
    EXPECT_EQ(tempo.tap(2.5), 120);
    EXPECT_EQ(tempo.taps, (std::vector<Timestamp>{1, 1.5, 2.25, 2.5}));
}

TEST(TapTempo, APauseOfMoreThanTwoSecondsBeginsANewRow) {
    TapTempo tempo;
    tempo.tap(start);
    tempo.tap(start + 1);
    EXPECT_EQ(tempo.tap(start + 3), 40) << "a gap of exactly two seconds belongs to the row";
    EXPECT_EQ(tempo.tap(start + 5.1), std::nullopt);
    EXPECT_EQ(tempo.taps.size(), 1U);
    EXPECT_EQ(tempo.tap(start + 5.6), 120);
}

TEST(TapTempo, TapsOfOneMomentAreNoTempo) {
    TapTempo tempo;
    tempo.tap(start);
    EXPECT_EQ(tempo.tap(start), std::nullopt);
    EXPECT_EQ(tempo.tap(start), std::nullopt);
    EXPECT_EQ(tempo.tap(start + 1.5), 120) << "three intervals in a second and a half";
}

TEST(TapTempo, AClockThatGoesBackIsNoTempo) {
    TapTempo tempo;
    tempo.tap(start);
    EXPECT_EQ(tempo.tap(start - 1), std::nullopt);
    EXPECT_EQ(tempo.tap(start - 3600), std::nullopt);
}

TEST(TapTempo, IsHeldToWhatTheMetronomeCan) {
    TapTempo fast;
    std::optional<int> tempo;
    for (int tap = 0; tap < 10; ++tap) {
        tempo = fast.tap(start + 0.1 * tap);
    }
    EXPECT_EQ(tempo, 300);

    TapTempo atOnce;
    atOnce.tap(0);
    EXPECT_EQ(atOnce.tap(std::numeric_limits<double>::denorm_min()), 300);

    TapTempo slow;
    slow.tap(start);
    EXPECT_EQ(slow.tap(start + 2), 30);
}

TEST(TapTempo, RoundsHalvesUp) {
    TapTempo tempo;
    tempo.tap(0);
    EXPECT_EQ(tempo.tap(0.96), 63) << "62.5";
    TapTempo other;
    other.tap(0);
    EXPECT_EQ(other.tap(0.97), 62) << "61.86";
}

} // namespace
} // namespace veslora
