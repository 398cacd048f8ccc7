// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/CodexUsageMonitor.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Support/ReadersWords.h"

#include <utility>

namespace veslora {

CodexUsageMonitor::CodexUsageMonitor(const TranscriptSeams& seams, const std::string& sessionsDirectory,
                                     std::shared_ptr<const Calendar> calendar)
    : m_scheduler(seams.scheduler),
      m_transcripts(
          seams, sessionsDirectory, {CodexUsageReadings::markers.begin(), CodexUsageReadings::markers.end()},
          CodexUsageReadings(seams.scheduler.now(), std::move(calendar)), [this] { publishReadings(); }) {}

AgentUsage CodexUsageMonitor::usage() const {
    return codexUsage(m_limits, m_context, m_today, m_scheduler.now(), readersWords());
}

bool CodexUsageMonitor::isStale(Timestamp date) const {
    return m_scheduler.now() - date > AgentUsage::staleAfter;
}

void CodexUsageMonitor::loadToday() {
    m_transcripts.load();
}

void CodexUsageMonitor::refresh() {
    m_transcripts.refresh();
    publishReadings();
}

void CodexUsageMonitor::publishReadings() {
    if (!m_transcripts.isLoaded()) {
        return;
    }
    const CodexUsageReadings& readings = m_transcripts.tally();
    assign(this, m_limits, readings.limits(), &AgentUsageMonitor::changed);
    assign(this, m_context, readings.context(), &AgentUsageMonitor::changed);
    assign(this, m_lastActivity, readings.lastActivity(), &AgentUsageMonitor::changed);
    assign(this, m_today, readings.totals(), &AgentUsageMonitor::changed);
}

} // namespace veslora
