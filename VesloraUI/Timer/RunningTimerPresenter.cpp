// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/RunningTimerPresenter.h"

#include "VesloraCore/Timer/TimerFlicker.h"

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

void RunningTimerPresenter::start() {
    follow(m_timer, &TimerModel::countdownChanged);
}

void RunningTimerPresenter::setDate(double date) {
    m_date = date;
    if (isComplete()) {
        readAt(date);
    }
}

void RunningTimerPresenter::setFuseWidth(double width) {
    m_fuseWidth = width;
    refresh();
}

/// Between two ticks too: a key that was pressed shows its effect at once.
void RunningTimerPresenter::read() {
    readAt(environment().scheduler().now());
}

void RunningTimerPresenter::readAt(Timestamp date) {
    if (const auto& countdown = m_timer->countdown()) {
        show(m_shown, {.remaining = std::ceil(countdown->remaining(date)),
                       .fraction = std::fmin(visible(countdown->fractionRemaining(date), m_fuseWidth), 1),
                       .timeOpacity = flickerOpacity(*countdown, date),
                       .isPaused = countdown->isPaused(),
                       .isUrgent = countdown->isUrgent(date)});
    }
}

void RunningTimerPresenter::togglePause() {
    if (m_shown.isPaused) {
        m_timer->resume();
    } else {
        m_timer->pause();
    }
}

} // namespace veslora
