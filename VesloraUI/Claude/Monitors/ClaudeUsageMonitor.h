// SPDX-License-Identifier: MIT
// Follows what Claude Code uses: the context and the limits by what its sessions tell the status line,
// today's tokens by its transcripts. Main thread only.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeUsageTally.h"
#include "VesloraUI/Claude/Monitors/AgentUsageMonitor.h"
#include "VesloraUI/Claude/Monitors/ClaudeStatusDirectory.h"
#include "VesloraUI/Claude/Transcripts/TranscriptFollower.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace veslora {

class ClaudeUsageMonitor final : public AgentUsageMonitor {
    Q_OBJECT

  public:
    /// The sessions that live; absent while nothing can be said of any.
    using LiveSessionIds = std::function<std::optional<std::set<std::string>>()>;

    /// The status-line script files its input in the support folder; the agent keeps its transcripts in
    /// `projectsDirectory`.
    ClaudeUsageMonitor(const TranscriptSeams& seams, const SupportDirectory& support,
                       const std::string& projectsDirectory, std::shared_ptr<const Calendar> calendar,
                       LiveSessionIds liveSessionIds);

    [[nodiscard]] AgentUsage usage() const override;
    void loadToday() override;
    void refresh() override;

    /// The newest reading that has something to say about limits.
    [[nodiscard]] const std::optional<ClaudeStatusSnapshot>& limits() const { return m_limits; }
    /// The newest reading of all.
    [[nodiscard]] const std::optional<ClaudeStatusSnapshot>& context() const { return m_context; }
    [[nodiscard]] const ClaudeTokenTotals& today() const { return m_today; }
    /// Whether a reading is too old to be shown as what is so now.
    [[nodiscard]] bool isStale(const ClaudeStatusSnapshot& snapshot) const;

  private:
    void readSnapshots();
    void publishToday();

    Scheduler& m_scheduler;
    ClaudeStatusDirectory m_statusDirectory;
    LiveSessionIds m_liveSessionIds;
    std::optional<ClaudeStatusSnapshot> m_limits;
    std::optional<ClaudeStatusSnapshot> m_context;
    ClaudeTokenTotals m_today;
    TranscriptFollower<ClaudeUsageTally> m_transcripts;
};

} // namespace veslora
