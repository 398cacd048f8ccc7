// SPDX-License-Identifier: MIT
// Loudspeakers that a test moves by hand, block by block, and that stay open: nothing is rendered and nothing
// is lost by itself.
#pragma once

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/OpenAudioOutput.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace veslora::testing {

class ManualOpenOutput final : public OpenAudioOutput {
  public:
    bool canStart = true;
    int starts = 0; ///< attempts included
    int stops = 0;
    std::int64_t heardLater = 0; ///< its latency

    [[nodiscard]] bool start(std::shared_ptr<Mixer> mixer, std::function<void(Loss)> lost) override {
        ++starts;
        if (canStart) {
            m_mixer = std::move(mixer);
            m_lost = std::move(lost);
        }
        return canStart;
    }
    void stop() override {
        ++stops;
        m_mixer = nullptr;
        m_lost = nullptr;
    }
    [[nodiscard]] std::optional<std::int64_t> currentSample() const override {
        return m_mixer && m_mixer->position() > 0 ? std::optional(m_mixer->position()) : std::nullopt;
    }
    [[nodiscard]] std::int64_t latency() const override { return heardLater; }

    [[nodiscard]] bool isStarted() const { return m_mixer != nullptr; }
    /// The next samples of what it was started with.
    std::vector<float> render(std::size_t count) {
        std::vector<float> samples(count);
        m_mixer->render(samples);
        return samples;
    }
    /// Loses its way as an output does by itself.
    void lose(Loss loss) {
        m_mixer = nullptr;
        std::exchange(m_lost, nullptr)(loss);
    }

  private:
    std::shared_ptr<Mixer> m_mixer;
    std::function<void(Loss)> m_lost;
};

} // namespace veslora::testing
