// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/Mixer.h"

#include <algorithm>
#include <cmath>

namespace veslora {
namespace {

/// 3 million years of samples: starts beyond are moved here, so that sums of them never overflow.
constexpr std::int64_t furthest = std::int64_t{1} << 62;

/// Bends what is above 0.8 towards 1; it goes on there with the same slope.
float saturated(float value) {
    constexpr float knee = 0.8F;
    constexpr float room = 1 - knee;
    constexpr float mostExcess = 1e6F; // beyond, the sum would be rounded to 1
    const float magnitude = std::abs(value);
    if (magnitude <= knee) {
        return value;
    }
    const float excess = std::min((magnitude - knee) / room, mostExcess);
    return std::copysign(knee + room * (excess / (1 + excess)), value);
}

} // namespace

bool Mixer::schedule(const Samples& samples, std::optional<std::int64_t> start, Late late) {
    if (!samples || samples->empty()) {
        return true;
    }
    reclaim();
    const auto free = std::ranges::find(m_owners, nullptr);
    if (free == m_owners.end()) {
        return false;
    }
    const Voice voice{.slot = static_cast<std::size_t>(free - m_owners.begin()),
                      .samples = samples->data(),
                      .length = static_cast<std::int64_t>(samples->size()),
                      .start = std::clamp(start.value_or(0), -furthest, furthest),
                      .startsAtOnce = !start,
                      .late = late};
    if (!m_scheduled.push(voice)) {
        return false;
    }
    *free = samples;
    return true;
}

std::size_t Mixer::reclaim() {
    while (const auto slot = m_finished.pop()) {
        m_owners[*slot].reset();
    }
    return static_cast<std::size_t>(
        std::ranges::count_if(m_owners, [](const Samples& samples) { return samples != nullptr; }));
}

void Mixer::setVolume(float volume) {
    m_volume.store(volume > 0 ? std::min(volume, 1.0F) : 0, std::memory_order_relaxed);
}

void Mixer::render(std::span<float> block) noexcept {
    takeScheduled();
    std::ranges::fill(block, 0.0F);
    for (std::size_t index = 0; index < m_voiceCount; ++index) {
        add(m_voices[index], block);
    }
    shape(block);
    const std::int64_t end =
        m_position.load(std::memory_order_relaxed) + static_cast<std::int64_t>(block.size());
    giveBackFinished(end);
    m_position.store(end, std::memory_order_release);
}

void Mixer::takeScheduled() noexcept {
    const std::int64_t position = m_position.load(std::memory_order_relaxed);
    // As many voices fit as there are owners, so none is ever refused here.
    while (const auto taken = m_scheduled.pop()) {
        Voice& voice = m_voices[m_voiceCount++];
        voice = *taken;
        if (voice.startsAtOnce) {
            voice.start = position;
        } else if (voice.start + voice.length <= position ||
                   (voice.late == Late::dropped && voice.start < position)) {
            m_missed.fetch_add(1, std::memory_order_relaxed);
            voice.length = 0;
        }
    }
}

void Mixer::add(const Voice& voice, std::span<float> block) const noexcept {
    const std::int64_t position = m_position.load(std::memory_order_relaxed);
    const std::int64_t first = std::max(position, voice.start);
    const std::int64_t end =
        std::min(position + static_cast<std::int64_t>(block.size()), voice.start + voice.length);
    for (std::int64_t sample = first; sample < end; ++sample) {
        block[static_cast<std::size_t>(sample - position)] += voice.samples[sample - voice.start];
    }
}

void Mixer::giveBackFinished(std::int64_t end) noexcept {
    for (std::size_t index = 0; index < m_voiceCount;) {
        const Voice& voice = m_voices[index];
        // Never refused, since the ring has room for every slot.
        if (voice.start + voice.length <= end && m_finished.push(voice.slot)) {
            m_voices[index] = m_voices[--m_voiceCount];
        } else {
            ++index;
        }
    }
}

void Mixer::shape(std::span<float> block) noexcept {
    const float volume = m_volume.load(std::memory_order_relaxed);
    if (m_position.load(std::memory_order_relaxed) == 0) {
        m_reachedVolume = volume;
    }
    const float change = block.empty() ? 0 : (volume - m_reachedVolume) / static_cast<float>(block.size());
    for (std::size_t index = 0; index < block.size(); ++index) {
        block[index] = saturated(block[index] * (m_reachedVolume + change * static_cast<float>(index + 1)));
    }
    m_reachedVolume = block.empty() ? m_reachedVolume : volume;
}

} // namespace veslora
