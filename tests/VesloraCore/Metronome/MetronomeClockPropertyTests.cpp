// SPDX-License-Identifier: MIT
// What holds for the metronome's clock whatever changes it went through.
#include "VesloraCore/Metronome/MetronomeClock.h"
#include "VesloraCore/Metronome/MetronomeTempo.h"
#include "VesloraCore/Metronome/TimeSignature.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace veslora {
namespace {

/// Beats `first` to `last` are found at their samples, end before the next one's, and follow each other.
void expectWhole(const MetronomeClock& clock, std::int64_t first, std::int64_t last) {
    std::int64_t before = first == 0 ? clock.beatTime(0) - 1 : clock.beatTime(first - 1);
    for (std::int64_t beat = first; beat <= last; ++beat) {
        const std::int64_t time = clock.beatTime(beat);
        ASSERT_GT(time, before) << beat;
        const auto here = clock.beat(time);
        ASSERT_TRUE(here && here->number == beat) << beat;
        const auto justBefore = clock.beat(time - 1);
        if (beat == 0) {
            ASSERT_EQ(justBefore, std::nullopt);
        } else {
            ASSERT_TRUE(justBefore && justBefore->number == beat - 1) << beat;
        }
        before = time;
    }
}

class RandomChanges : public ::testing::Test {
  protected:
    int number(int lower, int upper) { return std::uniform_int_distribution(lower, upper)(m_random); }

    MetronomeClock anyClock() {
        constexpr double rates[] = {44100, 48000, 96000, 44099.7};
        return {number(30, 300), anyBeats(), number(0, 100'000), rates[number(0, 3)]};
    }
    int anyBeats() { return TimeSignature::all[static_cast<std::size_t>(number(0, 5))].beats; }

  private:
    std::mt19937 m_random{20270115};
};

TEST_F(RandomChanges, EveryBeatIsFoundWhereItFalls) {
    for (int round = 0; round < 200; ++round) {
        MetronomeClock clock = anyClock();
        for (int change = 0; change < 30; ++change) {
            const int beat = number(0, 60);
            clock = number(0, 1) == 0 ? clock.withTempo(number(20, 320), beat)
                                      : clock.withBeatsPerBar(anyBeats(), beat);
        }
        ASSERT_TRUE(std::ranges::is_sorted(clock.segments, {}, &MetronomeClock::Segment::fromBeat));
        for (const MetronomeClock::Segment& segment : clock.segments) {
            ASSERT_EQ(clock.beatTime(segment.fromBeat), segment.startSample);
        }
        ASSERT_NO_FATAL_FAILURE(expectWhole(clock, 0, 70)) << round;
    }
}

TEST_F(RandomChanges, NoBeatThatIsQueuedEverMoves) {
    for (int round = 0; round < 50; ++round) {
        MetronomeClock clock = anyClock();
        std::vector<std::int64_t> times;
        std::vector<int> places;
        for (int change = 0; change < 60; ++change) {
            for (int queued = number(0, 4); queued > 0; --queued) {
                times.push_back(clock.beatTime(static_cast<std::int64_t>(times.size())));
                places.push_back(clock.beat(times.back())->inBar);
            }
            const auto next = static_cast<std::int64_t>(times.size());
            // Where a running metronome changes: the tempo after the last queued beat, the signature from the
            // next one on.
            clock = number(0, 1) == 0 ? clock.withTempo(number(30, 300), std::max<std::int64_t>(next - 1, 0))
                                      : clock.withBeatsPerBar(anyBeats(), next);
            for (std::int64_t beat = 0; beat < next; ++beat) {
                const auto index = static_cast<std::size_t>(beat);
                ASSERT_EQ(clock.beatTime(beat), times[index]);
                ASSERT_EQ(clock.beat(times[index]), (MetronomeClock::Beat{beat, places[index]}));
            }
        }
    }
}

TEST(MetronomeClockProperties, AMillionBeatsDoNotDrift) {
    // Whole numbers know where each beat falls: 48000 * 60 / bpm samples apart, rounded once.
    std::int64_t wrong = 0;
    for (const int bpm : {70, 137, 299}) {
        const MetronomeClock clock(bpm, 4, 4800, 48000);
        for (std::int64_t beat = 0; beat < 350'000; ++beat) {
            const std::int64_t exact =
                4800 + (2 * std::int64_t{2'880'000} * beat + bpm) / (std::int64_t{2} * bpm);
            wrong += clock.beatTime(beat) == exact ? 0 : 1;
        }
    }
    EXPECT_EQ(wrong, 0);
}

TEST(MetronomeClockProperties, EveryTempoIsExactAfterAMillionBeats) {
    for (int bpm = MetronomeTempo::range.lower; bpm <= MetronomeTempo::range.upper; ++bpm) {
        const MetronomeClock clock(bpm, 7, 0, 48000);
        for (std::int64_t beat = 1'000'000; beat < 1'000'050; ++beat) {
            ASSERT_EQ(clock.beatTime(beat),
                      (2 * std::int64_t{2'880'000} * beat + bpm) / (std::int64_t{2} * bpm))
                << bpm;
        }
        ASSERT_NO_FATAL_FAILURE(expectWhole(clock, 1'000'000, 1'000'050)) << bpm;
    }
}

TEST(MetronomeClockProperties, AMillionBeatsWithAChangeAtEveryThousandthStayInOrder) {
    MetronomeClock clock(120, 4, 4800, 48000);
    std::int64_t exact = 4800;
    std::int64_t wrong = 0;
    for (std::int64_t from = 0; from < 1'000'000; from += 1000) {
        const int bpm = 30 + static_cast<int>(from / 1000 * 7 % 271);
        clock = clock.withTempo(bpm, from);
        for (const std::int64_t beat : {from, from + 1, from + 499, from + 999}) {
            const std::int64_t time =
                exact + (2 * std::int64_t{2'880'000} * (beat - from) + bpm) / (std::int64_t{2} * bpm);
            wrong += clock.beatTime(beat) == time && clock.beat(time)->number == beat ? 0 : 1;
        }
        exact += (2 * std::int64_t{2'880'000} * 1000 + bpm) / (std::int64_t{2} * bpm);
    }
    EXPECT_EQ(clock.segments.size(), 1000U);
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace veslora
