// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/TimerDoneAlertPresenter.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

namespace veslora {

void TimerDoneAlertPresenter::componentComplete() {
    assign(this, m_duration, m_timer->lastDuration().value_or(0), &TimerDoneAlertPresenter::durationChanged);
    flicker(2 * flickers);
}

void TimerDoneAlertPresenter::flicker(int turns) {
    assign(this, m_isFuseLit, turns % 2 != 0, &TimerDoneAlertPresenter::isFuseLitChanged);
    if (turns > 1) {
        Scheduler& scheduler = ViewEnvironment::of(qmlEngine(this)).scheduler();
        m_flickerTask = scheduler.after(flickerLength, [this, turns] { flicker(turns - 1); });
    }
}

} // namespace veslora
