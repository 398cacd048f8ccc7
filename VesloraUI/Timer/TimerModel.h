// SPDX-License-Identifier: MIT
// The one timer: owns its countdown, wakes up at the end, and then tells of it by an alert, a sound and a
// notification. Nothing of it outlives the program. Main thread only.
#pragma once

#include "VesloraCore/Timer/Countdown.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>
#include <QQmlEngine>

#include <array>
#include <functional>
#include <optional>

namespace veslora {

class Defaults;
class HapticPerforming;
class SoundPlaying;
class TimerNotifying;

class TimerModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(TimerModel)
    Q_PROPERTY(bool isLiveActivityVisible READ isLiveActivityVisible NOTIFY countdownChanged FINAL)
    Q_PROPERTY(bool isShowingDone READ isShowingDone NOTIFY isShowingDoneChanged FINAL)
    Q_PROPERTY(int selectedMinutes READ selectedMinutes NOTIFY selectedMinutesChanged FINAL)

  public:
    static constexpr std::array presetMinutes{5, 15, 25};
    static constexpr double alertLength = 15; ///< seconds for which a finished timer says so

    /// What of the machine the timer needs.
    struct Seams {
        Scheduler& scheduler;
        SoundPlaying& sounds;
        HapticPerforming& haptics;
        TimerNotifying* notifier = nullptr; ///< null for a timer that must never notify
    };

    /// Idle.
    TimerModel(Defaults& settings, const Seams& seams);
    ~TimerModel() override = default;

    /// Running or paused; absent while there is no timer, and once it has finished.
    [[nodiscard]] const std::optional<Countdown>& countdown() const { return m_countdown; }
    [[nodiscard]] bool isLiveActivityVisible() const { return m_countdown.has_value(); }
    /// Whether the alert of a finished timer is up.
    [[nodiscard]] bool isShowingDone() const { return m_isShowingDone; }
    /// The length that the widget offers.
    [[nodiscard]] int selectedMinutes() const { return m_selectedMinutes; }
    /// Seconds of the last timer that finished, added time included; absent while none has.
    [[nodiscard]] std::optional<double> lastDuration() const { return m_lastDuration; }

    /// Starts a timer of the selected length, in place of one that runs.
    Q_INVOKABLE void start();
    /// Starts the last finished timer once more; does nothing while none has finished.
    Q_INVOKABLE void restart();
    Q_INVOKABLE void pause();
    Q_INVOKABLE void resume();
    /// Adds time to the countdown, if there is one.
    Q_INVOKABLE void add(int minutes);
    /// Ends the timer without a word, and takes the alert of a finished one away.
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void dismissDone();
    /// Selects a length, held between the first and the last that there is.
    Q_INVOKABLE void select(int minutes);
    /// Moves the selection that many lengths on, with a tap under the finger if it moved.
    Q_INVOKABLE void adjustSelection(int steps);

    /// Called when what a closed island shows may have changed.
    std::function<void()> onPresentationChange;

  signals:
    void countdownChanged();
    void isShowingDoneChanged();
    void selectedMinutesChanged();

  private:
    void start(double seconds);
    void scheduleFinish();
    void finishIfDue();
    void tellOfEnd(double duration);
    void clearDone();
    void setCountdown(const std::optional<Countdown>& countdown);
    void presentationChanged() const;

    Defaults& m_settings;
    Seams m_seams;
    std::optional<Countdown> m_countdown;
    bool m_isShowingDone = false;
    int m_selectedMinutes = 5;
    std::optional<double> m_lastDuration;
    Task m_finishTask; ///< waits for the end of a countdown that runs
    Task m_alertTask;  ///< waits until the alert goes
};

} // namespace veslora
