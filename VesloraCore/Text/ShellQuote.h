// SPDX-License-Identifier: MIT
// Writes a path so that every shell reads it as one word. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace veslora {

/// The text in single quotes, each single quote inside it as '\'' .
[[nodiscard]] inline std::string shellQuoted(std::string_view text) {
    std::string quoted = "'";
    for (const char byte : text) {
        if (byte == '\'') {
            quoted += "'\\''";
        } else {
            quoted += byte;
        }
    }
    return quoted + "'";
}

} // namespace veslora
