// SPDX-License-Identifier: MIT
// The small pieces of JSON's grammar (RFC 8259): what a number may look like, where a string ends, what its
// escapes mean. Pure functions on the bytes of a document, any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora::JsonText {

/// A string's content. `isExact` is false when half a surrogate pair had to be replaced by U+FFFD.
struct Unescaped {
    std::string text;
    bool isExact = true;
};

/// The document without a byte order mark before it.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view document);

/// Without the four kinds of blank that JSON allows between tokens, at the end.
[[nodiscard]] std::string_view withoutTrailingBlanks(std::string_view text);

[[nodiscard]] bool isBlank(char byte);

/// Whether the whole text is one number.
[[nodiscard]] bool isNumber(std::string_view text);

/// A number's value; nothing for other text and for one that a double can't hold.
[[nodiscard]] std::optional<double> number(std::string_view text);

/// A number's value without its fraction; nothing like `number`, and also beyond 64 bits.
[[nodiscard]] std::optional<std::int64_t> integer(std::string_view text);

/// How many bytes the escape at `at`, where a backslash stands, takes; 0 for an unknown or unfinished one.
[[nodiscard]] std::size_t escapeLength(std::string_view text, std::size_t at);

/// Where the string whose first byte after the opening quote is `start` has its closing quote; `npos` when
/// nowhere.
[[nodiscard]] std::size_t closingQuote(std::string_view document, std::size_t start);

/// What stands between two quotes, its escapes resolved. Nothing for an unknown or unfinished escape and for
/// a bare control character.
[[nodiscard]] std::optional<Unescaped> unescape(std::string_view raw);

/// Adds a code point as UTF-8. `codePoint` is at most U+10FFFF and no surrogate.
void appendUtf8(std::string& text, char32_t codePoint);

} // namespace veslora::JsonText
