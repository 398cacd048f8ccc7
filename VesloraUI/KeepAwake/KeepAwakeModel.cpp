// SPDX-License-Identifier: MIT
#include "VesloraUI/KeepAwake/KeepAwakeModel.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

namespace veslora {

namespace {

constexpr double tickPeriod = 1;

void readWishes(KeepAwakeState& state, const Defaults& settings) {
    state.keepsDisplayOn = settings.boolValue(SettingsKeys::keepAwakeDisplay);
    state.whileClaudeWorks = settings.boolValue(SettingsKeys::keepAwakeWhileClaude);
}

} // namespace

KeepAwakeModel::KeepAwakeModel(Defaults& settings, PowerAsserting& power, Scheduler& scheduler)
    : m_settings(settings), m_power(power), m_scheduler(scheduler) {
    readWishes(m_state, settings);
    connect(&settings, &Defaults::changed, this, &KeepAwakeModel::applySettings);
}

std::optional<Timestamp> KeepAwakeModel::end() const {
    const Timestamp now = m_scheduler.now();
    const auto left = m_state.remaining(now);
    return left ? std::optional(now + *left) : std::nullopt;
}

void KeepAwakeModel::start(std::optional<double> seconds) {
    KeepAwakeState state = m_state;
    state.start(seconds, m_scheduler.now());
    setState(state);
    apply();
    // The end is a date and each tick looks at the clock, so that neither suspension nor a clock that was set
    // strands a session. Together with the views' own ticks this is one wake-up a second.
    m_tickTask = m_scheduler.every(tickPeriod, Precision::exact, [this] { tick(); });
}

void KeepAwakeModel::tick() {
    if (!isOn()) {
        m_tickTask.cancel();
        KeepAwakeState state = m_state;
        state.stop();
        setState(state);
    }
    apply();
}

void KeepAwakeModel::stop() {
    m_tickTask.cancel();
    KeepAwakeState state = m_state;
    state.stop();
    setState(state);
    apply();
}

void KeepAwakeModel::adjust(int steps) {
    KeepAwakeState state = m_state;
    state.adjust(steps, m_scheduler.now());
    setState(state);
    if (onChange) {
        onChange();
    }
}

void KeepAwakeModel::setClaudeIsWorking(bool isWorking) {
    KeepAwakeState state = m_state;
    state.claudeIsWorking = isWorking;
    if (state != m_state) {
        setState(state);
        apply();
    }
}

void KeepAwakeModel::setWhileClaudeWorks(bool whileClaudeWorks) {
    m_settings.set(SettingsKeys::keepAwakeWhileClaude, whileClaudeWorks);
}

void KeepAwakeModel::applySettings() {
    KeepAwakeState state = m_state;
    readWishes(state, m_settings);
    if (state != m_state) {
        setState(state);
        apply();
    }
}

void KeepAwakeModel::setState(const KeepAwakeState& state) {
    assign(this, m_state, state, &KeepAwakeModel::stateChanged);
}

void KeepAwakeModel::apply() {
    const auto hold = m_state.hold(m_scheduler.now());
    if (m_hold != hold) {
        m_hold = hold;
        m_power.apply(hold);
        emit holdChanged();
    }
    if (onChange) {
        onChange();
    }
}

} // namespace veslora
