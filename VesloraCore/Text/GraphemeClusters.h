// SPDX-License-Identifier: MIT
// Counts and cuts text by what a person sees as one character (extended grapheme clusters, Unicode's UAX
// #29), so that a family emoji counts once and no accent is cut off its letter. Pure functions, any thread. A
// byte that is no UTF-8 counts as one character.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace veslora::GraphemeClusters {

/// Tells where characters begin, of a text that comes one code point after the other.
class Boundaries {
  public:
    /// Whether the next code point begins a character; absent for a byte that is no UTF-8.
    [[nodiscard]] bool isStart(std::optional<char32_t> codePoint);

  private:
    std::optional<char32_t> m_previous;
    std::int32_t m_state = 0;
};

/// How many characters the text has.
[[nodiscard]] std::size_t count(std::string_view text);

/// The first `characters` characters, or the whole text where it has no more.
[[nodiscard]] std::string_view prefix(std::string_view text, std::size_t characters);

/// Whether the text has more than `characters` characters. Reads no further than it must.
[[nodiscard]] bool exceeds(std::string_view text, std::size_t characters);

} // namespace veslora::GraphemeClusters
