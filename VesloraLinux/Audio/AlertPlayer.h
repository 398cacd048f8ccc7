// SPDX-License-Identifier: MIT
// Plays the alert sounds. They are rendered in the background when asked for and forgotten when they were
// heard: between sounds there is neither a thread nor a stream nor a sample of them. Main thread only.
#pragma once

#include "VesloraCore/Sound/AlertSounds.h"
#include "VesloraLinux/Audio/AudioOutput.h"
#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/SoundPlaying.h"

#include <cstddef>
#include <deque>
#include <memory>

namespace veslora {

class AlertPlayer final : public SoundPlaying {
  public:
    /// How many sounds may be under way. Any more at that time are dropped: nobody can tell them apart.
    static constexpr std::size_t mostAtOnce = 8;

    AlertPlayer(Scheduler& scheduler, std::unique_ptr<AudioOutput> output);

    /// Sounds that overlap are mixed. When the output fails, what it had is dropped, and the next sound tries
    /// again.
    void play(const std::string& name) override;

  private:
    void renderNext();
    void begin(const Samples& samples);
    void startOutput();
    void outputEnded(AudioEnd end);

    Scheduler& m_scheduler;
    std::deque<AlertSound> m_waiting; ///< to be rendered, the first of which is being so
    Task m_rendering;
    std::unique_ptr<Mixer> m_mixer; ///< there from the first sound until all were heard
    bool m_isPlaying = false;
    std::unique_ptr<AudioOutput> m_output;
};

} // namespace veslora
