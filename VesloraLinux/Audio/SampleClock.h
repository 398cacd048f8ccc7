// SPDX-License-Identifier: MIT
// Where a device is between two of the blocks that it asks for. The thread of an audio output marks each
// block, any other asks, and the first never waits.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

namespace veslora {

class SampleClock {
  public:
    /// In samples a second.
    explicit SampleClock(int sampleRate) : m_sampleRate(sampleRate) {}

    /// Audio thread. `block` samples were rendered, `position` in all; `nanoseconds` is the time by any
    /// steady clock.
    void mark(std::int64_t position, std::int64_t block, std::int64_t nanoseconds) noexcept;

    /// Any thread. How far the device is by that time of the same clock: at the last marked position and
    /// moving on, by no more than a block as long as the last one. Absent before the first mark.
    [[nodiscard]] std::optional<std::int64_t> sampleAt(std::int64_t nanoseconds) const noexcept;

  private:
    struct Mark {
        std::int64_t position = 0;
        std::int64_t block = 0;
        std::int64_t nanoseconds = 0;
    };
    [[nodiscard]] Mark lastMark() const noexcept;

    static_assert(std::atomic<std::int64_t>::is_always_lock_free);

    const int m_sampleRate;
    std::atomic<std::uint64_t> m_version = 0; ///< odd while a mark is being written, 0 before the first
    std::atomic<std::int64_t> m_position = 0;
    std::atomic<std::int64_t> m_block = 0;
    std::atomic<std::int64_t> m_nanoseconds = 0;
};

} // namespace veslora
