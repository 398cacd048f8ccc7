// SPDX-License-Identifier: MIT
// The seam for giving memory back to the system. Main thread only.
#pragma once

namespace veslora {

class MemoryReleasing {
  public:
    virtual ~MemoryReleasing() = default;

    /// Something large has ended, such as a window: what the allocator still holds of it goes back to the
    /// system once nothing of the kind has ended for a moment. Takes no time now.
    virtual void releaseSoon() = 0;
};

} // namespace veslora
