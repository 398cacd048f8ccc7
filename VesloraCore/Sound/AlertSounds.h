// SPDX-License-Identifier: MIT
// The short sounds that call for attention, made by formula: no system that the program runs on brings them
// all.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace veslora {

enum class AlertSound {
    glass,     ///< a tap on a thin glass, whose overtones are no multiples of its pitch
    ping,      ///< one clear note
    hero,      ///< a short rising fanfare
    submarine, ///< a low note that sinks
};

namespace AlertSounds {

/// No sample is further from 0 than this, so that a sound alone is never near the limit of 1.
inline constexpr float peak = 0.8F;

/// The sound of a name such as "Glass"; absent for "None" and every unknown name. Case matters.
[[nodiscard]] std::optional<AlertSound> named(std::string_view name);

/// One channel of the whole sound, between half a second and 1.8 seconds of it, the same on every call. It
/// starts and ends at 0. Overtones that `sampleRate` (in hertz) cannot carry are left out. Nothing for a rate
/// outside 8000 to 384000.
[[nodiscard]] std::vector<float> samples(AlertSound sound, double sampleRate);

} // namespace AlertSounds

} // namespace veslora
