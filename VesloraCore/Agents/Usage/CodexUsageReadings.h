// SPDX-License-Identifier: MIT
// What Codex's session logs told so far: the newest limits, the newest state of the context, and the tokens
// of the counted day. Plain values, used by one thread at a time.
#pragma once

#include "VesloraCore/Agents/Usage/CodexUsageLine.h"
#include "VesloraCore/Agents/Usage/CodexUsageTally.h"

#include <array>
#include <optional>
#include <string_view>

namespace veslora {

class CodexUsageReadings {
  public:
    /// Every line of interest holds one of them.
    static constexpr std::array<std::string_view, 2> markers = {"\"token_count\"", "\"token_usage_record\""};

    /// Nothing was told yet, and the tokens of the day that holds `time` are counted.
    CodexUsageReadings(Timestamp time, std::shared_ptr<const Calendar> calendar);

    /// Takes one line, valid UTF-8 without its line end. Lines of several sessions come in any order: an
    /// older reading never replaces a newer one, and of two with one date the later line counts.
    void add(std::string_view text);

    /// Takes what another one read after this one. False, and nothing is taken, if that one counted another
    /// day.
    [[nodiscard]] bool merge(CodexUsageReadings&& later);

    /// Another day's tokens begin at zero; the readings stay, for they hold until newer ones come.
    void roll(Timestamp time);

    /// One that counts the same day and was told nothing.
    [[nodiscard]] CodexUsageReadings emptied() const;

    [[nodiscard]] const std::optional<CodexLimits>& limits() const { return m_limits; }
    [[nodiscard]] const std::optional<CodexContext>& context() const { return m_context; }
    /// The newest date of any limits or tokens, whether or not they were taken.
    [[nodiscard]] std::optional<Timestamp> lastActivity() const { return m_lastActivity; }
    [[nodiscard]] ClaudeTokenTotals totals() const { return m_tally.totals(); }
    /// When the counted day began.
    [[nodiscard]] Timestamp day() const { return m_tally.day(); }

  private:
    explicit CodexUsageReadings(CodexUsageTally tally) : m_tally(std::move(tally)) {}
    void take(const CodexLimits& limits);
    void take(const CodexContext& context);
    void wasActiveAt(Timestamp time);

    std::optional<CodexLimits> m_limits;
    std::optional<CodexContext> m_context;
    std::optional<Timestamp> m_lastActivity;
    CodexUsageTally m_tally;
};

} // namespace veslora
