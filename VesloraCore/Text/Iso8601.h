// SPDX-License-Identifier: MIT
// Dates as other programs write them. Pure arithmetic on the Gregorian calendar: no locale, no
// time zone data, any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <optional>
#include <string_view>

namespace veslora::Iso8601 {

enum class Fraction { allowed, refused };

/// Reads an internet date-time (RFC 3339), such as 2023-11-14T22:13:20Z or 2023-11-14T23:13:20.250+01:00.
/// Nothing for any other text, for a day or an hour that does not exist, and for a fraction where it is
/// refused.
[[nodiscard]] std::optional<Timestamp> parse(std::string_view text, Fraction fraction = Fraction::allowed);

} // namespace veslora::Iso8601
