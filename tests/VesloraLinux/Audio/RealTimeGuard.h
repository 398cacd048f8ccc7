// SPDX-License-Identifier: MIT
// Sees what a sound card's thread must never do: allocate, free, lock or call the system.
#pragma once

#include <cstddef>
#include <functional>

namespace veslora::testing {

/// Counts what the thread that made it does with the heap, below `new` and `delete` too, and with locks,
/// until it is destroyed. One at a time in a thread.
class RealTimeGuard {
  public:
    RealTimeGuard();
    ~RealTimeGuard();
    RealTimeGuard(const RealTimeGuard&) = delete;
    RealTimeGuard& operator=(const RealTimeGuard&) = delete;

    /// False in a build with a sanitizer, which has the heap and the locks for itself.
    [[nodiscard]] static bool isWatching();

    [[nodiscard]] std::size_t heapCalls() const;
    [[nodiscard]] std::size_t lockCalls() const;
};

enum class SystemCalls {
    none,
    some,        ///< it was stopped at the first one
    unwatchable, ///< this machine does not let a process be held to none
};

/// Does `work` in a process of its own that the kernel ends at its first call of the system.
[[nodiscard]] SystemCalls systemCallsOf(const std::function<void()>& work);

} // namespace veslora::testing
