// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/FreedMemory.h"

#include "VesloraUI/Platform/Scheduler.h"

#include <malloc.h>

#include <utility>

namespace veslora {

FreedMemory::FreedMemory(Scheduler& scheduler, std::function<void()> release)
    : m_scheduler(scheduler), m_release(std::move(release)) {}

void FreedMemory::releaseSoon() {
    m_wait = m_scheduler.after(delay, [this] { m_release(); });
}

void FreedMemory::trim() {
    malloc_trim(0);
}

} // namespace veslora
