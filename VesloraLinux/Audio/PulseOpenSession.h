// SPDX-License-Identifier: MIT
// Plays a mixer until it is stopped, also while it is silent, and tells the time by the server's device.
// Made, run and destroyed on one thread of its own.
#pragma once

#include "VesloraLinux/Audio/HeldLatency.h"
#include "VesloraLinux/Audio/PulseSession.h"
#include "VesloraLinux/Audio/SampleClock.h"

#include <functional>

namespace veslora {

/// Finished when the stream was moved to another device.
class PulseOpenSession final : public PulseSession {
  public:
    /// Samples from the start within which a move is followed without a word: that is the server finding the
    /// stream's place.
    static constexpr std::int64_t settling = 48000;

    /// What it tells while it goes on. Its reader may be on another thread.
    struct Time {
        SampleClock clock;
        HeldLatency latency;
    };

    struct Hooks {
        std::function<void()> found;      ///< a way to the server is there
        std::function<void()> awaitQueue; ///< returns when the first block may be rendered
    };

    PulseOpenSession(const PulseLibrary& library, const PulseOptions& options, Mixer& mixer,
                     int stopDescriptor, Time& time, Hooks hooks);

  private:
    void serverFound() override { m_hooks.found(); }
    void serverReady() override;
    void streamOpened() override;
    void wrote(std::size_t samples) override;
    [[nodiscard]] pa_stream_flags_t flags() const override;
    void moved();
    void measureLatency();

    Time& m_time;
    Hooks m_hooks;
};

} // namespace veslora
