// SPDX-License-Identifier: MIT
// Loudspeakers that a test moves by hand: nothing is rendered and nothing ends by itself.
#pragma once

#include "VesloraLinux/Audio/AudioOutput.h"
#include "VesloraLinux/Audio/Mixer.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace veslora::testing {

class ManualOutput final : public AudioOutput {
  public:
    void start(Mixer& mixer, std::function<void(AudioEnd)> ended) override {
        ++starts;
        m_mixer = &mixer;
        m_ended = std::move(ended);
    }
    void stop() override {
        m_mixer = nullptr;
        m_ended = nullptr;
    }

    [[nodiscard]] bool isStarted() const { return m_mixer != nullptr; }
    [[nodiscard]] bool isSilent() const { return m_mixer->isSilent(); }
    /// The next samples of what it was started with.
    std::vector<float> render(std::size_t count) {
        std::vector<float> samples(count);
        m_mixer->render(samples);
        return samples;
    }
    /// Ends as an output does by itself.
    void end(AudioEnd end) {
        m_mixer = nullptr;
        std::exchange(m_ended, nullptr)(end);
    }

    int starts = 0;

  private:
    Mixer* m_mixer = nullptr;
    std::function<void(AudioEnd)> m_ended;
};

} // namespace veslora::testing
