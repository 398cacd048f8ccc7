// SPDX-License-Identifier: MIT
// Finds a short literal in a great many bytes. Pure functions, any thread.
#pragma once

#include <cstddef>
#include <string_view>

namespace veslora::ByteSearch {

/// Where `literal`, of at least two bytes, first stands at or after `from`; `npos` when nowhere.
[[nodiscard]] std::size_t find(std::string_view bytes, std::string_view literal, std::size_t from = 0);

} // namespace veslora::ByteSearch
