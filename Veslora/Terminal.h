// SPDX-License-Identifier: MIT
// What the program says to the shell that it was started from.
#pragma once

#include <string>
#include <string_view>

namespace veslora::Terminal {

/// Writes to standard output; gives the exit status, 1 where nobody takes it.
[[nodiscard]] int print(std::string_view text);
/// Writes a line to standard error; gives the exit status of what could not be done.
[[nodiscard]] int refuse(const std::string& why);

} // namespace veslora::Terminal
