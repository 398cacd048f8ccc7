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
    int trials = 0;

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
    void obey(const AlertPausing& /*pausing*/) override { log.emplace_back("obey"); }
    void installHooks() override {
        if (failInstalls) {
            throw ClaudeHooksInstaller::InstallError(ClaudeHooksInstaller::InstallError::Reason::notAnObject);
        }
        failAsTold();
        setHooks({.areInstalled = true});
    }
    void removeHooks() override {
        failAsTold();
        setHooks({});
    }

    [[nodiscard]] Task tryHooks(std::function<void(HookTrialResult)> done) override {
        ++trials;
        m_trial = std::make_shared<TaskState>();
        m_trial->run = [this, done = std::move(done)] { done(m_trialResult); };
        return Task(m_trial);
    }
    [[nodiscard]] bool isTrying() const { return m_trial && m_trial->run; }
    void endTrial(HookTrialResult result) {
        m_trialResult = result;
        if (const auto run = std::exchange(m_trial->run, nullptr)) {
            run();
        }
    }

    using AgentMonitor::publish;
    using AgentMonitor::setHooks;
    void setHooks(bool areInstalled, bool areOutdated) {
        setHooks({.areInstalled = areInstalled, .areOutdated = areOutdated});
    }
    using AgentMonitor::setLastSign;

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
    std::shared_ptr<TaskState> m_trial;
    HookTrialResult m_trialResult = HookTrialResult::failed;

    void failAsTold() const {
        if (fileError) {
            throw *fileError; // NOLINT(misc-throw-by-value-catch-by-reference)
        }
    }
};

} // namespace veslora
