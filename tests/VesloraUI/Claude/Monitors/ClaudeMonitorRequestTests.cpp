// SPDX-License-Identifier: MIT
// What becomes of Claude Code's requests: asked about, passed, answered, and over without an answer.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClaudeMonitorRequestTest : public ClaudeMonitorTest {};

TEST_F(ClaudeMonitorRequestTest, QueuesARequestForASessionWithoutAFile) {
    putRequest("aB3xYz");
    monitor.start();
    EXPECT_THAT(pendingIds(), ElementsAre("aB3xYz"));
    EXPECT_FALSE(answerOf("aB3xYz"));
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(platform.disk.exists(std::string(spool) + "/perm-aB3xYz.json"));
}

TEST_F(ClaudeMonitorRequestTest, TakesARequestWhenItsFileArrives) {
    monitor.start();
    putRequest("aB3xYz");
    platform.watches.fire(spool, DirectoryChanges::movedInto);
    EXPECT_THAT(pendingIds(), ElementsAre("aB3xYz"));
}

TEST_F(ClaudeMonitorRequestTest, PassesARequestWhoseTerminalIsInFront) {
    putSession("s1", "busy", now());
    platform.hosts.frontmost = {10};
    putRequest("aB3xYz");
    monitor.start();
    EXPECT_EQ(answerOf("aB3xYz"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorRequestTest, PassesEveryRequestWhenTheIslandMayNotAnswer) {
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

TEST_F(ClaudeMonitorRequestTest, PassesWhatCannotBeAnsweredFromOutside) {
    putRequest("aaa", "AskUserQuestion");
    putRequest("bbb", "ExitPlanMode");
    monitor.start();
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_EQ(answerOf("bbb"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorRequestTest, PassesWhatItCannotUnderstand) {
    putIntoSpool("perm-aaa.json", "{\"half");
    putIntoSpool("perm-bbb.json", "");
    platform.disk.putSpecial(std::string(spool) + "/perm-ccc.json");
    monitor.start();
    for (const char* id : {"aaa", "bbb", "ccc"}) {
        EXPECT_EQ(answerOf(id), "pass") << id;
    }
    EXPECT_THAT(platform.disk.list(spool).value(), IsEmpty());
}

TEST_F(ClaudeMonitorRequestTest, NoIdNamesAFileOutsideTheAnswers) {
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

TEST_F(ClaudeMonitorRequestTest, AnAnswerIsWrittenAndTheRequestIsGone) {
    putRequest("aaa");
    monitor.start();
    changes = 0;
    monitor.answer("aaa", ClaudeDecision::allow);
    EXPECT_EQ(answerOf("aaa"), "allow");
    EXPECT_EQ(platform.disk.stat(std::string(answers) + "/aaa", Links::refuse)->mode, 0600u);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_EQ(changes, 1);
}

TEST_F(ClaudeMonitorRequestTest, ARequestIsOverAfterTwentySeconds) {
    putRequest("aaa");
    monitor.start();
    platform.advance(18);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
    platform.advance(2);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeMonitorRequestTest, ASessionThatMovedOnTakesItsRequestAlong) {
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

TEST_F(ClaudeMonitorRequestTest, AnsweredInTheTerminalAsTheSessionsFileTells) {
    putSession("s1", "waiting", now() - 0.04, R"(,"waitingFor":"permission prompt")");
    putRequest("aaa");
    monitor.start();
    platform.advance(2);
    putSession("s1", "busy", now());
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeMonitorRequestTest, AWaitOfLongBeforeProvesNothing) {
    putSession("s1", "waiting", now() - 5, R"(,"waitingFor":"permission prompt")");
    monitor.start();
    putRequest("aaa");
    putSession("s1", "busy", now() + 0.001);
    monitor.refresh();
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
}

TEST_F(ClaudeMonitorRequestTest, AnsweredInTheTerminalAsTheToolsEndTells) {
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

TEST_F(ClaudeMonitorRequestTest, ANewPromptEndsTheRequest) {
    putRequest("aaa");
    monitor.start();
    platform.advance(1);
    putEvent("tmp.111111.json", "UserPromptSubmit");
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeMonitorRequestTest, NoNoticeFlashesUpBehindAnAnswer) {
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

} // namespace
} // namespace veslora
