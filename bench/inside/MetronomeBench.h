// SPDX-License-Identifier: MIT
// Whether every beat of the running metronome is heard on its exact sample: on a sound server of its own,
// whose sink plays into nothing and is recorded.
#pragma once

namespace veslora::bench {

class Report;

/// Runs at three tempos, each of which changes on the way: on a machine that is idle, one whose processors
/// are busy, and with the main thread held up. Throws when nothing was recorded. A short one takes one tempo
/// for a few seconds.
void measureMetronome(Report& report, bool isShort);

} // namespace veslora::bench
