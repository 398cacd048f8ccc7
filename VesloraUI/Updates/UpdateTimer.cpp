// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/UpdateTimer.h"

#include "VesloraCore/Updates/UpdateSchedule.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <algorithm>
#include <utility>

namespace veslora {

UpdateTimer::UpdateTimer(Scheduler& scheduler, Defaults& settings)
    : m_scheduler(scheduler), m_settings(settings),
      m_isOn(settings.boolValue(SettingsKeys::checkForUpdates)) {
    connect(&settings, &Defaults::changed, this, &UpdateTimer::settingsChanged);
}

UpdateTimer::~UpdateTimer() = default;

void UpdateTimer::start(std::function<void()> look) {
    m_look = std::move(look);
    m_wait = m_scheduler.after(UpdateSchedule::settling, [this] { settle(); });
}

/// Only this once does the wall clock count, which may be set at any time.
void UpdateTimer::settle() {
    const Timestamp last = m_settings.doubleValue(SettingsKeys::updateCheckedAt);
    const Timestamp now = m_scheduler.now();
    if (UpdateSchedule::isFromFuture(last, now)) {
        m_settings.set(SettingsKeys::updateCheckedAt, now);
    }
    m_isSettled = true;
    m_due = m_scheduler.steadyNow() + UpdateSchedule::waitFor(last, now);
    plan();
}

void UpdateTimer::plan() {
    if (!m_isSettled || !m_look) {
        return;
    }
    m_wait = m_isOn ? m_scheduler.after(std::max(0.0, m_due - m_scheduler.steadyNow()), [this] { m_look(); })
                    : Task();
}

void UpdateTimer::looked() {
    m_before = m_settings.doubleValue(SettingsKeys::updateCheckedAt);
    m_settings.set(SettingsKeys::updateCheckedAt, m_scheduler.now());
    m_isSettled = true;
    m_due = m_scheduler.steadyNow() + UpdateSchedule::period;
    plan();
}

void UpdateTimer::reachedNobody() {
    m_settings.set(SettingsKeys::updateCheckedAt, m_before);
    m_due = m_scheduler.steadyNow() + UpdateSchedule::retry;
    plan();
}

void UpdateTimer::settingsChanged() {
    const bool isOn = m_settings.boolValue(SettingsKeys::checkForUpdates);
    if (std::exchange(m_isOn, isOn) != isOn) {
        plan();
        emit turned(isOn);
    }
}

} // namespace veslora
