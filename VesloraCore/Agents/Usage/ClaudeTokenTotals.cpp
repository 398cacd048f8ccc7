// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"

#include <limits>

namespace veslora {

namespace {

template <class Wide>
std::int64_t saturated(Wide value) {
    using Limits = std::numeric_limits<std::int64_t>;
    if (value > Limits::max()) {
        return Limits::max();
    }
    return value < Limits::min() ? Limits::min() : static_cast<std::int64_t>(value);
}

} // namespace

std::int64_t ClaudeTokenTotals::total() const {
    __extension__ using Wide = __int128;
    return saturated(Wide{input} + output + cacheWrite + cacheRead);
}

void TokenSum::add(const ClaudeTokenTotals& totals) {
    m_input += totals.input;
    m_output += totals.output;
    m_cacheWrite += totals.cacheWrite;
    m_cacheRead += totals.cacheRead;
}

void TokenSum::subtract(const ClaudeTokenTotals& totals) {
    m_input -= totals.input;
    m_output -= totals.output;
    m_cacheWrite -= totals.cacheWrite;
    m_cacheRead -= totals.cacheRead;
}

ClaudeTokenTotals TokenSum::totals() const {
    return {saturated(m_input), saturated(m_output), saturated(m_cacheWrite), saturated(m_cacheRead)};
}

} // namespace veslora
