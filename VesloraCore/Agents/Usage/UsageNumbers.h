// SPDX-License-Identifier: MIT
// Reads the figures that agents write about their use of tokens. They are another program's: one of the wrong
// type, or too large for what it is read into, counts as absent. Pure functions, any thread.
#pragma once

#include "VesloraCore/Text/Json.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace veslora::UsageNumbers {

/// The number at a key. Booleans are none.
[[nodiscard]] std::optional<double> numberAt(const Json& object, std::string_view key);

/// The same without its fraction; absent beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> integerAt(const Json& object, std::string_view key);

/// The value if it lies within 0 and 100; a share outside is no share, and is never pulled to the nearer end.
[[nodiscard]] std::optional<double> percent(std::optional<double> value);

/// The percentage at a key.
[[nodiscard]] std::optional<double> percentAt(const Json& object, std::string_view key);

} // namespace veslora::UsageNumbers
