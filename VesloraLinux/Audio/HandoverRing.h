// SPDX-License-Identifier: MIT
// A queue from exactly one thread to exactly one other, without locks and without allocation.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <optional>
#include <type_traits>

namespace veslora {

/// Holds up to `size` values, a power of two, which are plain data.
template <typename Value, std::size_t size>
class HandoverRing {
    static_assert(std::is_trivially_copyable_v<Value>);
    static_assert((size & (size - 1)) == 0, "the counters wrap around at a multiple of the size");
    static_assert(std::atomic<std::size_t>::is_always_lock_free);

  public:
    /// For the giving thread. False when the ring is full, which leaves it as it was.
    [[nodiscard]] bool push(const Value& value) noexcept {
        const std::size_t pushed = m_pushed.load(std::memory_order_relaxed);
        if (pushed - m_popped.load(std::memory_order_acquire) == size) {
            return false;
        }
        m_values[pushed % size] = value;
        m_pushed.store(pushed + 1, std::memory_order_release);
        return true;
    }

    /// For the taking thread: the oldest value; absent when there is none.
    [[nodiscard]] std::optional<Value> pop() noexcept {
        const std::size_t popped = m_popped.load(std::memory_order_relaxed);
        if (popped == m_pushed.load(std::memory_order_acquire)) {
            return std::nullopt;
        }
        const Value value = m_values[popped % size];
        m_popped.store(popped + 1, std::memory_order_release);
        return value;
    }

    /// For the taking thread.
    [[nodiscard]] bool isEmpty() const noexcept {
        return m_popped.load(std::memory_order_relaxed) == m_pushed.load(std::memory_order_acquire);
    }

  private:
    /// Each counter has a cache line of its own, or each thread would slow the other down.
    static constexpr std::size_t cacheLine = 64;

    alignas(cacheLine) std::atomic<std::size_t> m_pushed = 0;
    alignas(cacheLine) std::atomic<std::size_t> m_popped = 0;
    alignas(cacheLine) std::array<Value, size> m_values{};
};

} // namespace veslora
