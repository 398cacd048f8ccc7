// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/TimerModel.h"

#include "VesloraCore/Timer/TimerLengths.h"
#include "VesloraUI/Platform/HapticPerforming.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Platform/SoundPlaying.h"
#include "VesloraUI/Platform/TimerNotifying.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>

namespace veslora {

namespace {

constexpr double minute = 60;

} // namespace

TimerModel::TimerModel(Defaults& settings, const Seams& seams) : m_settings(settings), m_seams(seams) {}

void TimerModel::start() {
    start(m_selectedMinutes * minute);
}

void TimerModel::restart() {
    if (m_lastDuration) {
        start(*m_lastDuration);
    }
}

void TimerModel::start(double seconds) {
    // Asked here and not at launch: only now does the user know what the question is about.
    if (m_seams.notifier && m_settings.boolValue(SettingsKeys::timerNotifications)) {
        m_seams.notifier->requestPermission();
    }
    // In this order, so that the island goes from the alert to the wings without closing in between.
    setCountdown(Countdown(seconds, m_seams.scheduler.now()));
    clearDone();
    scheduleFinish();
    presentationChanged();
}

void TimerModel::pause() {
    auto countdown = m_countdown;
    if (countdown) {
        countdown->pause(m_seams.scheduler.now());
    }
    m_finishTask.cancel();
    setCountdown(countdown);
}

void TimerModel::resume() {
    auto countdown = m_countdown;
    if (countdown) {
        countdown->resume(m_seams.scheduler.now());
    }
    setCountdown(countdown);
    scheduleFinish();
}

void TimerModel::add(int minutes) {
    auto countdown = m_countdown;
    if (countdown) {
        countdown->extend(minutes * minute, m_seams.scheduler.now());
    }
    setCountdown(countdown);
    scheduleFinish();
    presentationChanged();
}

void TimerModel::cancel() {
    m_finishTask.cancel();
    setCountdown(std::nullopt);
    clearDone();
    presentationChanged();
}

void TimerModel::dismissDone() {
    clearDone();
    presentationChanged();
}

void TimerModel::select(int minutes) {
    const int held = std::clamp(minutes, TimerLengths::minutes.front(), TimerLengths::minutes.back());
    assign(this, m_selectedMinutes, held, &TimerModel::selectedMinutesChanged);
}

void TimerModel::adjustSelection(int steps) {
    const int next = TimerLengths::adjust(m_selectedMinutes, steps);
    if (assign(this, m_selectedMinutes, next, &TimerModel::selectedMinutesChanged)) {
        m_seams.haptics.perform(HapticPattern::alignment);
    }
}

void TimerModel::scheduleFinish() {
    m_finishTask.cancel();
    const auto* running = m_countdown ? std::get_if<Countdown::Running>(&m_countdown->phase) : nullptr;
    if (running) {
        // For the date, not for the time until then: a clock that is set moves the end, and the display with
        // it.
        m_finishTask = m_seams.scheduler.at(running->endsAt, [this] { finishIfDue(); });
    }
}

void TimerModel::finishIfDue() {
    if (!m_countdown) {
        return;
    }
    if (!m_countdown->isFinished(m_seams.scheduler.now())) {
        scheduleFinish();
        return;
    }
    const double duration = m_countdown->duration;
    qCInfo(Logs::island, "a timer of %g s has finished", duration);
    m_lastDuration = duration;
    // The alert first, so that the island drops from the wings without closing in between.
    assign(this, m_isShowingDone, true, &TimerModel::isShowingDoneChanged);
    setCountdown(std::nullopt);
    tellOfEnd(duration);
    m_alertTask = m_seams.scheduler.after(alertLength, [this] { dismissDone(); });
    presentationChanged();
}

void TimerModel::tellOfEnd(double duration) {
    const auto sound = m_settings.stringValue(SettingsKeys::timerSound);
    if (sound && sound != SettingsKeys::timerSounds.back()) {
        m_seams.sounds.play(*sound);
    }
    if (m_seams.notifier && m_settings.boolValue(SettingsKeys::timerNotifications)) {
        m_seams.notifier->timerFinished(duration);
    }
}

void TimerModel::clearDone() {
    m_alertTask.cancel();
    assign(this, m_isShowingDone, false, &TimerModel::isShowingDoneChanged);
}

void TimerModel::setCountdown(const std::optional<Countdown>& countdown) {
    assign(this, m_countdown, countdown, &TimerModel::countdownChanged);
}

void TimerModel::presentationChanged() const {
    if (onPresentationChange) {
        onPresentationChange();
    }
}

} // namespace veslora
