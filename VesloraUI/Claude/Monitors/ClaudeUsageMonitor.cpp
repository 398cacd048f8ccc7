// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/ClaudeUsageMonitor.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Support/ReadersWords.h"

#include <QRandomGenerator>

#include <algorithm>
#include <utility>

namespace veslora {

namespace {

bool speaksOfLimits(const ClaudeStatusSnapshot& snapshot) {
    return snapshot.fiveHour || snapshot.week || !snapshot.limitsAvailable;
}

/// Nobody can write transcripts that take long to count without knowing it.
SipHash::Key randomSecret() {
    QRandomGenerator& random = *QRandomGenerator::system();
    return {random.generate64(), random.generate64()};
}

} // namespace

ClaudeUsageMonitor::ClaudeUsageMonitor(const TranscriptSeams& seams, const SupportDirectory& support,
                                       const std::string& projectsDirectory,
                                       std::shared_ptr<const Calendar> calendar,
                                       LiveSessionIds liveSessionIds)
    : m_scheduler(seams.scheduler), m_statusDirectory(support), m_liveSessionIds(std::move(liveSessionIds)),
      m_transcripts(seams, projectsDirectory, {ClaudeUsageLine::marker},
                    ClaudeUsageTally(seams.scheduler.now(), std::move(calendar), randomSecret()),
                    [this] { publishToday(); }) {}

AgentUsage ClaudeUsageMonitor::usage() const {
    return claudeUsage(m_limits, m_context, m_today, m_scheduler.now(), readersWords());
}

bool ClaudeUsageMonitor::isStale(const ClaudeStatusSnapshot& snapshot) const {
    return m_scheduler.now() - snapshot.receivedAt > AgentUsage::staleAfter;
}

void ClaudeUsageMonitor::loadToday() {
    m_transcripts.load();
}

void ClaudeUsageMonitor::refresh() {
    readSnapshots();
    m_transcripts.refresh();
    publishToday();
}

void ClaudeUsageMonitor::readSnapshots() {
    const auto snapshots = m_statusDirectory.read(m_scheduler.now(), m_liveSessionIds());
    const auto speaking = std::ranges::find_if(snapshots, speaksOfLimits);
    assign(this, m_context, snapshots.empty() ? std::nullopt : std::optional(snapshots.front()),
           &AgentUsageMonitor::changed);
    assign(this, m_limits, speaking == snapshots.end() ? std::nullopt : std::optional(*speaking),
           &AgentUsageMonitor::changed);
}

void ClaudeUsageMonitor::publishToday() {
    if (m_transcripts.isLoaded()) {
        assign(this, m_today, m_transcripts.tally().totals(), &AgentUsageMonitor::changed);
    }
}

} // namespace veslora
