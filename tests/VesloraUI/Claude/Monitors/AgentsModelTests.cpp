// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "tests/VesloraUI/Fixtures/FakeMonitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class AgentsModelTest : public testing::Test {
  protected:
    [[nodiscard]] std::vector<std::string> sessionIds() const {
        std::vector<std::string> ids;
        for (const auto& summary : agents.summaries()) {
            ids.push_back(summary.id);
        }
        return ids;
    }

    FakeMonitor claude;
    FakeMonitor codex;
    AgentsModel agents{claude, &codex};
};

TEST_F(AgentsModelTest, TheLongestWaitOfBothComesFirst) {
    claude.publish({FakeMonitor::session("a", ClaudeStatus::NeedsApproval{"", 36000})}, {});
    codex.publish({FakeMonitor::session("b", ClaudeStatus::NeedsApproval{"", 35940}, AgentKind::codex)}, {});
    EXPECT_THAT(sessionIds(), ElementsAre("b", "a"));
    EXPECT_EQ(agents.mostUrgent()->id, "b");
    EXPECT_EQ(agents.waitingForApproval().size(), 2u);
}

TEST_F(AgentsModelTest, WithoutSessionsThereIsNothing) {
    EXPECT_FALSE(agents.mostUrgent());
    EXPECT_FALSE(agents.latestFinished());
    EXPECT_FALSE(agents.longestWorking());
    EXPECT_THAT(agents.waitingForApproval(), IsEmpty());
}

TEST_F(AgentsModelTest, PicksTheNewestFinishAndTheLongestWork) {
    claude.publish({FakeMonitor::session("a", ClaudeStatus::Finished{5}),
                    FakeMonitor::session("b", ClaudeStatus::Working{9})},
                   {});
    codex.publish({FakeMonitor::session("c", ClaudeStatus::Finished{6}),
                   FakeMonitor::session("d", ClaudeStatus::Working{8})},
                  {});
    EXPECT_EQ(agents.latestFinished()->id, "c");
    EXPECT_EQ(agents.longestWorking()->id, "d");
}

TEST_F(AgentsModelTest, RequestsOfOneInstantKeepClaudesFirst) {
    codex.publish({}, {FakeMonitor::request("x", 5), FakeMonitor::request("early", 4)});
    claude.publish({}, {FakeMonitor::request("c", 5)});
    std::vector<std::string> ids;
    for (const auto& request : agents.pendingRequests()) {
        ids.push_back(request.id);
    }
    EXPECT_THAT(ids, ElementsAre("early", "c", "x"));
}

TEST_F(AgentsModelTest, AnIdOfBothGoesToCodex) {
    const auto waiting = ClaudeStatus::NeedsApproval{"", 1};
    claude.publish({FakeMonitor::session("s", waiting)}, {FakeMonitor::request("r", 1)});
    codex.publish({FakeMonitor::session("s", waiting)}, {FakeMonitor::request("r", 1)});
    agents.jump("s");
    agents.dismissApproval("s");
    agents.answer("r", ClaudeDecision::deny);
    EXPECT_THAT(codex.log, ElementsAre("jump s", "dismiss s"));
    EXPECT_THAT(codex.answered, ElementsAre(Pair("r", ClaudeDecision::deny)));
    EXPECT_THAT(claude.log, IsEmpty());
}

TEST_F(AgentsModelTest, WhatIsNotCodexsGoesToClaude) {
    agents.jump("s");
    agents.answer("unknown", ClaudeDecision::allow);
    EXPECT_THAT(claude.log, ElementsAre("jump s"));
    EXPECT_THAT(claude.answered, ElementsAre(Pair("unknown", ClaudeDecision::allow)));
}

TEST_F(AgentsModelTest, HooksOfEitherCount) {
    EXPECT_FALSE(agents.anyHooksInstalled());
    codex.setHooks(true, false);
    EXPECT_TRUE(agents.anyHooksInstalled());
}

TEST_F(AgentsModelTest, StartsAndStopsClaudeFirstAndServesWithoutCodex) {
    agents.start();
    agents.stop();
    EXPECT_THAT(claude.log, ElementsAre("start", "stop"));
    EXPECT_THAT(codex.log, ElementsAre("start", "stop"));
    FakeMonitor only;
    AgentsModel alone(only, nullptr);
    alone.start();
    alone.answer("r", ClaudeDecision::allow);
    EXPECT_FALSE(alone.anyHooksInstalled());
    EXPECT_THAT(only.log, ElementsAre("start"));
}

TEST_F(AgentsModelTest, TellsOfChangesOfBothAndOnlyOfChanges) {
    int changes = 0;
    agents.setOnChange([&] { ++changes; });
    claude.publish({FakeMonitor::session("a", ClaudeStatus::Idle{})}, {});
    claude.publish({FakeMonitor::session("a", ClaudeStatus::Idle{})}, {});
    codex.publish({}, {FakeMonitor::request("r", 1)});
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace veslora
