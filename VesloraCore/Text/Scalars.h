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

/// Whether a code point is never shown as itself, because nobody could count on seeing it: it has no ink, a
/// width that nobody can tell, or changes how others are shown; or the toolkit's tables are older than it.
/// These are Unicode's controls, formats, surrogates, private and unassigned code points, line and paragraph
/// separators, all spaces but U+0020, enclosing marks, whatever may be ignored by default, and four blank
/// symbols.
[[nodiscard]] bool isHidden(char32_t codePoint);

/// Whether a code point is drawn onto the one before it: an accent, a vowel sign.
[[nodiscard]] bool isMark(char32_t codePoint);

} // namespace veslora::Scalars
