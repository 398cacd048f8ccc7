// SPDX-License-Identifier: MIT
// What every fuzzer needs: its entry, the input as text, and a way to say what must hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// libFuzzer's entry, defined by each fuzzer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace veslora::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the program, which libFuzzer reports with the input at fault, unless `holds`.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Cuts the text at its first line end; what follows is left in `text`.
inline std::string_view takeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

} // namespace veslora::fuzz
