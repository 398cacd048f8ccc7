// SPDX-License-Identifier: MIT
#include "VesloraCore/CodexUsageTally.h"

#include <utility>

namespace veslora {

CodexUsageTally::CodexUsageTally(Timestamp day, std::shared_ptr<const Calendar> calendar)
    : m_calendar(std::move(calendar)), m_day(m_calendar->dayOf(day)) {}

void CodexUsageTally::add(const CodexUsageLine& line) {
    const auto* tokens = std::get_if<CodexUsageLine::Tokens>(&line.kind);
    if (!tokens || !m_day.contains(tokens->at))
        return;
    ClaudeTokenTotals& counted = m_responses[tokens->key];
    m_sum.subtract(counted);
    m_sum.add(tokens->totals);
    counted = tokens->totals;
}

void CodexUsageTally::roll(Timestamp to) {
    // Asked anew even within the day: its end may have moved with the rules of the time zone.
    const DaySpan day = m_calendar->dayOf(to);
    if (day.start != m_day.start) {
        m_responses.clear();
        m_sum = {};
    }
    m_day = day;
}

} // namespace veslora
