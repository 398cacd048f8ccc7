// SPDX-License-Identifier: MIT
// Text of other programs, made harmless for a terminal. It serves the status-line helper, which must not need
// a library with Unicode's tables. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace veslora::TerminalText {

/// The text without anything that could move a terminal's cursor, begin a command to it or change the order
/// of what it shows: the control characters (C0, DEL, C1, also as single bytes), the marks of direction and
/// the invisible format characters, and every byte that is no UTF-8. What separates words or lines becomes a
/// blank.
[[nodiscard]] std::string withoutControls(std::string_view text);

} // namespace veslora::TerminalText
