// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/AlertPausing.h"

#include "VesloraUI/Platform/DoNotDisturb.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

#include <utility>

namespace veslora {

AlertPausing::AlertPausing(Defaults& settings, Scheduler& scheduler, const DoNotDisturb& doNotDisturb,
                           std::shared_ptr<const Calendar> calendar)
    : m_settings(settings), m_scheduler(scheduler), m_doNotDisturb(doNotDisturb),
      m_calendar(std::move(calendar)) {
    connect(&m_settings, &Defaults::changed, this, &AlertPausing::update);
    connect(&m_doNotDisturb, &DoNotDisturb::changed, this, &AlertPausing::update);
    update();
}

void AlertPausing::pause(const AlertPause::Length& length) {
    m_settings.set(SettingsKeys::alertsPausedUntil,
                   AlertPause::endOf(length, m_scheduler.now(), *m_calendar));
}

void AlertPausing::resume() {
    m_settings.set(SettingsKeys::alertsPausedUntil, 0.0);
}

bool AlertPausing::isPausedByDesktop() const {
    return m_settings.boolValue(SettingsKeys::followDoNotDisturb) && m_doNotDisturb.isOn();
}

void AlertPausing::update() {
    const bool wasPaused = m_state.until || m_state.isByDesktop;
    State state;
    state.until =
        AlertPause::storedEnd(m_settings.doubleValue(SettingsKeys::alertsPausedUntil), m_scheduler.now());
    state.isByDesktop = isPausedByDesktop();
    if (state.until != m_state.until || !m_limit.isActive()) {
        awaitEnd(state.until);
    }
    if (const bool isPausedNow = state.until || state.isByDesktop; isPausedNow != wasPaused) {
        qCInfo(Logs::agents, isPausedNow ? "alerts are paused" : "alerts are no longer paused");
    }
    assign(this, m_state, state, &AlertPausing::changed);
}

/// By the wall clock, which ends it, and by time that nobody can set: a clock that was set back may have made
/// a pause of it that is longer than any.
void AlertPausing::awaitEnd(std::optional<Timestamp> until) {
    m_end = until ? m_scheduler.at(*until, [this] { update(); }) : Task();
    m_limit = until ? m_scheduler.after(*until - m_scheduler.now(),
                                        [this] {
                                            m_limit.cancel();
                                            update();
                                        })
                    : Task();
}

} // namespace veslora
