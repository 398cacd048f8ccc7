// SPDX-License-Identifier: MIT
// What the thread that plays to a sound server shares with the output that started it, for as long as
// somebody wants the stream.
#pragma once

#include "VesloraLinux/Audio/HeldLatency.h"
#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/SampleClock.h"

#include <cstdint>
#include <functional>

namespace veslora {

struct OpenStream {
    /// Samples from the start within which a move to another device is followed without a word: that is the
    /// server finding the stream's place.
    static constexpr std::int64_t settling = Mixer::sampleRate;

    Mixer& mixer;
    int stopDescriptor;               ///< becomes readable when the stream is to end
    std::function<void()> found;      ///< to be called once there is a way to a server
    std::function<void()> awaitQueue; ///< returns when the first block may be rendered

    // Written by the thread that renders, read by any.
    SampleClock clock = SampleClock(Mixer::sampleRate);
    HeldLatency latency;
};

} // namespace veslora
