// SPDX-License-Identifier: MIT
#include "VesloraUI/Metronome/MetronomeModel.h"

#include "VesloraCore/Metronome/MetronomeTempo.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/MetronomePlaying.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>

namespace veslora {

namespace {

int storedTempo(const Defaults& settings) {
    const int stored = settings.integerValue(SettingsKeys::metronomeBPM);
    return stored == 0 ? MetronomeTempo::defaultBPM : MetronomeTempo::clamped(stored);
}

} // namespace

MetronomeModel::MetronomeModel(Defaults& settings, const Seams& seams)
    : m_settings(settings), m_seams(seams), m_tempo(storedTempo(settings)),
      m_signature(TimeSignature::fromStoredValue(settings.stringValue(SettingsKeys::metronomeSignature))),
      m_sound(metronomeSoundFrom(settings.stringValue(SettingsKeys::metronomeSound))),
      m_isAccented(settings.boolValue(SettingsKeys::metronomeAccent)) {
    // A machine that wakes up does not go on beating by itself.
    connect(&seams.suspension, &Suspension::willSleep, this, &MetronomeModel::stop);
    connect(&settings, &Defaults::changed, this, &MetronomeModel::applySettings);
    seams.player.onConfigurationChange = [this] { configurationChanged(); };
    seams.player.onFailure = [this] { playerFailed(); };
}

MetronomeModel::~MetronomeModel() {
    m_seams.player.onConfigurationChange = nullptr;
    m_seams.player.onFailure = nullptr;
    m_seams.player.stop();
}

void MetronomeModel::setBpm(int bpm) {
    takeTempo(MetronomeTempo::clamped(bpm));
    m_settings.set(SettingsKeys::metronomeBPM, m_tempo);
    changed();
}

void MetronomeModel::takeTempo(int bpm) {
    assign(this, m_tempo, bpm, &MetronomeModel::bpmChanged);
    if (m_clock) {
        // The last beat that is queued stays, and the next one follows it at the new tempo.
        m_clock = m_clock->withTempo(m_tempo, std::max<std::int64_t>(m_nextBeat - 1, 0));
    }
}

void MetronomeModel::setSignature(TimeSignature signature) {
    takeSignature(signature);
    m_settings.set(SettingsKeys::metronomeSignature, m_signature.storedValue());
}

void MetronomeModel::takeSignature(TimeSignature signature) {
    assign(this, m_signature, signature, &MetronomeModel::signatureChanged);
    if (m_clock) {
        m_clock = m_clock->withBeatsPerBar(m_signature.beats, m_nextBeat);
    }
}

void MetronomeModel::setSound(MetronomeSound sound) {
    assign(this, m_sound, sound, &MetronomeModel::soundChanged);
    m_settings.set(SettingsKeys::metronomeSound, rawValue(m_sound));
}

void MetronomeModel::applySettings() {
    const auto signature =
        TimeSignature::fromStoredValue(m_settings.stringValue(SettingsKeys::metronomeSignature));
    if (signature != m_signature) {
        takeSignature(signature);
    }
    if (const int tempo = storedTempo(m_settings); tempo != m_tempo) {
        takeTempo(tempo);
        changed();
    }
    // Not by `setSound`, since a text that names no sound stays in the store.
    assign(this, m_sound, metronomeSoundFrom(m_settings.stringValue(SettingsKeys::metronomeSound)),
           &MetronomeModel::soundChanged);
    m_isAccented = m_settings.boolValue(SettingsKeys::metronomeAccent);
    if (m_isRunning) {
        setVolume();
    }
}

void MetronomeModel::configurationChanged() {
    if (m_isRunning) {
        stop();
        start();
    }
}

void MetronomeModel::playerFailed() {
    if (m_isRunning) {
        qCInfo(Logs::audio, "the metronome stops, as it can't be heard");
        stop();
    }
}

void MetronomeModel::start() {
    if (m_isRunning) {
        return;
    }
    setVolume();
    const auto first = startPlayer();
    if (!first) {
        return;
    }
    m_clock.emplace(m_tempo, m_signature.beats, *first, m_seams.player.sampleRate());
    m_nextBeat = 0;
    assign(this, m_isRunning, true, &MetronomeModel::isRunningChanged);
    pump();
    m_pumpTask = m_seams.scheduler.every(pumpPeriod, Precision::exact, [this] { pump(); });
    changed();
}

void MetronomeModel::stop() {
    m_pumpTask.cancel();
    if (m_isRunning) {
        m_previewTask.cancel();
        m_seams.player.stop();
    }
    m_clock = std::nullopt;
    assign(this, m_isRunning, false, &MetronomeModel::isRunningChanged);
    changed();
}

void MetronomeModel::toggle() {
    if (m_isRunning) {
        stop();
    } else {
        start();
    }
}

void MetronomeModel::adjust(int by) {
    const std::int64_t sum = std::int64_t{m_tempo} + by;
    setBpm(static_cast<int>(
        std::clamp<std::int64_t>(sum, MetronomeTempo::range.lower, MetronomeTempo::range.upper)));
}

void MetronomeModel::tap() {
    // Not by the wall clock: one that is set between two taps would become a tempo.
    if (const auto tapped = m_tapTempo.tap(m_seams.scheduler.steadyNow())) {
        setBpm(*tapped);
    }
}

void MetronomeModel::cycleSignature() {
    setSignature(m_signature.next());
}

void MetronomeModel::pump() {
    if (!m_clock) {
        return;
    }
    const std::int64_t sample = m_seams.player.currentSample().value_or(m_clock->beatTime(0));
    const std::int64_t horizon = sample + samples(lookAhead);
    for (;; ++m_nextBeat) {
        const std::int64_t time = m_clock->beatTime(m_nextBeat);
        if (time > horizon) {
            return;
        }
        // What has passed is left out, so that a stall is not followed by a burst.
        if (m_sound != MetronomeSound::silent && time >= sample) {
            const auto beat = m_clock->beat(time);
            m_seams.player.schedule(m_sound, m_isAccented && beat && beat->inBar == 0, time);
        }
    }
}

void MetronomeModel::preview() {
    if (m_isRunning || m_sound == MetronomeSound::silent) {
        return;
    }
    setVolume();
    const auto first = startPlayer();
    if (!first) {
        return;
    }
    constexpr double gap = 0.35;
    constexpr double longestSound = 0.1;
    const std::int64_t second = *first + samples(gap);
    m_seams.player.schedule(m_sound, m_isAccented, *first);
    m_seams.player.schedule(m_sound, false, second);
    const std::int64_t end = second + samples(longestSound);
    m_previewTask = m_seams.scheduler.after(previewLength, [this, end] { endPreview(end, 0); });
}

/// A start waits for no player, so one that was slow gets the time that it needs to be heard.
void MetronomeModel::endPreview(std::int64_t end, double waited) {
    if (m_isRunning) {
        return;
    }
    const auto heard = heardSample();
    if ((heard && *heard >= end) || waited >= previewPatience) {
        m_seams.player.stop();
    } else {
        m_previewTask = m_seams.scheduler.after(
            pumpPeriod, [this, end, waited] { endPreview(end, waited + pumpPeriod); });
    }
}

std::optional<int> MetronomeModel::currentBeat() const {
    const auto phase = beatPhase();
    return phase ? std::optional(phase->inBar) : std::nullopt;
}

std::optional<MetronomeModel::BeatPhase> MetronomeModel::beatPhase() const {
    const auto heard = heardSample();
    const auto beat = m_clock && heard ? m_clock->beat(*heard) : std::nullopt;
    if (!beat) {
        return std::nullopt;
    }
    const std::int64_t since = *heard - m_clock->beatTime(beat->number);
    return BeatPhase{beat->inBar, static_cast<double>(since) / m_seams.player.sampleRate()};
}

std::optional<std::int64_t> MetronomeModel::heardSample() const {
    const auto sample = m_seams.player.currentSample();
    return sample ? std::optional(*sample - m_seams.player.outputLatency()) : std::nullopt;
}

std::optional<std::int64_t> MetronomeModel::startPlayer() {
    const MetronomePlaying::StartResult result = m_seams.player.start();
    if (const auto* first = std::get_if<std::int64_t>(&result)) {
        return *first;
    }
    qCInfo(Logs::audio, "the metronome's player can't start");
    return std::nullopt;
}

void MetronomeModel::setVolume() {
    m_seams.player.setVolume(static_cast<float>(m_settings.doubleValue(SettingsKeys::metronomeVolume)));
}

/// A fraction of a sample is cut off.
std::int64_t MetronomeModel::samples(double seconds) const {
    return static_cast<std::int64_t>(m_seams.player.sampleRate() * seconds);
}

void MetronomeModel::changed() const {
    if (onChange) {
        onChange();
    }
}

} // namespace veslora
