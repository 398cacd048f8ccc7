// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/AdapterSupervisor.h"

#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

constexpr int mostFailures = 5;

} // namespace

AdapterSupervisor::AdapterSupervisor(Scheduler& scheduler, AdapterProcess& adapter,
                                     AdapterProcess::LineHandler onLine)
    : m_scheduler(scheduler), m_adapter(adapter), m_onLine(std::move(onLine)) {}

AdapterSupervisor::~AdapterSupervisor() {
    // What the adapter was given calls this.
    setNeeded(false);
}

void AdapterSupervisor::setNeeded(bool isNeeded) {
    if (isNeeded == m_isNeeded) {
        return;
    }
    m_isNeeded = isNeeded;
    if (isNeeded) {
        m_failures = 0;
        start();
    } else {
        m_restartTask.cancel();
        m_adapter.stop();
    }
}

void AdapterSupervisor::start() {
    m_startedAt = m_scheduler.steadyNow();
    const bool isStarted = m_adapter.start(m_onLine, [this](std::int32_t status) {
        qCWarning(Logs::music, "the media adapter has ended with %d", status);
        ended();
    });
    if (!isStarted) {
        qCWarning(Logs::music, "the media adapter can't be started");
        ended();
    }
}

void AdapterSupervisor::ended() {
    if (!m_isNeeded) {
        return;
    }
    if (m_scheduler.steadyNow() - m_startedAt >= healthyRun) {
        m_failures = 0;
    }
    const double wait = std::min(std::ldexp(1.0, m_failures), longestWait);
    m_failures = std::min(m_failures + 1, mostFailures);
    m_restartTask = m_scheduler.after(wait, [this] { start(); });
}

} // namespace veslora
