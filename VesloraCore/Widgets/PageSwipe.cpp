// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/PageSwipe.h"

#include <cmath>

namespace veslora {

namespace {

/// Fractions of a notch add up to a whole one but for what rounding took.
constexpr double wholeNotch = 0.999;

int signOf(double value) {
    return (value > 0) - (value < 0);
}

} // namespace

std::optional<int> PageSwipe::handle(const PageScroll& scroll) {
    if (!(std::abs(scroll.deltaX) > std::abs(scroll.deltaY)) || !std::isfinite(scroll.deltaX)) {
        return std::nullopt;
    }
    if (scroll.phase == PageScroll::Phase::momentum) {
        return 0;
    }
    const bool hasRested = !m_last || scroll.time - *m_last > pause;
    m_last = scroll.time;
    if (scroll.phase == PageScroll::Phase::began ||
        (scroll.phase == PageScroll::Phase::unknown && hasRested)) {
        m_hasStepped = false;
        m_notch = 0;
    }
    const double delta = scroll.isInverted ? scroll.deltaX : -scroll.deltaX;
    return scroll.isPrecise ? fingerSteps(delta) : wheelSteps(delta);
}

int PageSwipe::fingerSteps(double delta) {
    const int steps = m_stepper.steps(delta, true);
    if (steps == 0 || m_hasStepped) {
        return 0;
    }
    m_hasStepped = true;
    return signOf(steps);
}

int PageSwipe::wheelSteps(double delta) {
    if (signOf(delta) != signOf(m_notch)) {
        m_notch = 0;
    }
    m_notch += delta;
    if (std::abs(m_notch) < wholeNotch) {
        return 0;
    }
    const int step = signOf(m_notch);
    m_notch = std::fmod(m_notch, 1.0);
    // What rounding left of a whole notch is not the beginning of another.
    if (std::abs(m_notch) >= wholeNotch) {
        m_notch = 0;
    }
    return m_stepper.steps(step, false);
}

} // namespace veslora
