// SPDX-License-Identifier: MIT
// When the next line of the stream is due, on a clock of milliseconds that nobody sets. Any thread, one at a
// time.
#pragma once

#include <cstdint>
#include <optional>

namespace veslora {

/// The first change is told at once, and what follows at most every 50 milliseconds, however much changes. A
/// change whose position is still asked for waits 10 milliseconds for the answer, so that both are one line.
class LinePace {
  public:
    using Milliseconds = std::int64_t;

    static constexpr Milliseconds interval = 50;
    static constexpr Milliseconds patience = 10;

    void change(Milliseconds now) { m_changedAt = m_changedAt.value_or(now); }
    /// The line was written, or there was nothing to write.
    void written(Milliseconds now);

    /// When to write; absent while nothing has changed.
    [[nodiscard]] std::optional<Milliseconds> due(bool isPositionAwaited) const;

  private:
    std::optional<Milliseconds> m_changedAt;
    std::optional<Milliseconds> m_writtenAt;
};

} // namespace veslora
