// SPDX-License-Identifier: MIT
// Walks UTF-8 text code point by code point. Pure functions, any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace veslora::Scalars {

struct Scalar {
    std::optional<char32_t> codePoint; ///< absent for a byte that is no UTF-8
    std::size_t length = 0;            ///< in bytes, at least 1
};

/// The code point at `at`, which must lie within the text.
[[nodiscard]] Scalar at(std::string_view text, std::size_t at);

/// Whether a code point can't be seen or changes how others are shown: Unicode's general categories line
/// separator, paragraph separator, control and format.
[[nodiscard]] bool isHidden(char32_t codePoint);

} // namespace veslora::Scalars
