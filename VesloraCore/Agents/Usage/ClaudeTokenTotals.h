// SPDX-License-Identifier: MIT
// Counts of tokens by what they were used for, and their running sum. The numbers are another program's, so
// no sum overflows: it rests at the ends of 64 bits. Plain values, any thread.
#pragma once

#include <cstdint>

namespace veslora {

struct ClaudeTokenTotals {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheWrite = 0;
    std::int64_t cacheRead = 0;

    static const ClaudeTokenTotals zero;

    /// All four together.
    [[nodiscard]] std::int64_t total() const;

    bool operator==(const ClaudeTokenTotals&) const = default;
};

inline constexpr ClaudeTokenTotals ClaudeTokenTotals::zero{};

/// Adds and takes away totals exactly, whatever their size; only what it tells is held to 64 bits.
class TokenSum {
  public:
    void add(const ClaudeTokenTotals& totals);
    void subtract(const ClaudeTokenTotals& totals);
    [[nodiscard]] ClaudeTokenTotals totals() const;

  private:
    __extension__ using Wide = __int128;
    Wide m_input = 0;
    Wide m_output = 0;
    Wide m_cacheWrite = 0;
    Wide m_cacheRead = 0;
};

} // namespace veslora
