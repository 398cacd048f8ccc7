// SPDX-License-Identifier: MIT
// Makes lines of the pieces in which a pipe delivers them. Any thread, one at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class LineBuffer {
  public:
    /// Bytes of the longest line: several times what the largest cover takes, and little enough to be read
    /// within a few frames.
    static constexpr std::size_t usualLimit = std::size_t{2} << 20;

    explicit LineBuffer(std::size_t limit = usualLimit) : m_limit(limit) {}

    /// Takes the next bytes and gives the lines that they complete, without their newlines; an empty line
    /// gives an empty text. Bytes that are no UTF-8 become U+FFFD. What follows the last newline waits for
    /// more. A line that is longer than the limit is left out.
    [[nodiscard]] std::vector<std::string> append(std::string_view bytes);

  private:
    void hold(std::string_view piece);

    std::size_t m_limit;
    std::string m_held;       ///< of a line that is not complete
    bool m_isTooLong = false; ///< the line has grown beyond the limit; nothing of it is held any more
};

} // namespace veslora
