// SPDX-License-Identifier: MIT
// See Scalars.h.
#include "VesloraCore/Scalars.h"

#include <utf8proc.h>

namespace veslora::Scalars {

Scalar at(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at, 4);
    utf8proc_int32_t codePoint = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(rest.data()),
                                         static_cast<utf8proc_ssize_t>(rest.size()), &codePoint);
    if (length <= 0)
        return {std::nullopt, 1};
    return {static_cast<char32_t>(codePoint), static_cast<std::size_t>(length)};
}

bool isHidden(char32_t codePoint) {
    switch (utf8proc_category(static_cast<utf8proc_int32_t>(codePoint))) {
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_CC:
    case UTF8PROC_CATEGORY_CF:
        return true;
    default:
        return false;
    }
}

} // namespace veslora::Scalars
