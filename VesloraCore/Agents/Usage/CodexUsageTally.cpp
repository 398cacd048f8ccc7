// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/CodexUsageTally.h"

#include <utility>

namespace veslora {

CodexUsageTally::CodexUsageTally(Timestamp day, std::shared_ptr<const Calendar> calendar)
    : CodexUsageTally(calendar->dayOf(day), calendar) {}

CodexUsageTally::CodexUsageTally(const DaySpan& day, std::shared_ptr<const Calendar> calendar)
    : m_calendar(std::move(calendar)), m_day(day) {}

void CodexUsageTally::add(const CodexUsageLine& line) {
    const auto* tokens = std::get_if<CodexUsageLine::Tokens>(&line.kind);
    if (tokens && m_day.contains(tokens->at)) {
        count(tokens->key, tokens->totals);
    }
}

void CodexUsageTally::count(const std::string& key, const ClaudeTokenTotals& totals) {
    ClaudeTokenTotals& counted = m_responses[key];
    m_sum.subtract(counted);
    m_sum.add(totals);
    counted = totals;
}

bool CodexUsageTally::merge(CodexUsageTally&& later) {
    if (later.m_day != m_day) {
        return false;
    }
    for (const auto& [key, totals] : later.m_responses) {
        count(key, totals);
    }
    return true;
}

CodexUsageTally CodexUsageTally::emptied() const {
    return {m_day, m_calendar};
}

void CodexUsageTally::roll(Timestamp to) {
    // Asked again even within the day: its end may have moved with the rules of the time zone.
    const DaySpan day = m_calendar->dayOf(to);
    if (day.start != m_day.start) {
        m_responses.clear();
        m_sum = {};
    }
    m_day = day;
}

} // namespace veslora
