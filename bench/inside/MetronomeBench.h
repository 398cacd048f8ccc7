// SPDX-License-Identifier: MIT
// Whether every beat of the running metronome is heard on its exact sample, and whether it knows what is
// heard: on sound servers of its own, whose sinks play into nothing and are recorded.
#pragma once

#include <string>

namespace veslora::bench {

class Report;

/// Runs at three tempos, each of which changes on the way: on a machine that is idle, one whose processors
/// are busy, and with the main thread held up. Then another metronome runs for
/// comparison, on the display that $DISPLAY names. Throws when nothing was recorded. A short run takes one
/// tempo for a few seconds and leaves the other metronome out. `executables` is the folder of the harness.
void measureMetronome(Report& report, const std::string& executables, bool isShort);

} // namespace veslora::bench
