// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/MetronomeEngine.h"

#include "VesloraCore/Metronome/MetronomeSounds.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>

namespace veslora {

static_assert(MetronomeSounds::sampleRate == Mixer::sampleRate);

MetronomeEngine::MetronomeEngine(std::unique_ptr<OpenAudioOutput> output) : m_output(std::move(output)) {}

std::optional<std::int64_t> MetronomeEngine::currentSample() const {
    return m_mixer ? m_output->currentSample() : std::nullopt;
}

MetronomePlaying::StartResult MetronomeEngine::start() {
    if (!m_mixer) {
        // A new one each time: nothing of what was queued is left, and the clock begins with it.
        m_mixer = std::make_shared<Mixer>();
        m_mixer->setVolume(m_volume);
        if (!m_output->start(m_mixer, [this](OpenAudioOutput::Loss loss) { lost(loss); })) {
            m_mixer.reset();
            return MetronomeError::engineFailed;
        }
    }
    return currentSample().value_or(0) + leadIn;
}

void MetronomeEngine::stop() {
    m_output->stop();
    m_mixer.reset();
}

void MetronomeEngine::schedule(MetronomeSound sound, bool accent, std::int64_t atSample) {
    const Samples samples = buffer(sound, accent);
    if (m_mixer && samples && !m_mixer->schedule(samples, atSample, Mixer::Late::dropped)) {
        qCWarning(Logs::audio, "the mixer has no place for a beat");
    }
}

Samples MetronomeEngine::buffer(MetronomeSound sound, bool accent) {
    const auto found = m_buffers.find({sound, accent});
    if (found != m_buffers.end()) {
        return found->second;
    }
    auto samples = MetronomeSounds::samples(sound, accent);
    if (!samples) {
        return nullptr;
    }
    const auto kept = std::make_shared<const std::vector<float>>(std::move(*samples));
    return m_buffers.emplace(std::pair(sound, accent), kept).first->second;
}

void MetronomeEngine::setVolume(float volume) {
    m_volume = volume;
    if (m_mixer) {
        m_mixer->setVolume(volume);
    }
}

void MetronomeEngine::lost(OpenAudioOutput::Loss loss) {
    const bool ranLong = m_mixer->position() >= leastRun;
    m_mixer.reset();
    const auto& tell = loss == OpenAudioOutput::Loss::changed && ranLong ? onConfigurationChange : onFailure;
    if (tell) {
        tell();
    }
}

} // namespace veslora
