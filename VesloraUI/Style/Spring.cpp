// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Spring.h"

#include "VesloraUI/Style/ViewEnvironment.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veslora {

namespace {
constexpr double restDistance = 0.01;
// A spring that passes its target at this speed goes beyond it by less than that distance.
constexpr double restVelocity = 0.3;
constexpr double longestFrame = 0.1;
constexpr double firstStep = 2.0 / 60;
// Frames are counted in whole milliseconds, so that one may come a little early.
constexpr double earliness = 0.004;
} // namespace

void SpringMotion::advance(double seconds, double response, double damping) {
    const double frequency = 2 * std::numbers::pi / response;
    const double decay = damping * frequency;
    const double damped = frequency * std::sqrt(1 - damping * damping);
    const double offset = value - target;
    const double sine = (velocity + decay * offset) / damped;
    const double envelope = std::exp(-decay * seconds);
    const double c = std::cos(damped * seconds);
    const double s = std::sin(damped * seconds);
    value = target + envelope * (offset * c + sine * s);
    velocity = envelope * ((sine * damped - decay * offset) * c - (offset * damped + decay * sine) * s);
}

void SpringMotion::fade(double seconds) {
    const double step = std::max(0.0, seconds) / fadeDuration;
    value = value < target ? std::min(value + step, target) : std::max(value - step, target);
    velocity = 0;
}

bool SpringMotion::isAtRest() const {
    return std::abs(value - target) < restDistance && std::abs(velocity) < restVelocity;
}

void Spring::Drive::updateCurrentTime(int milliseconds) {
    const double seconds = (milliseconds - m_last) / 1000.0;
    if (seconds > 0 && seconds > m_spring.m_interval - earliness) {
        m_last = milliseconds;
        m_spring.advance(std::min(seconds, longestFrame));
    }
}

void Spring::Drive::updateState(State newState, State oldState) {
    QAbstractAnimation::updateState(newState, oldState);
    m_last = 0;
    emit m_spring.isRunningChanged();
}

Spring::Spring(QObject* parent) : QObject(parent) {}

void Spring::componentComplete() {
    m_isComplete = true;
    const QQmlEngine* const engine = qmlEngine(this);
    m_environment = engine ? &ViewEnvironment::of(engine) : nullptr;
}

bool Spring::isStill() const {
    return m_environment && m_environment->reducesMotion();
}

void Spring::setTarget(double target) {
    if (target == m_motion.target) {
        return;
    }
    m_motion.target = target;
    emit targetChanged();
    if (!m_isComplete || !m_isLive || (isStill() && !m_isFade)) {
        m_motion.value = target;
        m_motion.velocity = 0;
        emit valueChanged();
        m_drive.stop();
    } else if (!isRunning()) {
        m_drive.start();
        // The first frame shows the first of the movement already. OPTIMIZATION: two frames' worth bring a
        // prompt's text, which the growing island uncovers, on screen in 42 ms instead of 58. A fade has too
        // few frames to leave any out.
        if (!isStill()) {
            advance(firstStep);
        }
    }
}

void Spring::advance(double seconds) {
    if (isStill() && m_isFade) {
        m_motion.fade(seconds);
    } else {
        m_motion.advance(seconds, m_response, m_damping);
    }
    const bool isAtRest = m_motion.isAtRest();
    if (isAtRest) {
        m_motion.value = m_motion.target;
        m_motion.velocity = 0;
    }
    emit valueChanged();
    if (isAtRest) {
        m_drive.stop();
    }
}

} // namespace veslora
