// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/MetronomeClock.h"

#include "VesloraCore/Metronome/MetronomeTempo.h"

#include <algorithm>
#include <cmath>

namespace veslora {
namespace {

using Segment = MetronomeClock::Segment;

/// The last segment whose `start` is not above `value`; the first one below all of them. Searched from the
/// end, where what plays now is.
const Segment& governing(const std::vector<Segment>& segments, std::int64_t Segment::*start,
                         std::int64_t value) {
    const auto found = std::find_if(segments.rbegin(), segments.rend(),
                                    [&](const Segment& segment) { return segment.*start <= value; });
    return found == segments.rend() ? segments.front() : *found;
}

double spacing(int bpm, double sampleRate) {
    return sampleRate * 60 / MetronomeTempo::clamped(bpm);
}

std::int64_t after(double samplesPerBeat, std::int64_t beats) {
    return std::llround(samplesPerBeat * static_cast<double>(beats));
}

/// A segment that begins with that beat, and goes on as things were there.
Segment segmentFrom(const MetronomeClock& clock, std::int64_t beat) {
    Segment segment = governing(clock.segments, &Segment::fromBeat, beat);
    segment.startSample = clock.beatTime(beat);
    segment.fromBeat = beat;
    return segment;
}

/// With `changed` in place of a segment that began with the same beat, and `adapt` done to all later ones.
template <class Adapt>
MetronomeClock replacing(MetronomeClock clock, const Segment& changed, Adapt adapt) {
    std::erase_if(clock.segments,
                  [&](const Segment& segment) { return segment.fromBeat == changed.fromBeat; });
    const auto later = std::ranges::find_if(
        clock.segments, [&](const Segment& segment) { return segment.fromBeat > changed.fromBeat; });
    std::for_each(later, clock.segments.end(), adapt);
    clock.segments.insert(later, changed);
    return clock;
}

} // namespace

MetronomeClock::MetronomeClock(int bpm, int beatsPerBar, std::int64_t startSample, double rate)
    : segments{{.startSample = startSample,
                .samplesPerBeat = spacing(bpm, rate),
                .beatsPerBar = beatsPerBar}},
      sampleRate(rate) {}

std::int64_t MetronomeClock::beatTime(std::int64_t beat) const {
    const Segment& segment = governing(segments, &Segment::fromBeat, beat);
    return segment.startSample + after(segment.samplesPerBeat, beat - segment.fromBeat);
}

std::optional<MetronomeClock::Beat> MetronomeClock::beat(std::int64_t atSample) const {
    if (atSample < segments.front().startSample) {
        return std::nullopt;
    }
    const Segment& around = governing(segments, &Segment::startSample, atSample);
    const double beats = static_cast<double>(atSample - around.startSample) / around.samplesPerBeat;
    std::int64_t number = around.fromBeat + static_cast<std::int64_t>(std::floor(beats));
    // A beat falls on a whole sample, up to half of one beside where the quotient has it.
    if (atSample < beatTime(number)) {
        --number;
    }
    if (atSample >= beatTime(number + 1)) {
        ++number;
    }
    const Segment& bars = governing(segments, &Segment::fromBeat, number);
    const std::int64_t remainder = (number - bars.barStartBeat) % bars.beatsPerBar;
    return Beat{number, static_cast<int>(remainder < 0 ? remainder + bars.beatsPerBar : remainder)};
}

MetronomeClock MetronomeClock::withTempo(int bpm, std::int64_t fromBeat) const {
    Segment changed = segmentFrom(*this, fromBeat);
    changed.samplesPerBeat = spacing(bpm, sampleRate);
    return replacing(*this, changed, [&changed](Segment& later) {
        later.samplesPerBeat = changed.samplesPerBeat;
        later.startSample =
            changed.startSample + after(changed.samplesPerBeat, later.fromBeat - changed.fromBeat);
    });
}

MetronomeClock MetronomeClock::withBeatsPerBar(int beatsPerBar, std::int64_t fromBeat) const {
    Segment changed = segmentFrom(*this, fromBeat);
    changed.beatsPerBar = beatsPerBar;
    changed.barStartBeat = fromBeat;
    return replacing(*this, changed, [&changed](Segment& later) {
        later.beatsPerBar = changed.beatsPerBar;
        later.barStartBeat = changed.barStartBeat;
    });
}

} // namespace veslora
