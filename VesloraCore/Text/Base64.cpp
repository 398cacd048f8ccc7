// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Base64.h"

#include <array>
#include <cstdint>

namespace veslora::Base64 {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint32_t noLetter = 0xFF;
constexpr std::size_t groupLength = 4;

constexpr std::array<std::uint8_t, 256> makeValues() {
    std::array<std::uint8_t, 256> values{};
    values.fill(noLetter);
    for (std::size_t value = 0; value < alphabet.size(); ++value) {
        values[static_cast<std::uint8_t>(alphabet[value])] = static_cast<std::uint8_t>(value);
    }
    return values;
}

constexpr auto values = makeValues();

std::size_t paddingOf(std::string_view text) {
    if (text.ends_with("==")) {
        return 2;
    }
    return text.ends_with('=') ? 1 : 0;
}

} // namespace

std::optional<std::string> decode(std::string_view text) {
    if (text.size() % groupLength != 0) {
        return std::nullopt;
    }
    const std::size_t padding = paddingOf(text);
    text.remove_suffix(padding);
    std::string bytes;
    bytes.reserve(text.size() / groupLength * 3 + 2);
    std::uint32_t bits = 0;
    int held = 0;
    for (const char letter : text) {
        const std::uint32_t value = values[static_cast<std::uint8_t>(letter)];
        if (value == noLetter) {
            return std::nullopt;
        }
        bits = (bits << 6) | value;
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes.push_back(static_cast<char>(bits >> held & 0xFF));
        }
    }
    return bytes;
}

} // namespace veslora::Base64
