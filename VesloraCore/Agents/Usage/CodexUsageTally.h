// SPDX-License-Identifier: MIT
// The running count of the tokens that Codex used on one calendar day. A value: copies count on their own.
// One thread at a time.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"
#include "VesloraCore/Agents/Usage/CodexUsageLine.h"
#include "VesloraCore/Calendar.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace veslora {

class CodexUsageTally {
  public:
    /// Counts the day that holds `day`, which is finite. The calendar is never null.
    CodexUsageTally(Timestamp day, std::shared_ptr<const Calendar> calendar);

    /// The start of the counted day.
    [[nodiscard]] Timestamp day() const { return m_day.start; }
    /// All responses of the day together; a response that came twice counts once, as it came last.
    [[nodiscard]] ClaudeTokenTotals totals() const { return m_sum.totals(); }

    /// Counts a response of the day; any other line, and one of another day, changes nothing.
    void add(const CodexUsageLine& line);
    /// Begins again when `to`, which is finite, lies on another day.
    void roll(Timestamp to);
    /// Takes what another tally counted after this one. False, and nothing is taken, if it counted another
    /// day.
    [[nodiscard]] bool merge(CodexUsageTally&& later);
    /// A tally of the same day in which nothing was counted.
    [[nodiscard]] CodexUsageTally emptied() const;

  private:
    CodexUsageTally(const DaySpan& day, std::shared_ptr<const Calendar> calendar);
    void count(const std::string& key, const ClaudeTokenTotals& totals);

    std::shared_ptr<const Calendar> m_calendar;
    DaySpan m_day;
    std::unordered_map<std::string, ClaudeTokenTotals> m_responses;
    TokenSum m_sum;
};

} // namespace veslora
