// SPDX-License-Identifier: MIT
// How brightly a timer's digits shine: dim while it is paused, blinking towards its end.
#pragma once

#include "VesloraCore/Timer/Countdown.h"

namespace veslora {

/// Opacity of the digits. In the last ten seconds it changes four times a second with the wall clock itself,
/// so that all views blink in step.
[[nodiscard]] double flickerOpacity(const Countdown& countdown, Timestamp date);

} // namespace veslora
