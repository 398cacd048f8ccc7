// SPDX-License-Identifier: MIT
// How a length of time reads on a timer.
#pragma once

#include <string>

namespace veslora::TimerFormat {

/// "18:42", or "1:30:00" from an hour on. Rounded up to whole seconds, so that it reads "0:00" only at the
/// true end, which it also does for a negative value or one that is no number. A length beyond a million
/// hours reads as that.
[[nodiscard]] std::string remaining(double seconds);

} // namespace veslora::TimerFormat
