// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "tests/VesloraUI/Claude/Monitors/CodexMonitorTest.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr auto runtimeBeat = "/run/user/1000/veslora/heartbeat";

/// Both agents' monitors on one support directory, as the program has them.
class BothMonitorsTest : public CodexMonitorTest {
  protected:
    [[nodiscard]] bool beats() const { return platform.disk.exists(runtimeBeat); }

    HookedAgentMonitor claude{claudeAgent(seams(), supportDirectory), seams(), supportDirectory, settings};
    AgentsModel agents{{&claude, &monitor}};
};

TEST_F(BothMonitorsTest, EveryRowOfTheTableHasItsMonitorInTheSameOrder) {
    const auto monitors = makeAgentMonitors(seams(), supportDirectory, settings);
    ASSERT_EQ(monitors.size(), agentTraits.size());
    for (std::size_t index = 0; index < monitors.size(); ++index) {
        EXPECT_EQ(&monitors[index]->traits(), &agentTraits[index]);
        EXPECT_NE(monitors[index]->usage(), nullptr);
    }
}

TEST_F(BothMonitorsTest, OneBeatServesBoth) {
    agents.start();
    const int before = platform.disk.writes();
    platform.advance(20);
    EXPECT_EQ(platform.disk.writes() - before, 10) << "ten ticks, one beat each";
    EXPECT_EQ(platform.disk.text(runtimeBeat), std::to_string(static_cast<std::int64_t>(now())));
}

TEST_F(BothMonitorsTest, BothTickTogether) {
    agents.start();
    EXPECT_EQ(platform.time.pending(), 2u);
    platform.advance(*platform.time.nextDelay());
    EXPECT_EQ(platform.time.nextDelay(), HookedAgentMonitor::period);
}

TEST_F(BothMonitorsTest, TheSignsStandUntilTheLastHasStopped) {
    agents.start();
    claude.stop();
    EXPECT_TRUE(beats());
    platform.advance(2);
    EXPECT_EQ(platform.disk.text(runtimeBeat), "1800000002") << "the other goes on beating";
    monitor.stop();
    EXPECT_FALSE(beats());
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/heartbeat"));
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/pid"));
    EXPECT_EQ(platform.time.pending(), 0u);
    claude.start();
    EXPECT_TRUE(beats()) << "at once, though the last beat was in this very second";
    claude.stop();
    EXPECT_FALSE(beats());
}

TEST_F(BothMonitorsTest, ABeatThatFailedIsTriedAgainByTheOther) {
    FaultInjectingFiles files(platform.disk);
    SupportDirectory directory(files, platform.paths.support, platform.paths.runtime);
    files.writeError = std::errc::no_space_on_device;
    directory.writeHeartbeat(now());
    EXPECT_FALSE(beats());
    files.writeError.reset();
    directory.writeHeartbeat(now());
    EXPECT_TRUE(beats());
}

TEST_F(BothMonitorsTest, AClockSetBackBeatsAgain) {
    supportDirectory.writeHeartbeat(now());
    supportDirectory.writeHeartbeat(now() - 5000);
    EXPECT_EQ(platform.disk.text(runtimeBeat), std::to_string(static_cast<std::int64_t>(now()) - 5000));
}

TEST_F(BothMonitorsTest, AnAnswerGoesToTheAgentThatAsked) {
    platform.disk.put(std::string(support) + "/claude-spool/perm-abc.json",
                      payload("PermissionRequest", R"(,"tool_name":"Bash")"));
    putRequest("10-abc");
    agents.start();
    EXPECT_THAT(agents.pendingRequests(), SizeIs(2));
    agents.answer("10-abc", ClaudeDecision::deny);
    EXPECT_EQ(answerOf("10-abc"), "deny");
    EXPECT_THAT(platform.disk.list(std::string(support) + "/answers").value_or(std::vector<std::string>()),
                IsEmpty());
    agents.answer("abc", ClaudeDecision::allow);
    EXPECT_EQ(platform.disk.text(std::string(support) + "/answers/abc"), "allow");
    EXPECT_THAT(agents.pendingRequests(), IsEmpty());
}

} // namespace
} // namespace veslora
