// SPDX-License-Identifier: MIT
// See GraphemeClusters.h.
#include "VesloraCore/Text/GraphemeClusters.h"

#include "VesloraCore/Text/Scalars.h"

#include <utf8proc.h>

#include <limits>

namespace veslora::GraphemeClusters {

namespace {

struct Walk {
    std::size_t characters = 0; ///< how many whole characters were passed
    std::size_t bytes = 0;      ///< and how long they are together
};

// Passes characters from the front, at most `limit` of them.
Walk walk(std::string_view text, std::size_t limit) {
    Walk passed;
    Boundaries boundaries;
    for (std::size_t at = 0; at < text.size();) {
        const Scalars::Scalar scalar = Scalars::at(text, at);
        if (boundaries.isStart(scalar.codePoint)) {
            if (passed.characters == limit) {
                return passed;
            }
            ++passed.characters;
        }
        at += scalar.length;
        passed.bytes = at;
    }
    return passed;
}

} // namespace

bool Boundaries::isStart(std::optional<char32_t> codePoint) {
    const bool isWithin =
        m_previous && codePoint &&
        !utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(*m_previous),
                                          static_cast<utf8proc_int32_t>(*codePoint), &m_state);
    if (!codePoint) {
        m_state = 0;
    }
    m_previous = codePoint;
    return !isWithin;
}

std::size_t count(std::string_view text) {
    return walk(text, std::numeric_limits<std::size_t>::max()).characters;
}

std::string_view prefix(std::string_view text, std::size_t characters) {
    return text.substr(0, walk(text, characters).bytes);
}

bool exceeds(std::string_view text, std::size_t characters) {
    return walk(text, characters).bytes < text.size();
}

} // namespace veslora::GraphemeClusters
