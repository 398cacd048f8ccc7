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
    FakeMonitor codex{AgentKind::codex};
    AgentsModel agents{{&claude, &codex}};
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
    AgentsModel alone({&only});
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

TEST_F(AgentsModelTest, EveryQuestionCopiedAndSortedEverythingAgain) {
    const auto ask = [this] {
        return agents.summaries().size() + agents.waitingForApproval().size() +
               agents.pendingRequests().size() + (agents.latestFinished() ? 1 : 0) +
               (agents.longestWorking() ? 1 : 0) + (agents.mostUrgent() ? 1 : 0);
    };
    std::vector<std::size_t> answers;
    agents.setOnChange([&] { answers.push_back(ask()); });
    QObject::connect(&agents, &AgentsModel::changed, [&] { answers.push_back(ask()); });
    const std::uint64_t before = agents.merges();
    codex.publish({FakeMonitor::session("b", ClaudeStatus::NeedsApproval{"", 1}, AgentKind::codex)},
                  {FakeMonitor::request("r", 1)});
    EXPECT_THAT(answers, ElementsAre(4, 4)) << "told once to each, with both lists in place";
    EXPECT_EQ(agents.merges() - before, 1U) << "the sessions once and the requests once";
    claude.setHooks(true, false);
    claude.usageMonitor.put({});
    codex.publish(codex.summaries(), codex.pendingRequests());
    EXPECT_EQ(agents.merges() - before, 1U) << "nothing of theirs has changed";
}

TEST_F(AgentsModelTest, TheIslandHearsOfAChangeBeforeAnyViewDoes) {
    std::vector<std::string> heard;
    QObject::connect(&agents, &AgentsModel::changed, [&] { heard.emplace_back("views"); });
    agents.setOnChange([&] { heard.emplace_back("island"); });
    claude.publish({FakeMonitor::session("a", ClaudeStatus::Idle{})}, {});
    EXPECT_THAT(heard, ElementsAre("island", "views"));
}

TEST_F(AgentsModelTest, TakesInWhatWasPublishedBeforeIt) {
    claude.publish({FakeMonitor::session("a", ClaudeStatus::Idle{})}, {FakeMonitor::request("r", 1)});
    const AgentsModel later({&claude, &codex});
    EXPECT_EQ(later.summaries().size(), 1u);
    EXPECT_EQ(later.pendingRequests().size(), 1u);
}

TEST_F(AgentsModelTest, KnowsItsAgentsByTheirKinds) {
    EXPECT_EQ(agents.kinds(), QList<int>({0, 1}));
    EXPECT_EQ(agents.monitorOf(AgentKind::codex), &codex);
    const AgentsModel alone({&claude});
    EXPECT_EQ(alone.monitorOf(AgentKind::codex), nullptr);
    EXPECT_EQ(alone.traitsOf(AgentKind::codex).name, "Codex") << "as the program's own table has it";
}

} // namespace
} // namespace veslora
