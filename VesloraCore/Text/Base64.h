// SPDX-License-Identifier: MIT
// Bytes as text of 64 letters (RFC 4648, section 4). Pure functions, any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veslora::Base64 {

/// The bytes that the text stands for. Nothing for text with a character outside the alphabet, line ends and
/// blanks included, with a length that is no multiple of four, or with other padding than one or two "=" at
/// its very end. Unused bits before the padding are ignored.
[[nodiscard]] std::optional<std::string> decode(std::string_view text);

} // namespace veslora::Base64
