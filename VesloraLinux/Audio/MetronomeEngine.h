// SPDX-License-Identifier: MIT
// Plays the metronome's sounds on exact samples of an output that stays open from a start to a stop. Each
// sound is rendered when it is first used and kept from then on. Main thread only.
#pragma once

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/OpenAudioOutput.h"
#include "VesloraUI/Platform/MetronomePlaying.h"

#include <map>
#include <memory>
#include <utility>

namespace veslora {

class MetronomeEngine final : public MetronomePlaying {
  public:
    /// How far ahead the first beat lies, so that there is time to queue it.
    static constexpr std::int64_t leadIn = 4800;
    /// A stream that is lost sooner than that after its start would be lost again.
    static constexpr std::int64_t leastRun = Mixer::sampleRate;

    explicit MetronomeEngine(std::unique_ptr<OpenAudioOutput> output);

    [[nodiscard]] std::optional<std::int64_t> currentSample() const override;
    [[nodiscard]] double sampleRate() const override { return Mixer::sampleRate; }
    [[nodiscard]] std::int64_t outputLatency() const override { return m_output->latency(); }
    [[nodiscard]] StartResult start() override;
    void stop() override;
    void schedule(MetronomeSound sound, bool accent, std::int64_t atSample) override;
    void setVolume(float volume) override;

  private:
    [[nodiscard]] Samples buffer(MetronomeSound sound, bool accent);
    void lost(OpenAudioOutput::Loss loss);

    std::map<std::pair<MetronomeSound, bool>, Samples> m_buffers;
    float m_volume = 1;
    std::shared_ptr<Mixer> m_mixer; ///< there while it runs
    std::unique_ptr<OpenAudioOutput> m_output;
};

} // namespace veslora
