// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/TimerPickerPresenter.h"

#include "VesloraCore/Timer/TimerLengths.h"

namespace veslora {

void TimerPickerPresenter::start() {
    follow(m_timer, &TimerModel::isShowingDoneChanged, &TimerModel::selectedMinutesChanged);
}

void TimerPickerPresenter::read() {
    const bool isUp = m_timer->isShowingDone();
    const int minutes = m_timer->selectedMinutes();
    show(m_shown, {.caption = isUp ? tr("Time's up") : tr("Timer"),
                   .hasHint = m_isWide || !isUp,
                   .seconds = minutes * 60.0,
                   .fraction = TimerLengths::fraction(minutes)});
}

int TimerPickerPresenter::segments() {
    return static_cast<int>(TimerLengths::minutes.size());
}

QList<int> TimerPickerPresenter::presets() {
    return {TimerModel::presetMinutes.begin(), TimerModel::presetMinutes.end()};
}

QString TimerPickerPresenter::presetHelp(int minutes) {
    return tr("%Ln minute(s)", nullptr, minutes);
}

} // namespace veslora
