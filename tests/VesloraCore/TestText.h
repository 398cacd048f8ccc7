// SPDX-License-Identifier: MIT
// Makes long texts for tests.
#pragma once

#include <string>
#include <string_view>

namespace veslora::test {

inline std::string repeated(std::string_view text, int times) {
    std::string made;
    for (int i = 0; i < times; ++i) {
        made += text;
    }
    return made;
}

} // namespace veslora::test
