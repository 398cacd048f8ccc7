// SPDX-License-Identifier: MIT
// What the monitors of all agents do alike, on Claude Code's: the signs of life, and what reaches the disk.
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

class HookedAgentMonitorTest : public ClaudeMonitorTest {};

TEST_F(HookedAgentMonitorTest, BeatsIntoTheRuntimeFolderThroughALink) {
    monitor.start();
    EXPECT_EQ(platform.disk.text("/run/user/1000/veslora/heartbeat"), "1800000000");
    const auto link = platform.disk.stat(std::string(support) + "/heartbeat", Links::refuse);
    ASSERT_TRUE(link);
    EXPECT_TRUE(link->isLink);
    platform.advance(2);
    EXPECT_EQ(platform.disk.text(std::string(support) + "/heartbeat"), "1800000002");
    EXPECT_EQ(platform.disk.text(std::string(support) + "/pid"), "4711\npid:[4026531836]\n");
}

TEST_F(HookedAgentMonitorTest, WritesNothingToTheDiskWhileItRests) {
    putSession("s1", "busy", now());
    monitor.start();
    platform.advance(10);
    const int before = platform.disk.writes();
    platform.advance(20);
    EXPECT_EQ(platform.disk.writes() - before, 10) << "ten heartbeats, all of them in the runtime folder";
    EXPECT_EQ(platform.disk.syncedWrites(), 0);
}

TEST_F(HookedAgentMonitorTest, BeatsInTheSupportFolderWithoutARuntimeFolder) {
    SupportDirectory alone(platform.disk, support, support);
    alone.writeHeartbeat(now());
    const auto found = platform.disk.stat(std::string(support) + "/heartbeat", Links::refuse);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isRegular);
    EXPECT_EQ(found->mode, 0600u);
}

TEST_F(HookedAgentMonitorTest, ClosesTheSupportFolderToOthers) {
    platform.disk.makeDirectory(support, 0755);
    monitor.start();
    EXPECT_EQ(platform.disk.stat(support, Links::refuse)->mode, 0700u);
    EXPECT_EQ(platform.disk.stat(spool, Links::refuse)->mode, 0700u);
}

TEST_F(HookedAgentMonitorTest, StopLetsTheScriptsGo) {
    monitor.start();
    monitor.stop();
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/heartbeat"));
    EXPECT_FALSE(platform.disk.exists("/run/user/1000/veslora/heartbeat"));
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/pid"));
    EXPECT_EQ(platform.watches.count(spool), 0u);
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(HookedAgentMonitorTest, ClearsAnswersNobodyCameFor) {
    monitor.start();
    monitor.answer("aaa", ClaudeDecision::allow);
    platform.advance(58);
    EXPECT_TRUE(answerOf("aaa"));
    platform.advance(4);
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(HookedAgentMonitorTest, AnIdleRefreshTellsNobody) {
    putSession("s1", "busy", now());
    monitor.start();
    const int before = changes;
    platform.advance(20);
    EXPECT_EQ(changes, before);
}

} // namespace
} // namespace veslora
