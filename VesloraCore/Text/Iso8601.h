// SPDX-License-Identifier: MIT
// Dates as the agents write them into their files. Pure arithmetic on the Gregorian calendar: no locale, no
// time zone data, any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <optional>
#include <string_view>

namespace veslora::Iso8601 {

/// Reads an internet date-time (RFC 3339), such as 2023-11-14T22:13:20Z or 2023-11-14T23:13:20.250+01:00.
/// Nothing for any other text and for a day or an hour that does not exist.
[[nodiscard]] std::optional<Timestamp> parse(std::string_view text);

} // namespace veslora::Iso8601
