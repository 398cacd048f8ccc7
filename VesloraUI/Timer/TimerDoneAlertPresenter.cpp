// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/TimerDoneAlertPresenter.h"

namespace veslora {

/// The alert is of the timer that has just finished, whatever timer follows it.
void TimerDoneAlertPresenter::read() {
    show(m_shown, {.duration = m_timer->lastDuration().value_or(0), .isFuseLit = m_shown.isFuseLit});
    flicker(2 * flickers);
}

void TimerDoneAlertPresenter::flicker(int turns) {
    show(m_shown, {.duration = m_shown.duration, .isFuseLit = turns % 2 != 0});
    if (turns > 1) {
        m_flickerTask = environment().scheduler().after(flickerLength, [this, turns] { flicker(turns - 1); });
    }
}

} // namespace veslora
