// SPDX-License-Identifier: MIT
// Makes text of bytes that should be UTF-8 and may not be. Pure functions, any thread.
#pragma once

#include <string>
#include <string_view>

namespace veslora::Utf8 {

[[nodiscard]] bool isValid(std::string_view bytes);

/// The text with U+FFFD in place of every byte that is no part of a code point.
[[nodiscard]] std::string repaired(std::string_view bytes);

} // namespace veslora::Utf8
