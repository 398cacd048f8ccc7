// SPDX-License-Identifier: MIT
// An agent that does as a test says and remembers what was asked of it.
#pragma once

#include "VesloraCore/Agents/Hooks/InstallError.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Claude/Monitors/AgentMonitor.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace veslora {

/// Says what a test put into it.
class FakeUsageMonitor final : public AgentUsageMonitor {
  public:
    AgentUsage reading;

    [[nodiscard]] AgentUsage usage() const override { return reading; }
    void loadToday() override {}
    void refresh() override {}

    void put(const AgentUsage& usage) {
        reading = usage;
        emit changed();
    }
};

class FakeMonitor final : public AgentMonitor {
  public:
    FakeUsageMonitor usageMonitor;
    std::vector<std::string> log;
    bool failInstalls = false;
    AnswerOutcome outcome = AnswerOutcome::given;
    std::optional<FileError> fileError; ///< what putting hooks in or taking them out fails with
    std::vector<std::pair<std::string, ClaudeDecision>> answered;

    explicit FakeMonitor(AgentKind kind = AgentKind::claude) : AgentMonitor(traitsOf(kind), &usageMonitor) {}

    void start() override { log.emplace_back("start"); }
    void stop() override { log.emplace_back("stop"); }
    AnswerOutcome answer(const std::string& requestId, ClaudeDecision decision) override {
        answered.emplace_back(requestId, decision);
        if (outcome == AnswerOutcome::failed) {
            return outcome;
        }
        auto requests = pendingRequests();
        std::erase_if(requests, [&](const auto& request) { return request.id == answered.back().first; });
        publish(summaries(), std::move(requests));
        return outcome;
    }
    void jump(const std::string& sessionId) override { log.push_back("jump " + sessionId); }
    void dismissApproval(const std::string& sessionId) override { log.push_back("dismiss " + sessionId); }
    void installHooks() override {
        if (failInstalls) {
            throw ClaudeHooksInstaller::InstallError(ClaudeHooksInstaller::InstallError::Reason::notAnObject);
        }
        failAsTold();
        setHooks(true, false);
    }
    void removeHooks() override {
        failAsTold();
        setHooks(false, false);
    }

    using AgentMonitor::publish;
    using AgentMonitor::setHooks;

    static ClaudeSessionSummary session(const std::string& id, ClaudeSessionStatus status,
                                        AgentKind agent = AgentKind::claude) {
        return {id, "name of " + id, 10, std::move(status), std::nullopt, agent};
    }
    /// Its time ends twenty seconds after that moment.
    static ClaudePermissionRequest request(const std::string& id, Timestamp receivedAt,
                                           const std::string& text = "ls") {
        return {id, "s1",           "/home/me/folder", "Bash", text, receivedAt, AgentKind::claude,
                {}, receivedAt + 20};
    }

  private:
    void failAsTold() const {
        if (fileError) {
            throw *fileError; // NOLINT(misc-throw-by-value-catch-by-reference)
        }
    }
};

} // namespace veslora
