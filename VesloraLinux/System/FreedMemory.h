// SPDX-License-Identifier: MIT
// Gives back what the C library's allocator keeps for later in the gaps between what is in use. Left alone it
// returns only what lies at the very end.
#pragma once

#include "VesloraUI/Platform/MemoryReleasing.h"
#include "VesloraUI/Platform/Task.h"

#include <functional>

namespace veslora {

class Scheduler;

class FreedMemory final : public MemoryReleasing {
  public:
    static constexpr double delay = 1.5; ///< seconds, in which what goes by an animation has gone

    /// `release` gives all of it back; some tenths of a millisecond for each megabyte.
    explicit FreedMemory(Scheduler& scheduler, std::function<void()> release = &FreedMemory::trim);

    void releaseSoon() override;

  private:
    static void trim();

    Scheduler& m_scheduler;
    const std::function<void()> m_release;
    Task m_wait;
};

} // namespace veslora
