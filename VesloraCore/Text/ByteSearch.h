// SPDX-License-Identifier: MIT
// Finds a short literal in a great many bytes. Pure functions, any thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace veslora::ByteSearch {

/// Where `literal`, of at least two bytes, first occurs at or after `from`; `npos` when nowhere.
[[nodiscard]] std::size_t find(std::string_view bytes, std::string_view literal, std::size_t from = 0);

/// Where `byte` occurs for the last time before `end`, which is at most the length; `npos` when nowhere.
[[nodiscard]] std::size_t findLast(std::string_view bytes, char byte, std::size_t end);

} // namespace veslora::ByteSearch
