// SPDX-License-Identifier: MIT
// Which script a character belongs to: Latin, Hebrew, Devanagari and so on (Unicode's property Script). It
// knows the characters that the toolkit's own tables know, and no newer ones. Pure functions, any thread.
#pragma once

#include <cstdint>

namespace veslora::Scripts {

/// Only what the rules name has a name; two characters of one script have one value.
enum class Script : std::uint8_t {
    unknown,   ///< unassigned, newer than the toolkit, for private use, or no character at all
    common,    ///< used by many scripts: digits, punctuation, symbols
    inherited, ///< marks that take the script of what they are put on
};

[[nodiscard]] Script of(char32_t codePoint);

} // namespace veslora::Scripts
