// SPDX-License-Identifier: MIT
// Counts the tokens of one calendar day from the lines of Claude Code's transcripts. Plain values, used by
// one thread at a time.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"
#include "VesloraCore/Agents/Usage/MessageCounts.h"
#include "VesloraCore/Calendar.h"
#include "VesloraCore/Text/SipHash.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

/// What one transcript line says about one message.
struct ClaudeUsageLine {
    std::string key; ///< the message, the same in each of its lines
    ClaudeTokenTotals totals;
    Timestamp time = 0;

    /// What every line of interest holds; any other need not be parsed.
    static constexpr std::string_view marker = "\"usage\"";

    /// Nothing for a line that doesn't count. A count that is missing, no number or beyond 64 bits is 0.
    [[nodiscard]] static std::optional<ClaudeUsageLine> parse(std::string_view text);

    bool operator==(const ClaudeUsageLine&) const = default;
};

class ClaudeUsageTally {
  public:
    /// Counts the day that holds `time`. The secret is random, unless all lines are known to be harmless.
    ClaudeUsageTally(Timestamp time, std::shared_ptr<const Calendar> calendar,
                     const SipHash::Key& secret = {});

    /// Takes one line, valid UTF-8 without its line end. A message is spread over several lines and counts
    /// once, with the figures of its last one, even if they are lower. Lines of another day are passed over.
    void add(std::string_view line);
    void add(const ClaudeUsageLine& line);

    /// Takes what another tally counted after this one. False, and nothing is taken, if it counted another
    /// day or has another secret.
    [[nodiscard]] bool merge(ClaudeUsageTally&& later);

    /// Begins again with the day that holds `time`, unless that is the day being counted.
    void roll(Timestamp time);

    /// A tally of the same day and secret in which nothing was counted.
    [[nodiscard]] ClaudeUsageTally emptied() const;

    [[nodiscard]] ClaudeTokenTotals totals() const { return m_counts.totals(); }
    /// When the counted day began.
    [[nodiscard]] Timestamp day() const { return m_day.start; }

  private:
    ClaudeUsageTally(const DaySpan& day, std::shared_ptr<const Calendar> calendar, MessageCounts counts);

    std::shared_ptr<const Calendar> m_calendar;
    DaySpan m_day;
    MessageCounts m_counts;
};

} // namespace veslora
