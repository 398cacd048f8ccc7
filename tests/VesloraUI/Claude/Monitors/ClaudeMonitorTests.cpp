// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/ClaudeSource.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(ClaudeMonitorTest, BeatsIntoTheRuntimeFolderThroughALink) {
    monitor.start();
    EXPECT_EQ(platform.disk.text("/run/user/1000/veslora/heartbeat"), "1800000000");
    const auto link = platform.disk.stat(std::string(support) + "/heartbeat", Links::refuse);
    ASSERT_TRUE(link);
    EXPECT_TRUE(link->isLink);
    platform.advance(2);
    EXPECT_EQ(platform.disk.text(std::string(support) + "/heartbeat"), "1800000002");
    EXPECT_EQ(platform.disk.text(std::string(support) + "/pid"), "4711\npid:[4026531836]\n");
}

TEST_F(ClaudeMonitorTest, WritesNothingToTheDiskWhileItRests) {
    putSession("s1", "busy", now());
    monitor.start();
    platform.advance(10);
    const int before = platform.disk.writes();
    platform.advance(20);
    EXPECT_EQ(platform.disk.writes() - before, 10) << "ten heartbeats, all of them in the runtime folder";
    EXPECT_EQ(platform.disk.syncedWrites(), 0);
}

TEST_F(ClaudeMonitorTest, BeatsInTheSupportFolderWithoutARuntimeFolder) {
    SupportDirectory alone(platform.disk, support, support);
    alone.writeHeartbeat(now());
    const auto found = platform.disk.stat(std::string(support) + "/heartbeat", Links::refuse);
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isRegular);
    EXPECT_EQ(found->mode, 0600u);
}

TEST_F(ClaudeMonitorTest, ClosesTheSupportFolderToOthers) {
    platform.disk.makeDirectory(support, 0755);
    monitor.start();
    EXPECT_EQ(platform.disk.stat(support, Links::refuse)->mode, 0700u);
    EXPECT_EQ(platform.disk.stat(spool, Links::refuse)->mode, 0700u);
}

