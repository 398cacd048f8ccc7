// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/TimerPickerPresenter.h"

#include "VesloraCore/Timer/TimerLengths.h"
#include "VesloraUI/Platform/Observable.h"

#include <QLocale>

namespace veslora {

void TimerPickerPresenter::componentComplete() {
    connect(m_timer, &TimerModel::isShowingDoneChanged, this, &TimerPickerPresenter::readTimer);
    connect(m_timer, &TimerModel::selectedMinutesChanged, this, &TimerPickerPresenter::readTimer);
    readTimer();
}

void TimerPickerPresenter::readTimer() {
    const bool isUp = m_timer->isShowingDone();
    const int minutes = m_timer->selectedMinutes();
    m_fraction = TimerLengths::fraction(minutes);
    assign(this, m_caption, isUp ? tr("Time's up") : tr("Timer"), &TimerPickerPresenter::captionChanged);
    assign(this, m_hasHint, m_isWide || !isUp, &TimerPickerPresenter::hasHintChanged);
    assign(this, m_seconds, minutes * 60.0, &TimerPickerPresenter::secondsChanged);
}

int TimerPickerPresenter::segments() {
    return static_cast<int>(TimerLengths::minutes.size());
}

QList<int> TimerPickerPresenter::presets() {
    return {TimerModel::presetMinutes.begin(), TimerModel::presetMinutes.end()};
}

QString TimerPickerPresenter::presetHelp(int minutes) {
    return tr("%1 minutes").arg(QLocale().toString(minutes));
}

} // namespace veslora
