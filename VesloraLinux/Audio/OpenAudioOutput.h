// SPDX-License-Identifier: MIT
// A way to the loudspeakers that stays open, also while nothing sounds, and that knows the time: what plays a
// beat. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace veslora {

class Mixer;

class OpenAudioOutput {
  public:
    enum class Loss {
        changed, ///< sound goes another way now, which a new start would take
        failed,  ///< there is no way, or none that works
    };

    virtual ~OpenAudioOutput() = default;

    /// Begins to render `mixer`, not before the event loop's next turn, so that whatever is queued right away
    /// is in time, and goes on until it is stopped. Never waits for a server. False when there is no way to
    /// the loudspeakers; where that shows later, or the way is lost, `lost` is called once, on the main
    /// thread, after the output has stopped. To be called while it is stopped.
    [[nodiscard]] virtual bool start(std::shared_ptr<Mixer> mixer, std::function<void(Loss)> lost) = 0;

    /// Silent at once; `lost` is not called. Nothing happens when it is stopped already. Destruction stops
    /// too.
    virtual void stop() = 0;

    /// By the device's clock, in samples of the mixer; never before its position. Absent while nothing was
    /// rendered since the start. It never goes back.
    [[nodiscard]] virtual std::optional<std::int64_t> currentSample() const = 0;

    /// How many samples after `currentSample` one is heard: measured at the start, and the same from then on.
    [[nodiscard]] virtual std::int64_t latency() const = 0;
};

} // namespace veslora
