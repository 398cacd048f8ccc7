// SPDX-License-Identifier: MIT
// The one form of a moment: floating-point seconds since 1970-01-01 00:00 UTC.
#pragma once

#include <limits>

namespace veslora {

/// Seconds since 1970, with a fraction. A length of time is a plain `double` of seconds.
using Timestamp = double;

/// Earlier than every real moment; what an absent stamp counts as where stamps are compared.
inline constexpr Timestamp distantPast = -std::numeric_limits<double>::infinity();

} // namespace veslora
