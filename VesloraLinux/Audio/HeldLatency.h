// SPDX-License-Identifier: MIT
// The latency of a stream: a server's figures wander from one moment to the next, so it is the median of the
// first few, and stays what it was then. The thread of an audio output measures, any other asks.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace veslora {

class HeldLatency {
  public:
    /// How many make it, an odd number.
    static constexpr std::size_t measurements = 15;

    /// Samples; before the first measurement what is expected, and the median so far until there were all.
    [[nodiscard]] std::int64_t value() const noexcept { return m_value.load(std::memory_order_relaxed); }

    /// To be said before the first measurement; without it that is 0.
    void expect(std::int64_t samples) noexcept { m_value.store(samples, std::memory_order_relaxed); }

    /// Audio thread. Does nothing once there were all. Below 0 counts as 0.
    void add(std::int64_t samples) noexcept {
        if (m_count == measurements) {
            return;
        }
        m_measured[m_count++] = std::max<std::int64_t>(samples, 0);
        auto sorted = m_measured;
        const auto end = sorted.begin() + static_cast<std::ptrdiff_t>(m_count);
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(m_count / 2);
        std::nth_element(sorted.begin(), middle, end);
        m_value.store(*middle, std::memory_order_relaxed);
    }

    /// Audio thread. Measures once more; what was held counts until then.
    void measureAgain() noexcept { m_count = 0; }

  private:
    std::atomic<std::int64_t> m_value = 0;
    std::array<std::int64_t, measurements> m_measured{};
    std::size_t m_count = 0;
};

} // namespace veslora
