// SPDX-License-Identifier: MIT
// Adds sounds up, each from its exact sample on. Two threads share it: the main thread schedules and frees,
// the thread of an audio output renders, and neither ever waits for the other.
#pragma once

#include "VesloraLinux/Audio/HandoverRing.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace veslora {

/// The samples of one sound, in one channel. Nobody changes them once they are scheduled.
using Samples = std::shared_ptr<const std::vector<float>>;

class Mixer {
  public:
    static constexpr int sampleRate = 48000; ///< hertz
    /// How many sounds can be scheduled at once, those that play included.
    static constexpr std::size_t capacity = 64;

    /// What becomes of a sound whose start was rendered already.
    enum class Late {
        continued, ///< it goes on from where it would be by now, so that what it stands for stays in time
        dropped,   ///< it is not heard
    };

    Mixer() = default;
    ~Mixer() = default;
    Mixer(const Mixer&) = delete;
    Mixer& operator=(const Mixer&) = delete;

    /// Main thread. Lets a sound begin at `start`, counted in samples from the first one rendered; without it
    /// as soon as there is anything to render. A sound that comes late and would be over by now is dropped in
    /// either case; `missed` counts those that were. False, with nothing scheduled, when `capacity` sounds
    /// are in there. No samples are no sound: nothing happens and the result is true.
    [[nodiscard]] bool schedule(const Samples& samples, std::optional<std::int64_t> start = {},
                                Late late = Late::continued);

    /// Main thread. Frees the sounds that are over and tells how many are still to come or playing.
    std::size_t reclaim();

    /// Main thread. From 0 to 1, what every sound is multiplied with; others count as the nearest, no number
    /// as 0. It moves there within one block, without a step; the first block has it from its start.
    void setVolume(float volume);

    /// Any thread. How many samples were rendered, which is where the next one falls.
    [[nodiscard]] std::int64_t position() const { return m_position.load(std::memory_order_acquire); }
    /// Any thread. How many sounds came too late to be heard.
    [[nodiscard]] std::uint64_t missed() const { return m_missed.load(std::memory_order_relaxed); }

    /// Audio thread. Fills `block` with the next samples. A sum up to 0.8 passes as it is; beyond, it is bent
    /// so that it never reaches 1. Neither allocates nor frees nor locks nor calls the system.
    void render(std::span<float> block) noexcept;
    /// Audio thread. Whether nothing plays and nothing is scheduled.
    [[nodiscard]] bool isSilent() const noexcept { return m_voiceCount == 0 && m_scheduled.isEmpty(); }

  private:
    struct Voice {
        std::size_t slot = 0; ///< of the owner
        const float* samples = nullptr;
        std::int64_t length = 0;
        std::int64_t start = 0;
        bool startsAtOnce = false;
        Late late = Late::continued;
    };

    static_assert(std::atomic<std::int64_t>::is_always_lock_free);
    static_assert(std::atomic<float>::is_always_lock_free);

    void takeScheduled() noexcept;
    void add(const Voice& voice, std::span<float> block) const noexcept;
    void giveBackFinished(std::int64_t end) noexcept;
    void shape(std::span<float> block) noexcept;

    // The main thread's. Only it counts the owners of a sound, so that the last one always goes there.
    std::array<Samples, capacity> m_owners;

    HandoverRing<Voice, capacity> m_scheduled;
    HandoverRing<std::size_t, capacity> m_finished; ///< slots
    std::atomic<std::int64_t> m_position = 0;
    std::atomic<std::uint64_t> m_missed = 0;
    std::atomic<float> m_volume = 1;

    // The audio thread's.
    std::array<Voice, capacity> m_voices;
    std::size_t m_voiceCount = 0;
    float m_reachedVolume = 1;
};

} // namespace veslora
