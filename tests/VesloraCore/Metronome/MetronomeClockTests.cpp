// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/MetronomeClock.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using Beat = MetronomeClock::Beat;

constexpr std::int64_t start = 4800;

MetronomeClock clockAt(int bpm, int beatsPerBar = 4) {
    return {bpm, beatsPerBar, start, 48000};
}

int inBar(const MetronomeClock& clock, std::int64_t beat) {
    return clock.beat(clock.beatTime(beat))->inBar;
}

TEST(MetronomeClock, BeginsWithBeat0) {
    const MetronomeClock clock = clockAt(120);
    ASSERT_EQ(clock.segments.size(), 1U);
    EXPECT_EQ(clock.segments[0], (MetronomeClock::Segment{0, start, 24000.0, 4, 0}));
    EXPECT_EQ(clock.beatTime(0), start);
    EXPECT_EQ(clock.beat(start), (Beat{0, 0}));
    EXPECT_EQ(clock.beat(start + 23999), (Beat{0, 0}));
    EXPECT_EQ(clock.beat(start + 24000), (Beat{1, 1}));
    EXPECT_EQ(clock.beat(start + std::int64_t{4} * 24000), (Beat{4, 0}));
}

TEST(MetronomeClock, HasNoBeatBeforeItsStart) {
    EXPECT_EQ(clockAt(120).beat(start - 1), std::nullopt);
    EXPECT_EQ(clockAt(120).beat(-1'000'000'000'000), std::nullopt);
}

TEST(MetronomeClock, HoldsItsTempo) {
    EXPECT_EQ(clockAt(7), clockAt(30));
    EXPECT_EQ(clockAt(1000), clockAt(300));
    EXPECT_EQ(clockAt(120).withTempo(1000, 8), clockAt(120).withTempo(300, 8));
}

TEST(MetronomeClock, AFractionOfASampleNeverAddsUp) {
    const MetronomeClock clock = clockAt(70);
    EXPECT_NE(clock.segments[0].samplesPerBeat, 41142);
    EXPECT_EQ(clock.beatTime(1), start + 41143);
    EXPECT_EQ(clock.beatTime(2), start + 82286);
    EXPECT_EQ(clock.beatTime(3), start + 123429);
    EXPECT_EQ(clock.beatTime(7), start + 288000) << "a tenth of a minute, to the sample";
    EXPECT_EQ(clock.beatTime(70'000), start + 2'880'000'000);
}

TEST(MetronomeClock, ABeatLastsUntilTheSampleBeforeTheNext) {
    const MetronomeClock clock = clockAt(70);
    for (std::int64_t beat = 0; beat < 10'000; ++beat) {
        ASSERT_EQ(clock.beat(clock.beatTime(beat))->number, beat);
        if (beat > 0) {
            ASSERT_EQ(clock.beat(clock.beatTime(beat) - 1)->number, beat - 1);
        }
    }
}

TEST(MetronomeClock, ATempoChangeMovesNoBeatThatCameBefore) {
    const MetronomeClock before = clockAt(120);
    const MetronomeClock after = before.withTempo(60, 8);
    for (std::int64_t beat = 0; beat <= 8; ++beat) {
        EXPECT_EQ(after.beatTime(beat), before.beatTime(beat)) << beat;
    }
    for (std::int64_t beat = 9; beat < 20; ++beat) {
        EXPECT_EQ(after.beatTime(beat), before.beatTime(8) + (beat - 8) * 48000) << beat;
    }
    EXPECT_EQ(inBar(after, 12), 0) << "bars go on";
}

TEST(MetronomeClock, TheLastOfTwoTempoChangesAtOneBeatCounts) {
    const MetronomeClock clock = clockAt(120).withTempo(60, 8).withTempo(240, 8);
    ASSERT_EQ(clock.segments.size(), 2U);
    EXPECT_EQ(clock.segments[1].fromBeat, 8);
    EXPECT_EQ(clock.beatTime(9), clock.beatTime(8) + 12000);
    EXPECT_EQ(clockAt(120).withTempo(60, 0), clockAt(60)) << "nothing is left of the first tempo";
}

TEST(MetronomeClock, ATempoChangeReachesEverySegmentAfterIt) {
    const MetronomeClock clock = clockAt(120).withBeatsPerBar(3, 10).withTempo(60, 9);
    ASSERT_EQ(clock.segments.size(), 3U);
    EXPECT_EQ(clock.beatTime(9), start + std::int64_t{9} * 24000);
    EXPECT_EQ(clock.beatTime(10), clock.beatTime(9) + 48000);
    EXPECT_EQ(clock.beatTime(12), clock.beatTime(9) + std::int64_t{3} * 48000);
    EXPECT_EQ(inBar(clock, 9), 1);
    EXPECT_EQ(inBar(clock, 10), 0);
}

TEST(MetronomeClock, ANewSignatureOpensABar) {
    const MetronomeClock before = clockAt(120);
    const MetronomeClock after = before.withBeatsPerBar(3, 10);
    for (std::int64_t beat = 0; beat < 10; ++beat) {
        EXPECT_EQ(inBar(after, beat), beat % 4) << beat;
    }
    for (const std::int64_t beat : {10, 13, 16}) {
        EXPECT_EQ(inBar(after, beat), 0) << beat;
        EXPECT_EQ(inBar(after, beat + 1), 1) << beat;
        EXPECT_EQ(inBar(after, beat + 2), 2) << beat;
    }
    for (std::int64_t beat = 0; beat < 30; ++beat) {
        EXPECT_EQ(after.beatTime(beat), before.beatTime(beat)) << beat;
    }
}

TEST(MetronomeClock, ASignatureReachesEverySegmentAfterIt) {
    const MetronomeClock clock = clockAt(120).withTempo(60, 12).withBeatsPerBar(5, 10);
    ASSERT_EQ(clock.segments.size(), 3U);
    EXPECT_EQ(inBar(clock, 12), 2);
    EXPECT_EQ(inBar(clock, 15), 0);
    EXPECT_EQ(clock.beatTime(13), clock.beatTime(12) + 48000) << "the later tempo stays";
    EXPECT_EQ(clock.beatTime(12), clock.beatTime(10) + 48000);
}

TEST(MetronomeClock, CountsBackwardsFromABarThatIsYetToCome) {
    MetronomeClock clock = clockAt(120);
    clock.segments[0].barStartBeat = 6;
    for (std::int64_t beat = 0; beat < 12; ++beat) {
        EXPECT_EQ(inBar(clock, beat), (beat + 2) % 4) << beat;
    }
}

} // namespace
} // namespace veslora
