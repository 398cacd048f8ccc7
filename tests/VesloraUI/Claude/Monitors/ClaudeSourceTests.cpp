// SPDX-License-Identifier: MIT
// What the files that Claude Code keeps of its sessions tell.
#include "VesloraUI/Claude/Monitors/ClaudeSource.h"
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class ClaudeSourceTest : public ClaudeMonitorTest {};

TEST_F(ClaudeSourceTest, AFolderThatDoesNotExistSaysNothingOfAnySession) {
    ClaudeSource source(seams());
    EXPECT_THAT(source.readSessions(), IsEmpty());
    EXPECT_FALSE(source.liveSessionIds());
    EXPECT_THAT(source.sessions(), IsEmpty());
}

TEST_F(ClaudeSourceTest, AnEmptyFolderMeansNoSessions) {
    platform.disk.makeDirectory(sessions, 0700);
    ClaudeSource source(seams());
    EXPECT_THAT(source.readSessions(), IsEmpty());
    ASSERT_TRUE(source.liveSessionIds());
    EXPECT_THAT(*source.liveSessionIds(), IsEmpty());
}

TEST_F(ClaudeSourceTest, WatchesASessionFolderThatComesLater) {
    platform.watches.refused.insert(sessions);
    monitor.start();
    EXPECT_EQ(platform.watches.count(sessions), 0u);
    platform.watches.refused.clear();
    platform.advance(2);
    EXPECT_EQ(platform.watches.count(sessions), 1u);
    putSession("s1", "busy", now());
    platform.watches.fire(sessions, DirectoryChanges::any);
    EXPECT_THAT(monitor.summaries(), SizeIs(1));
}

TEST_F(ClaudeSourceTest, ASessionGoesWithItsProcess) {
    putSession("s1", "busy", now());
    monitor.start();
    ASSERT_THAT(monitor.summaries(), SizeIs(1));
    platform.tasks.alive.clear();
    monitor.refresh();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

TEST_F(ClaudeSourceTest, AHalfWrittenSessionFileCountsAsWhatItWas) {
    putSession("s1", "busy", now());
    monitor.start();
    platform.advance(3);
    for (const char* torn : {"", R"({"sessionId":"s1","pi)", "\0\0\0"}) {
        platform.disk.rewrite(std::string(sessions) + "/10.json", torn);
        monitor.refresh();
        EXPECT_THAT(monitor.summaries(), SizeIs(1)) << "torn to: " << torn;
        platform.advance(2);
    }
    platform.disk.remove(std::string(sessions) + "/10.json");
    monitor.refresh();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

TEST_F(ClaudeSourceTest, NoticesASecondWriteWithinOneTickOfTheClock) {
    putSession("s1", "busy", now());
    monitor.start();
    ASSERT_TRUE(std::holds_alternative<ClaudeStatus::Working>(monitor.summaries()[0].status));
    // The same stamp, the same length, the same file.
    const std::string text = *platform.disk.text(std::string(sessions) + "/10.json");
    std::string changed = text;
    changed.replace(changed.find("busy"), 4, "idle");
    platform.disk.rewrite(std::string(sessions) + "/10.json", changed);
    monitor.refresh();
    EXPECT_FALSE(std::holds_alternative<ClaudeStatus::Working>(monitor.summaries()[0].status));
}

TEST_F(ClaudeSourceTest, IgnoresSessionFilesThatAreNotPlainFilesOfOurs) {
    platform.disk.makeDirectory(sessions, 0700);
    platform.disk.putSpecial(std::string(sessions) + "/1.json");
    platform.disk.put("/elsewhere.json", R"({"sessionId":"x","pid":10})");
    platform.disk.makeLink("/elsewhere.json", std::string(sessions) + "/2.json");
    putSession("s1", "busy", now());
    platform.disk.giveAway(std::string(sessions) + "/10.json");
    monitor.start();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

} // namespace
} // namespace veslora
