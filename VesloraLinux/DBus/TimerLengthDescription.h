// SPDX-License-Identifier: MIT
// How a length of time is told in a sentence.
#pragma once

#include <QString>

namespace veslora {

/// "25 min", "1 hr, 30 min" or "45 sec", in the user's language: hours, minutes and seconds without those
/// that are zero, rounded to whole seconds. "0 sec" for nothing, less than nothing, and what is no number; a
/// length beyond a million hours reads as that.
[[nodiscard]] QString timerLengthDescription(double seconds);

} // namespace veslora
