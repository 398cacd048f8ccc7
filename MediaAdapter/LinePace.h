// SPDX-License-Identifier: MIT
// When the next line of the stream is due, on a clock of milliseconds that nobody sets. Any thread, one at a
// time.
#pragma once

#include <cstdint>
#include <optional>

namespace veslora {

/// The first change is told at once, and what follows at most every 50 milliseconds, however much changes. A
/// change whose position is still asked for waits 10 milliseconds for the answer, so that both are one line.
/// One that ends a track waits 100 for the next, since browsers stop in between.
class LinePace {
  public:
    using Milliseconds = std::int64_t;

    static constexpr Milliseconds interval = 50;
    static constexpr Milliseconds positionPatience = 10;
    static constexpr Milliseconds trackPatience = 100;

    /// What may still come and belong to the change.
    enum class Awaited { nothing, position, track };

    void change(Milliseconds now) { m_changedAt = m_changedAt.value_or(now); }
    /// The line was written, or there was nothing to write.
    void written(Milliseconds now);

    /// When to write; absent while nothing has changed.
    [[nodiscard]] std::optional<Milliseconds> due(Awaited awaited) const;

  private:
    [[nodiscard]] static Milliseconds patienceFor(Awaited awaited);

    std::optional<Milliseconds> m_changedAt;
    std::optional<Milliseconds> m_writtenAt;
};

} // namespace veslora
