// SPDX-License-Identifier: MIT
// The metronome: owns the clock of its beats, keeps half a second of them queued with the player, and knows
// which beat is heard now. How punctual its own wake-ups are does not matter. Main thread only.
#pragma once

#include "VesloraCore/Metronome/MetronomeClock.h"
#include "VesloraCore/Metronome/MetronomeSound.h"
#include "VesloraCore/Metronome/TapTempo.h"
#include "VesloraCore/Metronome/TimeSignature.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>
#include <QQmlEngine>

#include <cstdint>
#include <functional>
#include <optional>

namespace veslora {

class Defaults;
class MetronomePlaying;
class Suspension;

class MetronomeModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(MetronomeModel)
    Q_PROPERTY(int bpm READ bpm WRITE setBpm NOTIFY bpmChanged FINAL)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged FINAL)

  public:
    static constexpr double pumpPeriod = 0.1;      ///< seconds between two looks at what to queue
    static constexpr double lookAhead = 0.5;       ///< seconds for which beats are queued
    static constexpr double previewLength = 0.9;   ///< seconds that a preview lasts at least
    static constexpr double previewPatience = 5.0; ///< seconds more that it gives a slow player

    /// What of the machine the metronome needs. All of it outlives the model, to which alone the player
    /// belongs.
    struct Seams {
        Scheduler& scheduler;
        MetronomePlaying& player;
        Suspension& suspension;
    };

    /// The beat that is heard now.
    struct BeatPhase {
        int inBar = 0;              ///< 0 for the first of a bar
        double secondsIntoBeat = 0; ///< since it began

        bool operator==(const BeatPhase&) const = default;
    };

    /// Stopped, with what the settings say.
    MetronomeModel(Defaults& settings, const Seams& seams);
    ~MetronomeModel() override;

    /// Beats per minute, within `MetronomeTempo::range`, also after a write of any other number.
    [[nodiscard]] int bpm() const { return m_tempo; }
    void setBpm(int bpm);
    /// A new one begins with the first beat that is not queued yet, and opens a bar.
    [[nodiscard]] TimeSignature signature() const { return m_signature; }
    void setSignature(TimeSignature signature);
    /// Beats that are queued already keep theirs.
    [[nodiscard]] MetronomeSound sound() const { return m_sound; }
    void setSound(MetronomeSound sound);
    [[nodiscard]] bool isRunning() const { return m_isRunning; }

    /// The place in its bar of the beat that is heard now, from 0 on. Absent while the metronome is stopped
    /// and before the first beat. Nothing tells of each beat: a view asks.
    [[nodiscard]] std::optional<int> currentBeat() const;
    [[nodiscard]] std::optional<BeatPhase> beatPhase() const;

    /// Begins with the first beat of a bar. Where there is no way to the loudspeakers it stays stopped, or
    /// stops once that shows.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    Q_INVOKABLE void toggle();
    /// Makes it that many beats per minute faster, or slower for a negative number.
    Q_INVOKABLE void adjust(int by);
    /// Takes the tempo over that somebody taps, from the second tap on.
    Q_INVOKABLE void tap();
    Q_INVOKABLE void cycleSignature();
    /// Plays the sound once as an accent, if accents are on, and once as a beat. Does nothing while the
    /// metronome runs, and for the silent sound.
    Q_INVOKABLE void preview();

    /// Called after a start, a stop, and every write of the tempo.
    std::function<void()> onChange;

  signals:
    void bpmChanged();
    void signatureChanged();
    void soundChanged();
    void isRunningChanged();

  private:
    /// Takes over what somebody else has stored.
    void applySettings();
    void takeTempo(int bpm);
    void takeSignature(TimeSignature signature);
    void configurationChanged();
    void playerFailed();
    void pump();
    void endPreview(std::int64_t end, double waited);
    void setVolume();
    void changed() const;
    [[nodiscard]] std::optional<std::int64_t> startPlayer();
    [[nodiscard]] std::optional<std::int64_t> heardSample() const;
    [[nodiscard]] std::int64_t samples(double seconds) const;

    Defaults& m_settings;
    Seams m_seams;
    int m_tempo;
    TimeSignature m_signature;
    MetronomeSound m_sound;
    bool m_isAccented;
    bool m_isRunning = false;
    std::optional<MetronomeClock> m_clock; ///< there while it runs
    std::int64_t m_nextBeat = 0;           ///< the first that is not queued yet
    TapTempo m_tapTempo;
    Task m_pumpTask;
    Task m_previewTask;
};

} // namespace veslora
