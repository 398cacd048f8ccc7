// SPDX-License-Identifier: MIT
// What becomes of requests and events that are large, late, or whose session is gone.
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClaudeMonitorSpoolTest : public ClaudeMonitorTest {};

TEST_F(ClaudeMonitorSpoolTest, TakesSpoolFilesByTimeThenByName) {
    monitor.start();
    putSession("s1", "busy", now());
    putEvent("tmp.bbbbbb.json", "PreToolUse", R"(,"tool_name":"B")");
    putEvent("tmp.aaaaaa.json", "PreToolUse", R"(,"tool_name":"A")");
    monitor.refresh();
    EXPECT_EQ(monitor.summaries()[0].activity, "B") << "of one moment, the later name is applied last";
    platform.disk.clock = now() - 1;
    putEvent("tmp.zzzzzz.json", "PreToolUse", R"(,"tool_name":"Z")");
    platform.disk.clock = now();
    putEvent("tmp.cccccc.json", "PreToolUse", R"(,"tool_name":"C")");
    monitor.refresh();
    EXPECT_EQ(monitor.summaries()[0].activity, "C");
}

TEST_F(ClaudeMonitorSpoolTest, ARequestThatIsFiledJustBeforeTheFirstWatchIsSeenAtOnce) {
    putSession("s1", "busy", now());
    platform.watches.beforeWatch = [this](const std::string& directory) {
        if (directory == spool) {
            putRequest("aaa");
        }
    };
    monitor.start();
    finishReading();
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
}

TEST_F(ClaudeMonitorSpoolTest, AnEventOfYesterdayIsDroppedUnheard) {
    putSession("s1", "busy", now());
    platform.disk.clock = now() - 86'401;
    putEvent("tmp.aaaaaa.json", "PreToolUse", R"(,"tool_name":"A")");
    putRequest("aaa");
    monitor.start();
    EXPECT_FALSE(monitor.summaries()[0].activity);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(ClaudeMonitorSpoolTest, SweepsLeftoversOlderThanADay) {
    platform.disk.clock = now() - 86'401;
    putIntoSpool("tmp.oldold", "x");
    platform.disk.clock = now();
    putIntoSpool("tmp.newnew", "x");
    monitor.start();
    EXPECT_FALSE(platform.disk.exists(std::string(spool) + "/tmp.oldold"));
    EXPECT_TRUE(platform.disk.exists(std::string(spool) + "/tmp.newnew"));
}

TEST_F(ClaudeMonitorSpoolTest, ARequestGoesWithItsTerminal) {
    const auto closed = [this](const std::function<void()>& close) {
        putSession("s1", "busy", now());
        putRequest("aaa");
        monitor.refresh();
        EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
        platform.disk.rewrite(std::string(sessions) + "/10.json", R"({"sessionId":"s1","pi)");
        monitor.refresh();
        EXPECT_THAT(pendingIds(), ElementsAre("aaa")) << "a half-written file is not gone";
        close();
        monitor.refresh();
        EXPECT_THAT(pendingIds(), IsEmpty());
        EXPECT_FALSE(answerOf("aaa"));
        platform.advance(30);
    };
    monitor.start();
    closed([this] { platform.disk.remove(std::string(sessions) + "/10.json"); });
    closed([this] { platform.tasks.alive.erase(10); });
    platform.tasks.alive.insert(10);
    closed([this] { putSession("cleared", "idle", now()); });
}

TEST_F(ClaudeMonitorSpoolTest, ARequestOfASessionThatNeverHadAFileStays) {
    platform.disk.makeDirectory(sessions, 0700);
    putRequest("aaa");
    monitor.start();
    platform.advance(10);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
}

TEST_F(ClaudeMonitorSpoolTest, AFolderThatIsAwaySaysNothingOfARequest) {
    putSession("s1", "busy", now());
    putRequest("aaa");
    monitor.start();
    platform.disk.removeTree(sessions);
    monitor.refresh();
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
}

TEST_F(ClaudeMonitorSpoolTest, ALargeEventIsHeardBeforeTheRequestBehindIt) {
    putSession("s1", "busy", now());
    monitor.start();
    platform.disk.clock = now() - 0.012;
    putEvent("tmp.111111.json", "PreToolUse",
             R"(,"tool_name":"Write","tool_input":{"content":")" + std::string(8'000'000, 'x') +
                 R"(","file_path":"/a/b.txt"})");
    platform.disk.clock = now();
    putRequest("aaa");
    monitor.refresh();
    EXPECT_FALSE(monitor.summaries()[0].activity);
    EXPECT_THAT(pendingIds(), IsEmpty());
    platform.advance(2);
    EXPECT_THAT(pendingIds(), IsEmpty()) << "the ticks go on, and the request waits for its turn";
    finishReading();
    EXPECT_EQ(monitor.summaries()[0].activity, "Write: b.txt");
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
    platform.advance(18);
    EXPECT_THAT(pendingIds(), IsEmpty()) << "its time runs from when it was filed";
}

TEST_F(ClaudeMonitorSpoolTest, ALargeEventEndsTheRequestBeforeIt) {
    putRequest("aaa");
    platform.disk.clock = now() + 0.5;
    putEvent("tmp.111111.json", "PostToolUse",
             R"(,"tool_response":")" + std::string(1'000'000, 'x') +
                 R"(","tool_name":"Bash","tool_input":{"command":"ls"})");
    monitor.start();
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
    finishReading();
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorSpoolTest, ARequestOverAMegabyteIsPassed) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    monitor.start();
    putEvent("perm-aaa.json", "PermissionRequest",
             R"(,"tool_name":"Bash","tool_input":{"command":")" +
                 std::string(ClaudePermissionRequest::longestPayload, 'x') + "\"}");
    monitor.refresh();
    finishReading();
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_TRUE(waits()) << "the notice of the session's own wait";
}

TEST_F(ClaudeMonitorSpoolTest, AWaitWithoutAStampIsToldOnce) {
    platform.disk.put(std::string(sessions) + "/10.json",
                      R"({"sessionId":"s1","pid":10,"status":"waiting","waitingFor":"permission prompt"})");
    monitor.start();
    const int before = changes;
    platform.advance(10);
    EXPECT_EQ(changes, before);
}

TEST_F(ClaudeMonitorSpoolTest, NothingIsTakenInAfterTheEnd) {
    monitor.start();
    putEvent("perm-aaa.json", "PermissionRequest",
             R"(,"tool_name":"Bash","tool_input":{"command":")" + std::string(100'000, 'x') + "\"}");
    monitor.refresh();
    monitor.stop();
    finishReading();
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_TRUE(platform.disk.exists(std::string(spool) + "/perm-aaa.json"));
}

} // namespace
} // namespace veslora
