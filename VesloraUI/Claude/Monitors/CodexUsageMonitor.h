// SPDX-License-Identifier: MIT
// Follows what Codex uses: limits, context and today's tokens, all of them by its sessions' logs. Main
// thread only.
#pragma once

#include "VesloraCore/Agents/Usage/CodexUsageReadings.h"
#include "VesloraUI/Claude/Monitors/AgentUsageMonitor.h"
#include "VesloraUI/Claude/Transcripts/TranscriptFollower.h"

#include <memory>
#include <optional>
#include <string>

namespace veslora {

class CodexUsageMonitor final : public AgentUsageMonitor {
    Q_OBJECT

  public:
    /// `sessionsDirectory` is where the agent keeps its logs, in a folder for each day.
    CodexUsageMonitor(const TranscriptSeams& seams, const std::string& sessionsDirectory,
                      std::shared_ptr<const Calendar> calendar);

    [[nodiscard]] AgentUsage usage() const override;
    void loadToday() override;
    void refresh() override;

    [[nodiscard]] const std::optional<CodexLimits>& limits() const { return m_limits; }
    [[nodiscard]] const std::optional<CodexContext>& context() const { return m_context; }
    [[nodiscard]] const ClaudeTokenTotals& today() const { return m_today; }
    /// The newest date of any limits or tokens that were read.
    [[nodiscard]] std::optional<Timestamp> lastActivity() const { return m_lastActivity; }
    /// Whether a reading of that date is too old to be shown as what is so now.
    [[nodiscard]] bool isStale(Timestamp date) const;

  private:
    void publishReadings();

    Scheduler& m_scheduler;
    std::optional<CodexLimits> m_limits;
    std::optional<CodexContext> m_context;
    std::optional<Timestamp> m_lastActivity;
    ClaudeTokenTotals m_today;
    TranscriptFollower<CodexUsageReadings> m_transcripts;
};

} // namespace veslora
