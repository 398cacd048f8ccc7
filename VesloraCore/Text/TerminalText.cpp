// SPDX-License-Identifier: MIT
// See TerminalText.h.
#include "VesloraCore/Text/TerminalText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace veslora::TerminalText {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Separators of words and lines.
constexpr Range blanks[] = {{0x09, 0x0D}, {0x85, 0x85}, {0x2028, 0x2029}};

// Unicode's categories "control" and "format" as of its version 15, and the plane of tags, which is spread
// over it: few enough to be listed here.
constexpr Range hidden[] = {{0x00, 0x1F},       {0x7F, 0x9F},       {0xAD, 0xAD},       {0x600, 0x605},
                            {0x61C, 0x61C},     {0x6DD, 0x6DD},     {0x70F, 0x70F},     {0x890, 0x891},
                            {0x8E2, 0x8E2},     {0x180E, 0x180E},   {0x200B, 0x200F},   {0x202A, 0x202E},
                            {0x2060, 0x2064},   {0x2066, 0x206F},   {0xFEFF, 0xFEFF},   {0xFFF9, 0xFFFB},
                            {0x110BD, 0x110BD}, {0x110CD, 0x110CD}, {0x13430, 0x1343F}, {0x1BCA0, 0x1BCA3},
                            {0x1D173, 0x1D17A}, {0xE0000, 0xE007F}};

template <std::size_t count>
bool isIn(const Range (&ranges)[count], char32_t codePoint) {
    return std::any_of(std::begin(ranges), std::end(ranges), [codePoint](const Range& range) {
        return codePoint >= range.first && codePoint <= range.last;
    });
}

// How many bytes the UTF-8 form of a code point takes that begins with `lead`; 0 where none does.
std::size_t lengthOf(std::uint8_t lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Reads the code point at the beginning; false where it is no UTF-8.
bool decode(std::string_view text, char32_t& codePoint, std::size_t& length) {
    const auto byte = [text](std::size_t at) { return static_cast<std::uint8_t>(text[at]); };
    length = lengthOf(byte(0));
    if (length == 0 || length > text.size()) {
        return false;
    }
    constexpr char32_t leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    codePoint = byte(0) & leadBits[length];
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0) != 0x80) {
            return false;
        }
        codePoint = codePoint << 6 | (byte(at) & 0x3F);
    }
    // The same code point in more bytes than it needs, half a surrogate pair, and what is beyond the last.
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    return codePoint >= least[length] && (codePoint < 0xD800 || codePoint > 0xDFFF) && codePoint <= 0x10FFFF;
}

} // namespace

std::string withoutControls(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        char32_t codePoint = 0;
        std::size_t length = 1;
        if (!decode(text, codePoint, length)) {
            text.remove_prefix(1);
            continue;
        }
        if (isIn(blanks, codePoint)) {
            result += ' ';
        } else if (!isIn(hidden, codePoint)) {
            result += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return result;
}

} // namespace veslora::TerminalText
