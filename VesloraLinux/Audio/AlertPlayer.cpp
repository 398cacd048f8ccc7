// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/AlertPlayer.h"

#include "VesloraUI/Platform/Logs.h"

#include <utility>

namespace veslora {

AlertPlayer::AlertPlayer(Scheduler& scheduler, std::unique_ptr<AudioOutput> output)
    : m_scheduler(scheduler), m_output(std::move(output)) {}

void AlertPlayer::play(const std::string& name) {
    const auto sound = AlertSounds::named(name);
    const std::size_t underWay = m_waiting.size() + (m_mixer ? m_mixer->reclaim() : 0);
    if (!sound) {
        qCWarning(Logs::audio, "no sound has the name that was asked for");
        return;
    }
    if (underWay >= mostAtOnce) {
        qCInfo(Logs::audio, "a sound is left out: %zu are under way", underWay);
        return;
    }
    m_waiting.push_back(*sound);
    if (m_waiting.size() == 1) {
        renderNext();
    }
}

void AlertPlayer::renderNext() {
    if (m_waiting.empty()) {
        return;
    }
    const auto samples = std::make_shared<std::vector<float>>();
    m_rendering = m_scheduler.background(
        [samples, sound = m_waiting.front()] { *samples = AlertSounds::samples(sound, Mixer::sampleRate); },
        [this, samples] {
            m_waiting.pop_front();
            begin(samples);
            renderNext();
        });
}

void AlertPlayer::begin(const Samples& samples) {
    if (!m_mixer) {
        m_mixer = std::make_unique<Mixer>();
    }
    if (!m_mixer->schedule(samples)) {
        qCWarning(Logs::audio, "the mixer has no place for a sound");
    } else if (!m_isPlaying) {
        startOutput();
    }
}

void AlertPlayer::startOutput() {
    m_isPlaying = true;
    m_output->start(*m_mixer, [this](AudioEnd end) { outputEnded(end); });
}

void AlertPlayer::outputEnded(AudioEnd end) {
    m_isPlaying = false;
    if (end == AudioEnd::played && m_mixer->reclaim() > 0) {
        // Asked for when the stream was at its last samples.
        startOutput();
    } else {
        m_mixer.reset();
    }
}

} // namespace veslora
