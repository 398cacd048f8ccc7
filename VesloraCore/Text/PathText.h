// SPDX-License-Identifier: MIT
// Reads paths as text, without asking whether they exist. Any thread.
#pragma once

#include <string_view>

namespace veslora::PathText {

/// What follows the last slash, closing slashes not counted: "proj" of "/home/me/proj/". The root gives
/// "/" and empty text is its own last component.
[[nodiscard]] inline std::string_view lastComponent(std::string_view path) {
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return path.substr(0, 1);
    }
    path = path.substr(0, end + 1);
    return path.substr(path.find_last_of('/') + 1);
}

/// Whether text can name an entry of a folder and nothing else: not empty, without a slash or a null byte,
/// and neither "." nor "..".
[[nodiscard]] constexpr bool isName(std::string_view text) {
    return !text.empty() && text != "." && text != ".." &&
           text.find_first_of(std::string_view("/\0", 2)) == std::string_view::npos;
}

} // namespace veslora::PathText
