// SPDX-License-Identifier: MIT
// Text that comes from outside, made so that nothing in it can hide, move its neighbours or pass for
// something else: commands, the names of sessions and tools, messages. Pure functions, any thread. Whether a
// font has the letters that are left is for the view to find out.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veslora::VisibleText {

/// More characters than any one line of the island has room for.
inline constexpr std::size_t lineLimit = 130;

struct Spelled {
    std::string text;
    bool isComplete = true; ///< whether the text holds all that came
    bool operator==(const Spelled&) const = default;
};

/// The text with line ends and tabs as signs ("␍", "⏎", "⇥", each with a blank around it) and spelled by its
/// code, such as "⟨U+202E⟩", each code point that
/// - is hidden (see `Scalars::isHidden`),
/// - is a mark that no language writes there: without a letter before it, of another script than that letter,
/// the same
///   as one before it on the letter, or a fourth,
/// - or is one of our own signs, with which a text could forge them.
/// A byte that is no UTF-8 is spelled as U+FFFD.
///
/// What takes more than `limit` characters, as a person counts them, ends after one character less and an
/// ellipsis. So does a text whose characters are piled up of more than four code points on average. No more
/// of the text is read than that takes.
[[nodiscard]] Spelled spelled(std::string_view text, std::size_t limit);

/// The same for a text of one line that may be cut.
[[nodiscard]] std::string line(std::string_view text);

} // namespace veslora::VisibleText
