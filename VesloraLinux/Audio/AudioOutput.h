// SPDX-License-Identifier: MIT
// A way to the loudspeakers. It is there only while it plays: no stream and no thread of it lives in between.
#pragma once

#include <functional>

namespace veslora {

class Mixer;

enum class AudioEnd {
    played, ///< every sound was heard to its end
    failed, ///< there is no way to the loudspeakers, or it was lost
};

class AudioOutput {
  public:
    virtual ~AudioOutput() = default;

    /// Returns at once. Renders `mixer` until it is silent and all of that was heard, at least one block,
    /// then calls `ended` on the main thread, from where it may be started again. To be called while it is
    /// stopped.
    virtual void start(Mixer& mixer, std::function<void(AudioEnd)> ended) = 0;

    /// Falls silent: the mixer is not touched any more, and `ended` is not called. Nothing happens when it is
    /// stopped already. Destruction stops too.
    virtual void stop() = 0;
};

} // namespace veslora
