// SPDX-License-Identifier: MIT
#include "Veslora/Terminal.h"

#include <cstdio>

namespace veslora::Terminal {

int print(std::string_view text) {
    const bool isOut =
        std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
    return isOut ? 0 : 1;
}

int refuse(const std::string& why) {
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

} // namespace veslora::Terminal
