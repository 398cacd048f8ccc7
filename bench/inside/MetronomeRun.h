// SPDX-License-Identifier: MIT
// The program's metronome, from the model to the output, before a private sound server, and what was captured
// of it.
#pragma once

#include "bench/Recording.h"
#include "bench/inside/BeatRecord.h"
#include "bench/inside/HeardPosition.h"
#include "bench/inside/PrivateServer.h"

#include <cstdint>
#include <vector>

namespace veslora::bench {

enum class Condition {
    idle,
    load,    ///< every processor has more to do than it can
    blocked, ///< the main thread does nothing for 300 milliseconds, again and again
};

struct MetronomeRecord {
    BeatPlan plan;
    Recording recording;
    std::vector<Claim> claims;
    std::int64_t heardUntil = 0; ///< the last sample that was heard, by the metronome itself
    double startTime = 0;        ///< milliseconds for which the start held the main thread
    int underruns = 0;           ///< how often the server had nothing to play
};

/// Starts the metronome, changes its tempo three times and stops it after so many seconds. Throws when it
/// does not start.
[[nodiscard]] MetronomeRecord runMetronome(ServerKind kind, int bpm, double seconds, Condition condition);

} // namespace veslora::bench
