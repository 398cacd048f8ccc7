// SPDX-License-Identifier: MIT
// What runs on the thread of a sound card: it must not wait, so it neither allocates nor locks nor calls the
// system, whatever the metronome does meanwhile.
#include "VesloraCore/Metronome/MetronomeSounds.h"
#include "VesloraLinux/Audio/HeldLatency.h"
#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/SampleClock.h"
#include "tests/VesloraLinux/Audio/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <mutex>

namespace veslora {
namespace {

using testing::RealTimeGuard;
using testing::SystemCalls;

/// Everything that an output's thread does of ours for one block.
class AudioThread {
  public:
    AudioThread() {
        for (const MetronomeSound sound :
             {MetronomeSound::click, MetronomeSound::hihat, MetronomeSound::beep}) {
            m_sounds.push_back(
                std::make_shared<const std::vector<float>>(*MetronomeSounds::samples(sound, true)));
        }
    }

    /// The main thread's part: beats close together, one of them late, and another volume.
    void queue() {
        for (std::size_t index = 0; index < m_sounds.size(); ++index) {
            const auto place = m_mixer.position() + static_cast<std::int64_t>(index) * 700 - 100;
            (void)m_mixer.schedule(m_sounds[index], place, Mixer::Late::dropped);
            (void)m_mixer.schedule(m_sounds[index], place);
        }
        m_mixer.setVolume(m_mixer.position() % 2 == 0 ? 0.3F : 0.9F);
    }
    void render() noexcept {
        m_mixer.render(m_block);
        m_clock.mark(m_mixer.position(), static_cast<std::int64_t>(m_block.size()), ++m_time);
        m_latency.add(m_time % 100);
        if (m_time % 64 == 0) {
            m_latency.measureAgain();
        }
    }
    [[nodiscard]] std::uint64_t missed() const { return m_mixer.missed(); }

  private:
    std::vector<Samples> m_sounds;
    Mixer m_mixer;
    SampleClock m_clock{Mixer::sampleRate};
    HeldLatency m_latency;
    std::vector<float> m_block = std::vector<float>(481);
    std::int64_t m_time = 0;
};

TEST(RealTime, TheGuardSeesHeapAndLocks) {
    if (!RealTimeGuard::isWatching()) {
        GTEST_SKIP() << "the sanitizer has them for itself";
    }
    std::mutex mutex;
    void* volatile memory = nullptr;
    std::size_t heap = 0;
    std::size_t locks = 0;
    {
        const RealTimeGuard guard;
        memory = std::malloc(100);
        std::free(memory);
        delete new AudioThread;
        const std::lock_guard lock(mutex);
        heap = guard.heapCalls();
        locks = guard.lockCalls();
    }
    EXPECT_GT(heap, 4U);
    EXPECT_EQ(locks, 1U);
}

TEST(RealTime, TheKernelSeesACallOfTheSystem) {
    const SystemCalls calls = testing::systemCallsOf([] {
        const timespec none{};
        nanosleep(&none, nullptr);
    });
    if (calls == SystemCalls::unwatchable) {
        GTEST_SKIP() << "this machine holds no process to that";
    }
    EXPECT_EQ(calls, SystemCalls::some);
}

TEST(RealTime, RenderingNeitherAllocatesNorLocks) {
    if (!RealTimeGuard::isWatching()) {
        GTEST_SKIP() << "the sanitizer has them for itself";
    }
    AudioThread audio;
    std::size_t heap = 0;
    std::size_t locks = 0;
    for (int round = 0; round < 2000; ++round) {
        if (round % 10 == 0) {
            audio.queue();
        }
        const RealTimeGuard guard;
        audio.render();
        heap += guard.heapCalls();
        locks += guard.lockCalls();
    }
    EXPECT_EQ(heap, 0U);
    EXPECT_EQ(locks, 0U);
    EXPECT_GT(audio.missed(), 100U) << "late ones are among them";
}

TEST(RealTime, RenderingNeverCallsTheSystem) {
    AudioThread audio;
    audio.queue();
    const SystemCalls calls = testing::systemCallsOf([&audio] {
        for (int round = 0; round < 2000; ++round) {
            audio.render();
        }
    });
    if (calls == SystemCalls::unwatchable) {
        GTEST_SKIP() << "this machine holds no process to that";
    }
    EXPECT_EQ(calls, SystemCalls::none);
}

} // namespace
} // namespace veslora
