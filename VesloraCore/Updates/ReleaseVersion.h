// SPDX-License-Identifier: MIT
// A version of the program, as a release's feed and the program itself name it. Plain value, any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

/// Numbers of any length with dots between them, as in "0.2.0", and for what comes before a release a mark
/// after "~" or "-": "0.2~rc1" and "0.2-rc1" are the same, older than "0.2" and newer than "0.2~beta.3".
/// A number that is missing at the end counts as 0, so that "1.0" equals "1".
class ReleaseVersion {
  public:
    /// A longer text is no version.
    static constexpr std::size_t longest = 64;

    /// Absent for anything else: an empty text, blanks, a "v" in front, an empty number, a mark that does
    /// not begin with a letter or holds anything but ASCII letters, digits and single dots, and what is too
    /// long.
    [[nodiscard]] static std::optional<ReleaseVersion> parse(std::string_view text);

    /// As it was written. Safe as part of a file's name.
    [[nodiscard]] const std::string& text() const { return m_text; }

    /// By age. In a mark, runs of digits count as numbers and stand below letters; of two marks of which one
    /// goes on where the other ends, the shorter one is older.
    [[nodiscard]] std::strong_ordering operator<=>(const ReleaseVersion& other) const;
    [[nodiscard]] bool operator==(const ReleaseVersion& other) const { return std::is_eq(*this <=> other); }

  private:
    std::string m_text;
    std::vector<std::string> m_numbers; ///< without zeros before or zeros at the end
    /// Runs of letters and of digits, the latter without zeros before. Empty for a release.
    std::vector<std::string> m_mark;
};

} // namespace veslora
