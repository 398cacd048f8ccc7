// SPDX-License-Identifier: MIT
// The tokens of JSON's grammar (RFC 8259), for `JsonScanner` and its callers: which text is a number, what an
// escape means. Pure functions on the bytes of a document, any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora::JsonText {

/// What an escape stands for. `isExact` is false for half of a surrogate pair, whose code point is U+FFFD.
struct Escape {
    std::size_t length = 0; ///< in bytes; 0 for an unknown or unfinished escape
    char32_t codePoint = 0;
    bool isExact = true;
};

/// A string's content. `isExact` is false when one of its escapes is not.
struct Unescaped {
    std::string text;
    bool isExact = true;
};

/// What may follow a backslash and stands for one character.
inline constexpr std::string_view escapeLetters = "\"\\/bfnrt";

/// The document without a byte order mark before it.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view document);

/// Whether the whole text is one number.
[[nodiscard]] bool isNumber(std::string_view text);

/// A number's value; nothing for other text and for one that a double can't hold.
[[nodiscard]] std::optional<double> number(std::string_view text);

/// A number's value without its fraction; nothing like `number`, and also beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> integer(std::string_view text);

/// The escape at `at`, which must be a backslash's place; a surrogate pair is one escape.
[[nodiscard]] Escape escapeAt(std::string_view text, std::size_t at);

/// Resolves the escapes of `raw`, the bytes between the quotes of a string that `JsonScanner` has accepted;
/// what follows an unknown or unfinished escape is left out.
[[nodiscard]] Unescaped unescape(std::string_view raw);

/// Adds a code point as UTF-8. `codePoint` is at most U+10FFFF and no surrogate.
void appendUtf8(std::string& text, char32_t codePoint);

} // namespace veslora::JsonText
