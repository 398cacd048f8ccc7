// SPDX-License-Identifier: MIT
// Reads the address of a file. Pure function, any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veslora::FileUrl {

/// The absolute path that a "file:" address names on this machine, as bytes. Players often forget to encode
/// "?" and
/// "#", so that both are part of the path. Absent for any other address, for another machine's file, and
/// where an encoded byte is broken or zero.
[[nodiscard]] std::optional<std::string> path(std::string_view url);

} // namespace veslora::FileUrl
