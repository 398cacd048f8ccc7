// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/SampleClock.h"

#include <algorithm>

namespace veslora {

void SampleClock::mark(std::int64_t position, std::int64_t block, std::int64_t nanoseconds) noexcept {
    const std::uint64_t version = m_version.load(std::memory_order_relaxed);
    m_version.store(version + 1, std::memory_order_relaxed);
    // None of these is seen before the odd version is.
    m_position.store(position, std::memory_order_release);
    m_block.store(block, std::memory_order_release);
    m_nanoseconds.store(nanoseconds, std::memory_order_release);
    m_version.store(version + 2, std::memory_order_release);
}

SampleClock::Mark SampleClock::lastMark() const noexcept {
    for (;;) {
        const std::uint64_t before = m_version.load(std::memory_order_acquire);
        // None of these is read after the second look at the version.
        const Mark mark{m_position.load(std::memory_order_acquire), m_block.load(std::memory_order_acquire),
                        m_nanoseconds.load(std::memory_order_acquire)};
        if (before % 2 == 0 && m_version.load(std::memory_order_relaxed) == before) {
            return mark;
        }
    }
}

std::optional<std::int64_t> SampleClock::sampleAt(std::int64_t nanoseconds) const noexcept {
    if (m_version.load(std::memory_order_acquire) < 2) {
        return std::nullopt;
    }
    const Mark mark = lastMark();
    constexpr std::int64_t second = 1'000'000'000;
    const std::int64_t passed = std::clamp<std::int64_t>(nanoseconds - mark.nanoseconds, 0, second);
    return mark.position + std::min(passed * m_sampleRate / second, mark.block);
}

} // namespace veslora
