// SPDX-License-Identifier: MIT
// See Words.h.
#include "VesloraCore/Text/Words.h"

#include <utility>

namespace veslora {

Words::Words(Translate translate, std::string decimalPoint)
    : m_translate(std::move(translate)), m_decimalPoint(std::move(decimalPoint)) {}

std::string Words::translate(const char* context, const char* text) const {
    return m_translate ? m_translate(context, text) : text;
}

std::string Words::filled(std::string_view pattern, std::initializer_list<std::string_view> values) {
    std::string text;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const bool isMark = pattern[at] == '%' && at + 1 < pattern.size();
        const int place = isMark ? pattern[at + 1] - '1' : -1;
        if (place < 0 || place >= static_cast<int>(values.size()) || place >= 9) {
            text += pattern[at];
            continue;
        }
        text += values.begin()[place];
        ++at;
    }
    return text;
}

} // namespace veslora
