// SPDX-License-Identifier: MIT
// A monitor of an agent on a machine in memory, with what its tests ask of it whatever the agent.
#pragma once

#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FixedCalendar.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace veslora {

/// `makeAgent` gives the parts of the agent's monitor.
template <auto makeAgent>
class HookedMonitorTest : public testing::Test {
  protected:
    /// The folders are the agent's own in the support directory.
    HookedMonitorTest(std::string spool, std::string answers)
        : m_spool(std::move(spool)), m_answers(std::move(answers)) {
        platform.tasks.alive = {10, 11};
        QObject::connect(&monitor, &AgentMonitor::changed, [this] { ++changes; });
    }

    [[nodiscard]] AgentMonitorSeams seams() {
        return {platform.paths, platform.time,        platform.disk,     platform.watches,     platform.tasks,
                platform.hosts, platform.multiplexer, platform.programs, test::fixedCalendar()};
    }
    /// A file as a hook's script leaves it.
    void putIntoSpool(const std::string& name, const std::string& payload) {
        platform.disk.put(m_spool + "/" + name, payload);
    }
    [[nodiscard]] std::optional<std::string> answerOf(const std::string& id) const {
        return platform.disk.text(m_answers + "/" + id);
    }
    [[nodiscard]] std::vector<std::string> pendingIds() const {
        std::vector<std::string> ids;
        for (const auto& request : monitor.pendingRequests()) {
            ids.push_back(request.id);
        }
        return ids;
    }
    /// Whether the session at that place of the list waits for the user.
    [[nodiscard]] bool waits(std::size_t index = 0) const {
        return std::holds_alternative<ClaudeStatus::NeedsApproval>(monitor.summaries().at(index).status);
    }
    /// Lets everything be read that is read in the background.
    void finishReading() {
        while (platform.time.runBackground() > 0) {
        }
    }
    [[nodiscard]] double now() const { return platform.time.now(); }

    FakePlatform platform;
    FakeDefaults settings{platform};
    SupportDirectory supportDirectory{platform.disk, platform.paths.support, platform.paths.runtime};
    HookedAgentMonitor monitor{makeAgent(seams(), supportDirectory), seams(), supportDirectory, settings};
    int changes = 0; ///< how often the sessions or the requests were said to be others

  private:
    std::string m_spool;
    std::string m_answers;
};

} // namespace veslora
