// SPDX-License-Identifier: MIT
// The seam for the metronome's sound: sounds are queued ahead for exact samples of the device's own clock.
// Main thread only.
#pragma once

#include "VesloraCore/Metronome/MetronomeSound.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <variant>

namespace veslora {

enum class MetronomeError : std::uint8_t {
    engineFailed, ///< there is no way to the loudspeakers
};

class MetronomePlaying {
  public:
    /// The sample on which the first beat should fall, or why nothing plays.
    using StartResult = std::variant<std::int64_t, MetronomeError>;

    virtual ~MetronomePlaying() = default;

    /// Where the player is now, in samples; absent while it does not run, and until the device has taken its
    /// first sample. It never goes back between a start and a stop.
    [[nodiscard]] virtual std::optional<std::int64_t> currentSample() const = 0;

    [[nodiscard]] virtual double sampleRate() const = 0; ///< hertz

    /// How many samples after `currentSample` one is heard.
    [[nodiscard]] virtual std::int64_t outputLatency() const = 0;

    /// Starts the sample clock, which may count from 0 again, and leaves one that runs alone. Never waits for
    /// a sound server: where one is found not to be there, or not to work, only after this has returned,
    /// `onFailure` follows.
    [[nodiscard]] virtual StartResult start() = 0;

    /// Falls silent at once and drops what is queued. Nothing happens when it does not run.
    virtual void stop() = 0;

    /// Queues a sound to begin on that sample. One whose sample has passed is not heard, nor is any while the
    /// player does not run.
    virtual void schedule(MetronomeSound sound, bool accent, std::int64_t atSample) = 0;

    /// From 0 to 1, for all sounds, those that are queued included.
    virtual void setVolume(float volume) = 0;

    /// Called after sound goes another way than at the start, as when headphones were unplugged: the player
    /// has stopped, and a new start takes the new way.
    std::function<void()> onConfigurationChange;
    /// Called after there is no way at all any more, or there never was: the player has stopped.
    std::function<void()> onFailure;
};

} // namespace veslora
