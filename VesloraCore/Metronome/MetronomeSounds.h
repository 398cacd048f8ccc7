// SPDX-License-Identifier: MIT
// The metronome's sounds, each made by formula, once for a usual beat and once for the first of a bar.
#pragma once

#include "VesloraCore/Metronome/MetronomeSound.h"

#include <optional>
#include <vector>

namespace veslora::MetronomeSounds {

inline constexpr double sampleRate = 48000; ///< hertz

/// No sample is further from 0 than this.
inline constexpr float peak = 0.8F;

/// One channel of the whole sound, 15 to 60 ms of it, the same on every call. It starts and ends at 0. Absent
/// for `silent`.
[[nodiscard]] std::optional<std::vector<float>> samples(MetronomeSound sound, bool accent);

} // namespace veslora::MetronomeSounds
