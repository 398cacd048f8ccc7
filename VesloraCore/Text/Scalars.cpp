// SPDX-License-Identifier: MIT
// See Scalars.h.
#include "VesloraCore/Text/Scalars.h"

#include "VesloraCore/Text/Scripts.h"

#include <utf8proc.h>

namespace veslora::Scalars {

namespace {

// Symbols by category, yet without ink of their own.
bool isBlank(char32_t codePoint) {
    switch (codePoint) {
    case U'\u2800':     // braille pattern without a dot
    case U'\uFFFC':     // stands for an object; its width is that object's and may be negative
    case U'\uFFFD':     // stands for what could not be read
    case U'\U0001D159': // null notehead
        return true;
    default:
        return false;
    }
}

} // namespace

Scalar at(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at, 4);
    utf8proc_int32_t codePoint = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(rest.data()),
                                         static_cast<utf8proc_ssize_t>(rest.size()), &codePoint);
    if (length <= 0) {
        return {std::nullopt, 1};
    }
    return {static_cast<char32_t>(codePoint), static_cast<std::size_t>(length)};
}

bool isHidden(char32_t codePoint) {
    if (codePoint == U' ') {
        return false;
    }
    const auto* property = utf8proc_get_property(static_cast<utf8proc_int32_t>(codePoint));
    switch (property->category) {
    case UTF8PROC_CATEGORY_CN:
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_CS:
    case UTF8PROC_CATEGORY_CO:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_ZS:
    case UTF8PROC_CATEGORY_ME:
        return true;
    default:
        return property->ignorable || isBlank(codePoint) ||
               Scripts::of(codePoint) == Scripts::Script::unknown;
    }
}

bool isMark(char32_t codePoint) {
    switch (utf8proc_category(static_cast<utf8proc_int32_t>(codePoint))) {
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_MC:
    case UTF8PROC_CATEGORY_ME:
        return true;
    default:
        return false;
    }
}

} // namespace veslora::Scalars
