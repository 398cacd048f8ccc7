// SPDX-License-Identifier: MIT
// Another metronome, GTick, measured as ours is: before a private PulseAudio, by the same recorder.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veslora::bench {

/// Where GTick beats, in samples of a recording of so many seconds, without its first beat. `program` is its
/// path; it needs the display that $DISPLAY names. Throws when it can't be started or is not heard.
[[nodiscard]] std::vector<std::int64_t> peerOnsets(const std::string& program, int bpm, double seconds);

/// How a metronome keeps its tempo, counted from its first onset.
struct TempoError {
    double worst = 0; ///< samples by which an onset is beside its beat, as far as any is
    double drift = 0; ///< samples by which a beat is longer than it should be, over all of them
    int heard = 0;
    int missing = 0; ///< beats between two onsets that have none
};

[[nodiscard]] TempoError tempoError(const std::vector<std::int64_t>& onsets, int bpm);

} // namespace veslora::bench
