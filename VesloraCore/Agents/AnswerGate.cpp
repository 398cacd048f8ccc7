// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AnswerGate.h"

#include <utility>

namespace veslora {

namespace {

/// Milliseconds from one event to a later one, right also where the clock wrapped in between.
std::int32_t span(std::uint32_t from, std::uint32_t to) {
    return static_cast<std::int32_t>(to - from);
}

} // namespace

void AnswerGate::frameShown(std::uint32_t eventTime, double steady) {
    m_frame = Frame{eventTime, steady};
    m_press.reset();
}

bool AnswerGate::tick(double steady) {
    const double gap = steady - std::exchange(m_lastTick, steady);
    // Written so that a clock that tells nonsense counts as a stall too.
    if (gap >= 0 && gap <= stall) {
        return true;
    }
    reset();
    return false;
}

void AnswerGate::reset() {
    m_frame.reset();
    m_press.reset();
}

bool AnswerGate::isArmed(double steady) const {
    return m_frame && (steady - m_frame->steady) * 1000 >= consideration;
}

bool AnswerGate::isConsidered(std::uint32_t eventTime) const {
    return m_frame && span(m_frame->eventTime, eventTime) >= consideration;
}

bool AnswerGate::press(std::uint32_t eventTime, double steady) {
    m_press.reset();
    if (tick(steady) && isConsidered(eventTime)) {
        m_press = eventTime;
    }
    return m_press.has_value();
}

bool AnswerGate::release(std::uint32_t eventTime, double steady) {
    const auto press = m_press;
    const bool isLive = tick(steady);
    m_press.reset();
    return isLive && press && isConsidered(eventTime) && span(*press, eventTime) >= 0;
}

bool AnswerGate::act(double steady) {
    return tick(steady) && m_frame && steady - m_frame->steady >= actionDelay;
}

} // namespace veslora
