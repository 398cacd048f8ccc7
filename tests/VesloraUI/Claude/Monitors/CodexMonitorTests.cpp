// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Claude/Monitors/CodexMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(CodexMonitorTest, WithoutASessionNoProcessIsLookedAt) {
    monitor.start();
    platform.advance(20);
    EXPECT_EQ(platform.tasks.scans, 0);
    putEvent("SessionStart");
    monitor.refresh();
    EXPECT_EQ(platform.tasks.scans, 1);
    putEvent("SessionEnd");
    monitor.refresh();
    platform.advance(20);
    EXPECT_EQ(platform.tasks.scans, 1);
}

TEST_F(CodexMonitorTest, HearsOfASessionAtOnce) {
    monitor.start();
    EXPECT_EQ(platform.disk.stat(spool, Links::refuse)->mode, 0700u);
    putEvent("UserPromptSubmit");
    platform.watches.fire(spool, DirectoryChanges::movedInto);
    EXPECT_THAT(monitor.summaries(),
                ElementsAre(ClaudeSessionSummary{"s1", "proj", 10, ClaudeStatus::Working{now()}, std::nullopt,
                                                 AgentKind::codex}));
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(CodexMonitorTest, ANameOfAnotherFormIsDeletedUnread) {
    for (const char* name :
         {"tmp.abc.json", "ev-x-abc.json", "perm-abc.json", "other.json", "ev-10-a_b.json"}) {
        putIntoSpool(name, payload("UserPromptSubmit"));
    }
    putIntoSpool("tmp.abcdef", "half");
    monitor.start();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
    EXPECT_THAT(platform.disk.list(spool).value(), ElementsAre("tmp.abcdef"));
    EXPECT_FALSE(platform.disk.list(answers)) << "and nothing else happens";
    EXPECT_EQ(changes, 0);
}

TEST_F(CodexMonitorTest, TakesWhatCodexReallySends) {
    platform.tasks.alive.insert(17054);
    putIntoSpool("ev-17054-aaaaaa.json", captured("UserPromptSubmit.json"));
    putIntoSpool("perm-17054-bbbbbb.json", captured("PermissionRequest.Bash.json"));
    monitor.start();
    ASSERT_THAT(monitor.pendingRequests(), SizeIs(1));
    const ClaudePermissionRequest& request = monitor.pendingRequests().front();
    EXPECT_EQ(request.id, "17054-bbbbbb");
    EXPECT_EQ(request.agent, AgentKind::codex);
    EXPECT_EQ(request.text, "touch a.txt");
    ASSERT_THAT(monitor.summaries(), SizeIs(1));
    EXPECT_EQ(monitor.summaries()[0].name, "kw-sol");
    EXPECT_EQ(monitor.summaries()[0].pid, 17054);
    EXPECT_EQ(monitor.summaries()[0].status,
              ClaudeSessionStatus(ClaudeStatus::NeedsApproval{"Wants to use Bash", now()}));
}

TEST_F(CodexMonitorTest, ShowsAPatchInWords) {
    putIntoSpool("perm-10-bbbbbb.json", captured("PermissionRequest.apply_patch.json"));
    monitor.start();
    ASSERT_THAT(monitor.pendingRequests(), SizeIs(1));
    EXPECT_EQ(monitor.pendingRequests()[0].text,
              "apply_patch · command: *** Begin Patch\n*** Add File: new.txt\n+mock\n*** End Patch");
}

TEST_F(CodexMonitorTest, TheServersProcessIsNotTheSessions) {
    platform.tasks.running = {
        {500, "/home/me/.codex/packages/app-server-daemon/bin/codex", "app-server", "/home/me/proj"}};
    runCodex(11);
    putEvent("UserPromptSubmit", {}, "s1", 500);
    monitor.start();
    ASSERT_THAT(monitor.summaries(), SizeIs(1));
    EXPECT_EQ(monitor.summaries()[0].pid, 11) << "the terminal in the session's folder";
}

TEST_F(CodexMonitorTest, AServerIsNoClientWhicheverWayItIsTold) {
    runCodex(500, "/home/me/proj", "/opt/bin/codex", "app-server");
    runCodex(501, "/home/me/proj", "/home/me/app-server/codex");
    putEvent("UserPromptSubmit", {}, "s1", 0);
    monitor.start();
    EXPECT_EQ(monitor.summaries().at(0).pid, 0);
}

TEST_F(CodexMonitorTest, AClientWhoseFolderCannotBeReadIsNone) {
    platform.tasks.running = {{11, "/opt/bin/codex", "", std::nullopt}};
    putEvent("UserPromptSubmit", {}, "s1", 0);
    monitor.start();
    EXPECT_EQ(monitor.summaries().at(0).pid, 0);
}

TEST_F(CodexMonitorTest, TwoTerminalsOfOneFolderGoToTwoSessions) {
    runCodex(10);
    runCodex(11);
    putEvent("UserPromptSubmit", {}, "a", 0);
    putEvent("UserPromptSubmit", {}, "b", 0);
    monitor.start();
    EXPECT_EQ(monitor.summaries().at(0).pid, 10);
    EXPECT_EQ(monitor.summaries().at(1).pid, 11);
}

TEST_F(CodexMonitorTest, ASessionGoesWithItsProcess) {
    putEvent("UserPromptSubmit");
    monitor.start();
    EXPECT_THAT(monitor.summaries(), SizeIs(1));
    platform.tasks.alive.erase(10);
    platform.advance(2);
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

TEST_F(CodexMonitorTest, AProcessThatDiedIsReplacedBeforeItIsMissed) {
    putEvent("UserPromptSubmit", {}, "s1", 77);
    runCodex(11);
    monitor.start();
    EXPECT_EQ(monitor.summaries().at(0).pid, 11);
}

TEST_F(CodexMonitorTest, PassesARequestWhoseTerminalIsInFront) {
    // The process is found by the folder before the request is looked at.
    platform.tasks.running = {{500, "/opt/bin/codex", "app-server", "/"}};
    runCodex(11);
    platform.hosts.frontmost = {11};
    putRequest("500-aaaaaa");
    monitor.start();
    EXPECT_EQ(answerOf("500-aaaaaa"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_TRUE(waits());
}

TEST_F(CodexMonitorTest, AnUnknownProcessIsNeverInFront) {
    platform.hosts.frontmost = {0};
    putRequest("0-aaaaaa");
    monitor.start();
    EXPECT_THAT(pendingIds(), ElementsAre("0-aaaaaa"));
}

TEST_F(CodexMonitorTest, AWaitShowsAlsoWhenTheIslandMayNotAnswer) {
    settings.set(SettingsKeys::claudeAnswerFromIsland, false);
    putRequest("10-aaaaaa");
    monitor.start();
    EXPECT_EQ(answerOf("10-aaaaaa"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_EQ(monitor.summaries().at(0).status,
              ClaudeSessionStatus(ClaudeStatus::NeedsApproval{"Wants to use Bash", now()}));
}

TEST_F(CodexMonitorTest, AfterAPassTheWaitStaysUntilItIsOver) {
    settings.set(SettingsKeys::claudeApprovalAlerts, false);
    monitor.start();
    for (const char* event : {"PostToolUse", "UserPromptSubmit", "Stop", "Interrupt"}) {
        putRequest("10-aaaaaa");
        monitor.refresh();
        platform.advance(30);
        EXPECT_TRUE(waits()) << event;
        putEvent("PreToolUse");
        monitor.refresh();
        EXPECT_TRUE(waits()) << event;
        putEvent(event);
        monitor.refresh();
        EXPECT_FALSE(waits()) << event;
    }
    putRequest("10-bbbbbb");
    monitor.refresh();
    monitor.dismissApproval("s1");
    EXPECT_FALSE(waits());
}

TEST_F(CodexMonitorTest, AnAnswerEndsTheWaitAtOnce) {
    putRequest("10-aaaaaa");
    monitor.start();
    const int before = changes;
    monitor.answer("10-aaaaaa", ClaudeDecision::allow);
    EXPECT_EQ(answerOf("10-aaaaaa"), "allow");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(waits());
    EXPECT_EQ(changes, before + 1);
}

TEST_F(CodexMonitorTest, APassFromTheIslandKeepsTheWait) {
    putRequest("10-aaaaaa");
    monitor.start();
    monitor.answer("10-aaaaaa", ClaudeDecision::pass);
    EXPECT_EQ(answerOf("10-aaaaaa"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_TRUE(waits());
}

TEST_F(CodexMonitorTest, PassesWhatItCannotUnderstand) {
    putIntoSpool("perm-10-aaa.json", "{\"half");
    putIntoSpool("perm-10-bbb.json", "");
    platform.disk.putSpecial(std::string(spool) + "/perm-10-ccc.json");
    platform.disk.put("/elsewhere.json", payload("PermissionRequest", R"(,"tool_name":"Bash")"));
    platform.disk.makeLink("/elsewhere.json", std::string(spool) + "/perm-10-ddd.json");
    putIntoSpool("perm-10-eee.json", payload("Stop"));
    putIntoSpool("perm-10-fff.json", payload("PermissionRequest", R"(,"tool_name":"Bash")", "../odd"));
    putIntoSpool("perm-10-ggg.json", payload("PermissionRequest", R"(,"tool_name":"Bash")"));
    platform.disk.giveAway(std::string(spool) + "/perm-10-ggg.json");
    monitor.start();
    for (const char* id : {"10-aaa", "10-bbb", "10-ccc", "10-ddd", "10-eee", "10-fff", "10-ggg"}) {
        EXPECT_EQ(answerOf(id), "pass") << id;
    }
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
    EXPECT_TRUE(platform.disk.exists("/elsewhere.json"));
    EXPECT_THAT(monitor.summaries(), IsEmpty());
}

TEST_F(CodexMonitorTest, PassesWhatCannotBeAnsweredFromOutside) {
    putRequest("10-aaaaaa", "AskUserQuestion");
    monitor.start();
    EXPECT_EQ(answerOf("10-aaaaaa"), "pass");
}

TEST_F(CodexMonitorTest, ARequestGoesWithItsSessionAndItsScriptIsLetGo) {
    for (const char* event : {"SessionEnd", "PostToolUse", "Interrupt", "Stop"}) {
        const std::string id = std::string("10-") + event;
        putRequest(id);
        monitor.refresh();
        EXPECT_THAT(pendingIds(), ElementsAre(id));
        putEvent(event);
        monitor.refresh();
        EXPECT_THAT(pendingIds(), IsEmpty()) << event;
        EXPECT_EQ(answerOf(id), "pass") << event;
    }
}

TEST_F(CodexMonitorTest, ARequestIsOverAfterTwentySeconds) {
    monitor.start();
    putRequest("10-aaaaaa");
    monitor.refresh();
    platform.advance(18);
    EXPECT_THAT(pendingIds(), SizeIs(1));
    platform.advance(2);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_TRUE(waits()) << "the terminal asks now";
    EXPECT_FALSE(answerOf("10-aaaaaa"));
}

TEST_F(CodexMonitorTest, WhatIsADayOldIsDroppedUnheard) {
    platform.disk.clock = now() - 86'401;
    putEvent("UserPromptSubmit");
    putRequest("10-aaaaaa");
    monitor.start();
    EXPECT_THAT(monitor.summaries(), IsEmpty());
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(CodexMonitorTest, SweepsLeftoversAndAnswersNobodyCameFor) {
    platform.disk.clock = now() - 86'401;
    putIntoSpool("tmp.oldold", "x");
    platform.disk.put(std::string(answers) + "/10-old", "allow");
    platform.disk.clock = now();
    putIntoSpool("tmp.newnew", "x");
    monitor.start();
    EXPECT_THAT(platform.disk.list(spool).value(), ElementsAre("tmp.newnew"));
    EXPECT_FALSE(answerOf("10-old"));
}

TEST_F(CodexMonitorTest, JumpRaisesTheTerminalAndCountsAsSeen) {
    platform.hosts.apps[10] = HostApp{99, 7};
    putEvent("Stop");
    putRequest("10-aaaaaa");
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{99, 7}));
    EXPECT_THAT(platform.multiplexer.calls, IsEmpty());
    EXPECT_EQ(monitor.summaries().at(0).status, ClaudeSessionStatus(ClaudeStatus::Idle{}));
}

TEST_F(CodexMonitorTest, ASessionWithoutAProcessCannotBeJumpedToButCountsAsSeen) {
    platform.hosts.apps[0] = HostApp{99, 7};
    putEvent("Stop", {}, "s1", 0);
    monitor.start();
    EXPECT_TRUE(std::holds_alternative<ClaudeStatus::Finished>(monitor.summaries().at(0).status));
    monitor.jump("s1");
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
    EXPECT_THAT(platform.multiplexer.calls, IsEmpty());
    EXPECT_EQ(monitor.summaries().at(0).status, ClaudeSessionStatus(ClaudeStatus::Idle{}));
    monitor.jump("unknown");
    EXPECT_THAT(platform.hosts.activated, IsEmpty());
}

TEST_F(CodexMonitorTest, JumpAsksTheMultiplexerWhereNoWindowLiesAbove) {
    putEvent("UserPromptSubmit");
    platform.multiplexer.clients[10] = 77;
    platform.hosts.apps[77] = HostApp{99, 7};
    monitor.start();
    monitor.jump("s1");
    EXPECT_THAT(platform.multiplexer.calls, ElementsAre(FakeMultiplexer::Call{10, std::nullopt}));
    platform.advance(0);
    EXPECT_THAT(platform.hosts.activated, ElementsAre(HostApp{99, 7}));
}

TEST_F(CodexMonitorTest, AnIdleRefreshTellsNobody) {
    putEvent("UserPromptSubmit");
    monitor.start();
    const int before = changes;
    platform.advance(20);
    EXPECT_EQ(changes, before);
}

TEST_F(CodexMonitorTest, AFullSpoolIsTaken) {
    for (int count = 0; count < 4096; ++count) {
        putEvent("PreToolUse",
                 R"(,"tool_name":"Bash","tool_input":{"command":")" + std::string(200, 'x') + "\"}");
    }
    monitor.start();
    finishReading();
    EXPECT_THAT(monitor.summaries(), SizeIs(1));
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(CodexMonitorTest, ARequestOverAMegabyteIsPassedAndShowsAsAWait) {
    monitor.start();
    putIntoSpool("perm-10-aaaaaa.json",
                 payload("PermissionRequest", R"(,"tool_name":"Bash","tool_input":{"command":")" +
                                                  std::string(ClaudePermissionRequest::longestPayload, 'x') +
                                                  "\"}"));
    monitor.refresh();
    finishReading();
    EXPECT_EQ(answerOf("10-aaaaaa"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    ASSERT_THAT(monitor.summaries(), SizeIs(1));
    EXPECT_EQ(monitor.summaries()[0].status,
              ClaudeSessionStatus(ClaudeStatus::NeedsApproval{"Wants to use Bash", now()}));
}

TEST_F(CodexMonitorTest, ARequestWhoseScriptHasEndedRaisesNoWait) {
    platform.disk.clock = now() - 21;
    putRequest("10-aaaaaa");
    monitor.start();
    EXPECT_THAT(pendingIds(), IsEmpty());
    ASSERT_THAT(monitor.summaries(), SizeIs(1)) << "a sign of life all the same";
    EXPECT_FALSE(waits());
}

} // namespace
} // namespace veslora
