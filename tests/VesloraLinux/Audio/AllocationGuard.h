// SPDX-License-Identifier: MIT
// Counts what a thread allocates and frees within a scope: a sound card does not wait for memory.
#pragma once

#include <cstddef>

namespace veslora::testing {

/// One at a time in a thread.
class AllocationGuard {
  public:
    AllocationGuard();
    ~AllocationGuard();
    AllocationGuard(const AllocationGuard&) = delete;
    AllocationGuard& operator=(const AllocationGuard&) = delete;

    /// How often this thread used `new` or `delete` since the guard was made.
    [[nodiscard]] std::size_t count() const;
};

} // namespace veslora::testing
