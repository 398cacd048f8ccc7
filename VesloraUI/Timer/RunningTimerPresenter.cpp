// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/RunningTimerPresenter.h"

#include "VesloraCore/Timer/TimerFlicker.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <cmath>

namespace veslora {

namespace {

constexpr double stepsPerPoint = 2;

/// OPTIMIZATION: what moves by less than could be seen is left where it is. A timer of 25 minutes thus moves
/// its fuse in the wings twice a minute instead of drawing 60 frames a second without an end.
double visible(double fraction, double width) {
    const double steps = width * stepsPerPoint;
    return steps >= 1 ? std::ceil(fraction * steps) / steps : fraction;
}

} // namespace

void RunningTimerPresenter::componentComplete() {
    m_isComplete = true;
    connect(m_timer, &TimerModel::countdownChanged, this, &RunningTimerPresenter::readTimer);
    readTimer();
}

void RunningTimerPresenter::setDate(double date) {
    m_date = date;
    if (m_isComplete && m_timer->countdown()) {
        show(*m_timer->countdown(), date);
    }
}

void RunningTimerPresenter::setFuseWidth(double width) {
    m_fuseWidth = width;
    readTimer();
}

/// Between two ticks too: a key that was pressed shows its effect at once.
void RunningTimerPresenter::readTimer() {
    if (m_isComplete && m_timer->countdown()) {
        show(*m_timer->countdown(), ViewEnvironment::of(qmlEngine(this)).scheduler().now());
    }
}

void RunningTimerPresenter::show(const Countdown& countdown, Timestamp date) {
    using Presenter = RunningTimerPresenter;
    assign(this, m_remaining, std::ceil(countdown.remaining(date)), &Presenter::remainingChanged);
    assign(this, m_fraction, std::fmin(visible(countdown.fractionRemaining(date), m_fuseWidth), 1),
           &Presenter::fractionChanged);
    assign(this, m_timeOpacity, flickerOpacity(countdown, date), &Presenter::timeOpacityChanged);
    assign(this, m_isPaused, countdown.isPaused(), &Presenter::isPausedChanged);
    assign(this, m_isUrgent, countdown.isUrgent(date), &Presenter::isUrgentChanged);
}

void RunningTimerPresenter::togglePause() {
    if (m_isPaused) {
        m_timer->resume();
    } else {
        m_timer->pause();
    }
}

} // namespace veslora
