// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Utf8.h"

#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/Scalars.h"

#include <simdjson.h>

namespace veslora::Utf8 {

// OPTIMIZATION: simdjson validates the lines of transcripts at 11 GB/s from memory and at 55 GB/s from the
// cache; decoding them one code point after the other takes a second for 0.15 GB. It is used for nothing
// else.
bool isValid(std::string_view bytes) {
    return simdjson::validate_utf8(bytes);
}

std::string repaired(std::string_view bytes) {
    constexpr char32_t replacement = 0xFFFD;
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const Scalars::Scalar scalar = Scalars::at(bytes, at);
        if (scalar.codePoint) {
            text.append(bytes.substr(at, scalar.length));
        } else {
            JsonText::appendUtf8(text, replacement);
        }
        at += scalar.length;
    }
    return text;
}

} // namespace veslora::Utf8
