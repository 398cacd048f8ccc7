// SPDX-License-Identifier: MIT
// Tells the texts that are safe as an identifier, and as the name of a file, from all others. Any thread.
#pragma once

#include <algorithm>
#include <string_view>

namespace veslora::IdentifierText {

/// Whether the text is made of ASCII letters, ASCII digits and "-" alone, and is not empty.
[[nodiscard]] inline bool isPlain(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
    });
}

} // namespace veslora::IdentifierText