TEST_F(ClaudeMonitorTest, StopLetsTheScriptsGo) {
    monitor.start();
    monitor.stop();
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/heartbeat"));
    EXPECT_FALSE(platform.disk.exists("/run/user/1000/veslora/heartbeat"));
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/pid"));
    EXPECT_EQ(platform.watches.count(spool), 0u);
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(ClaudeMonitorTest, AFolderThatDoesNotExistSaysNothingOfAnySession) {
    ClaudeSource source(seams());
    EXPECT_THAT(source.readSessions(), IsEmpty());
    EXPECT_FALSE(source.liveSessionIds());
    EXPECT_THAT(source.sessions(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, AnEmptyFolderMeansNoSessions) {
    platform.disk.makeDirectory(sessions, 0700);
    ClaudeSource source(seams());
    EXPECT_THAT(source.readSessions(), IsEmpty());
    ASSERT_TRUE(source.liveSessionIds());
    EXPECT_THAT(*source.liveSessionIds(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, WatchesASessionFolderThatComesLater) {
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

TEST_F(ClaudeMonitorTest, ASessionGoesWithItsProcess) {
    putSession("s1", "busy", now());
    monitor.start();
    ASSERT_THAT(monitor.summaries(), SizeIs(1));
    platform.tasks.alive.clear();
    monitor.refresh();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, AHalfWrittenSessionFileCountsAsWhatItWas) {
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

TEST_F(ClaudeMonitorTest, NoticesASecondWriteWithinOneTickOfTheClock) {
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

TEST_F(ClaudeMonitorTest, IgnoresSessionFilesThatAreNotPlainFilesOfOurs) {
    platform.disk.makeDirectory(sessions, 0700);
    platform.disk.putSpecial(std::string(sessions) + "/1.json");
    platform.disk.put("/elsewhere.json", R"({"sessionId":"x","pid":10})");
    platform.disk.makeLink("/elsewhere.json", std::string(sessions) + "/2.json");
    putSession("s1", "busy", now());
    platform.disk.giveAway(std::string(sessions) + "/10.json");
    monitor.start();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, QueuesARequestForASessionWithoutAFile) {
    putRequest("aB3xYz");
    monitor.start();
    EXPECT_THAT(pendingIds(), ElementsAre("aB3xYz"));
    EXPECT_FALSE(answerOf("aB3xYz"));
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(platform.disk.exists(std::string(spool) + "/perm-aB3xYz.json"));
}

TEST_F(ClaudeMonitorTest, TakesARequestWhenItsFileArrives) {
    monitor.start();
    putRequest("aB3xYz");
    platform.watches.fire(spool, DirectoryChanges::movedInto);
    EXPECT_THAT(pendingIds(), ElementsAre("aB3xYz"));
}

TEST_F(ClaudeMonitorTest, PassesARequestWhoseTerminalIsInFront) {
    putSession("s1", "busy", now());
    platform.hosts.frontmost = {10};
    putRequest("aB3xYz");
    monitor.start();
    EXPECT_EQ(answerOf("aB3xYz"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, PassesEveryRequestWhenTheIslandMayNotAnswer) {
    for (const std::string_view key :
         {SettingsKeys::claudeAnswerFromIsland, SettingsKeys::claudeApprovalAlerts}) {
        settings.set(key, false);
        putRequest("aaa");
        putRequest("bbb", "Bash", "unknown");
        monitor.refresh();
        EXPECT_EQ(answerOf("aaa"), "pass") << key;
        EXPECT_EQ(answerOf("bbb"), "pass") << key;
        settings.set(key, true);
    }
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, PassesWhatCannotBeAnsweredFromOutside) {
    putRequest("aaa", "AskUserQuestion");
    putRequest("bbb", "ExitPlanMode");
    monitor.start();
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_EQ(answerOf("bbb"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, PassesWhatItCannotUnderstand) {
    putIntoSpool("perm-aaa.json", "{\"half");
    putIntoSpool("perm-bbb.json", "");
    platform.disk.putSpecial(std::string(spool) + "/perm-ccc.json");
    monitor.start();
    for (const char* id : {"aaa", "bbb", "ccc"}) {
        EXPECT_EQ(answerOf(id), "pass") << id;
    }
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, NoIdNamesAFileOutsideTheAnswers) {
    for (const char* id : {"..", ".", "a b", "a.b", "äöü", ""}) {
        putRequest(id);
    }
    monitor.start();
    monitor.answer("../evil", ClaudeDecision::allow);
    monitor.answer("/tmp/evil", ClaudeDecision::allow);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(platform.disk.exists(std::string(support) + "/evil"));
    EXPECT_FALSE(platform.disk.exists("/tmp/evil"));
    EXPECT_THAT(platform.disk.list(answers).value_or(std::vector<std::string>()), IsEmpty());
}

TEST_F(ClaudeMonitorTest, AnAnswerIsWrittenAndTheRequestIsGone) {
    putRequest("aaa");
    monitor.start();
    changes = 0;
    monitor.answer("aaa", ClaudeDecision::allow);
    EXPECT_EQ(answerOf("aaa"), "allow");
    EXPECT_EQ(platform.disk.stat(std::string(answers) + "/aaa", Links::refuse)->mode, 0600u);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_EQ(changes, 1);
}

TEST_F(ClaudeMonitorTest, ARequestIsOverAfterTwentySeconds) {
    putRequest("aaa");
    monitor.start();
    platform.advance(18);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
    platform.advance(2);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeMonitorTest, ASessionThatMovedOnTakesItsRequestAlong) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    putRequest("aaa");
    monitor.start();
    ASSERT_THAT(pendingIds(), ElementsAre("aaa"));
    platform.advance(2);
    putSession("s1", "idle", now());
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeMonitorTest, AnsweredInTheTerminalAsTheSessionsFileTells) {
    putSession("s1", "waiting", now() - 0.04, R"(,"waitingFor":"permission prompt")");
    putRequest("aaa");
    monitor.start();
    platform.advance(2);
    putSession("s1", "busy", now());
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeMonitorTest, AWaitOfLongBeforeProvesNothing) {
    putSession("s1", "waiting", now() - 5, R"(,"waitingFor":"permission prompt")");
    monitor.start();
    putRequest("aaa");
    putSession("s1", "busy", now() + 0.001);
    monitor.refresh();
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
}

TEST_F(ClaudeMonitorTest, AnsweredInTheTerminalAsTheToolsEndTells) {
    putRequest("aaa");
    monitor.start();
    platform.advance(1);
    putEvent("tmp.111111.json", "PostToolUse", R"(,"tool_name":"Bash","tool_input":{"command":"other"})");
    putEvent("tmp.222222.json", "Stop");
    monitor.refresh();
    EXPECT_THAT(pendingIds(), ElementsAre("aaa")) << "another tool, or a subagent's stop, proves nothing";
    putEvent("tmp.333333.json", "PostToolUse", R"(,"tool_name":"Bash","tool_input":{"command":"ls"})");
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, ANewPromptEndsTheRequest) {
    putRequest("aaa");
    monitor.start();
    platform.advance(1);
    putEvent("tmp.111111.json", "UserPromptSubmit");
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, NoNoticeFlashesUpBehindAnAnswer) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    putRequest("aaa");
    monitor.start();
    ASSERT_TRUE(waits());
    monitor.answer("aaa", ClaudeDecision::deny);
    EXPECT_FALSE(waits());
    platform.advance(1);
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    monitor.refresh();
    EXPECT_TRUE(waits()) << "the next wait shows again";
}

TEST_F(ClaudeMonitorTest, TakesSpoolFilesByTimeThenByName) {
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

TEST_F(ClaudeMonitorTest, AnEventOfYesterdayIsDroppedUnheard) {
    putSession("s1", "busy", now());
    platform.disk.clock = now() - 86'401;
    putEvent("tmp.aaaaaa.json", "PreToolUse", R"(,"tool_name":"A")");
    putRequest("aaa");
    monitor.start();
    EXPECT_FALSE(monitor.summaries()[0].activity);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(ClaudeMonitorTest, SweepsLeftoversOlderThanADay) {
    platform.disk.clock = now() - 86'401;
    putIntoSpool("tmp.oldold", "x");
    platform.disk.clock = now();
    putIntoSpool("tmp.newnew", "x");
    monitor.start();
    EXPECT_FALSE(platform.disk.exists(std::string(spool) + "/tmp.oldold"));
    EXPECT_TRUE(platform.disk.exists(std::string(spool) + "/tmp.newnew"));
}

TEST_F(ClaudeMonitorTest, ClearsAnswersNobodyCameFor) {
    monitor.start();
    monitor.answer("aaa", ClaudeDecision::allow);
    platform.advance(58);
    EXPECT_TRUE(answerOf("aaa"));
    platform.advance(4);
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeMonitorTest, AnIdleRefreshTellsNobody) {
    putSession("s1", "busy", now());
    monitor.start();
    const int before = changes;
    platform.advance(20);
    EXPECT_EQ(changes, before);
}

TEST_F(ClaudeMonitorTest, JumpRaisesTheTerminalAndCountsAsSeen) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    platform.hosts.apps[10] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{99, 7}));
    EXPECT_FALSE(waits());
}

TEST_F(ClaudeMonitorTest, JumpLeadsThroughThePaneThatTheSessionNames) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt","tmux":"-t %9:@0.%3")");
    platform.multiplexer.clients[10] = 77;
    platform.hosts.apps[77] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.multiplexer.calls, ElementsAre(FakeMultiplexer::Call{10, "%3"}));
    EXPECT_FALSE(waits()) << "seen at once, whatever the multiplexer does";
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{99, 7}));
}

TEST_F(ClaudeMonitorTest, JumpWithoutAnAttachedClientFallsBackToTheProcess) {
    putSession("s1", "busy", now(), R"(,"tmux":"main:@0.%3")");
    platform.hosts.apps[10] = HostApp{98, 6};
    monitor.start();
    monitor.jump("s1");
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{98, 6}));
}

TEST_F(ClaudeMonitorTest, AnOddPaneReachesNoMultiplexer) {
    putSession("s1", "busy", now(), R"(,"tmux":"main:@0.%3;kill-server")");
    platform.hosts.apps[10] = HostApp{98, 6};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{98, 6}));
    EXPECT_THAT(platform.multiplexer.calls, IsEmpty());
}

TEST_F(ClaudeMonitorTest, NothingIsRaisedAfterTheEnd) {
    putSession("s1", "busy", now(), R"(,"tmux":"main:@0.%3")");
    platform.multiplexer.clients[10] = 77;
    platform.hosts.apps[77] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    monitor.stop();
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
}

TEST_F(ClaudeMonitorTest, JumpingToAnUnseenSessionStillDismissesIt) {
    monitor.start();
    putEvent("tmp.aaaaaa.json", "Notification", R"(,"notification_type":"permission_prompt")");
    monitor.refresh();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
    putSession("s1", "busy", now() - 1);
    monitor.refresh();
    EXPECT_FALSE(waits());
}

} // namespace
} // namespace veslora
