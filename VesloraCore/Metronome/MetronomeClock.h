// SPDX-License-Identifier: MIT
// When each beat falls, counted in samples of an audio device: tempo and signature may change in the middle
// of a bar, and no beat before the change moves. A value that never changes; a change gives another one.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace veslora {

struct MetronomeClock {
    /// A run of beats that are equally far apart.
    struct Segment {
        std::int64_t fromBeat = 0;    ///< the first beat in it
        std::int64_t startSample = 0; ///< when that one falls
        double samplesPerBeat = 0;    ///< with its fraction
        int beatsPerBar = 0;
        std::int64_t barStartBeat = 0; ///< the first beat of some bar, in this segment or outside it

        bool operator==(const Segment&) const = default;
    };

    /// Beats count from 0 at the start and go on through every change.
    struct Beat {
        std::int64_t number = 0;
        int inBar = 0; ///< 0 for the first beat of a bar

        bool operator==(const Beat&) const = default;
    };

    std::vector<Segment> segments; ///< never empty, in the order of their beats
    double sampleRate = 0;         ///< hertz

    /// Beat 0 falls on `startSample` and opens a bar. `bpm` is held to `MetronomeTempo::range`; `beatsPerBar`
    /// is 1 or more; `rate` is in hertz.
    MetronomeClock(int bpm, int beatsPerBar, std::int64_t startSample, double rate);

    /// Counted from the start of its segment each time, so that roundings never add up.
    [[nodiscard]] std::int64_t beatTime(std::int64_t beat) const;

    /// The last beat that has begun at that sample; absent before beat 0.
    [[nodiscard]] std::optional<Beat> beat(std::int64_t atSample) const;

    /// Beats from `fromBeat` on follow each other at the new tempo. That beat and those before it stay.
    [[nodiscard]] MetronomeClock withTempo(int bpm, std::int64_t fromBeat) const;

    /// `fromBeat` becomes the first of a bar of so many beats, and all bars after it are as long. No beat
    /// moves, and those before it keep their places in their bars. `beatsPerBar` is 1 or more.
    [[nodiscard]] MetronomeClock withBeatsPerBar(int beatsPerBar, std::int64_t fromBeat) const;

    bool operator==(const MetronomeClock&) const = default;
};

} // namespace veslora
