// SPDX-License-Identifier: MIT
// Whether the island asks a user who looks at the session's own terminal, in a multiplexer too.
#include "tests/VesloraUI/Claude/Monitors/HookedMonitorTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr std::int32_t terminal = 77; ///< the process of a client that is attached
constexpr HostApp window{99, 7};

class ClaudeFrontTerminalTest : public HookedMonitorTest<claudeAgent> {
  protected:
    ClaudeFrontTerminalTest()
        : HookedMonitorTest("/home/me/.local/share/Veslora/claude-spool",
                            "/home/me/.local/share/Veslora/answers") {
        putSession("s1", 10);
        platform.multiplexer.showing[10] = {terminal};
        monitor.start();
    }

    void putSession(const std::string& id, int pid, const std::string& more = {}) {
        platform.disk.put("/home/me/.claude/sessions/" + std::to_string(pid) + ".json",
                          R"({"sessionId":")" + id + R"(","pid":)" + std::to_string(pid) +
                              R"(,"cwd":"/p","status":"busy")" + more + "}");
    }
    void ask(const std::string& id, const std::string& session = "s1") {
        putIntoSpool("perm-" + id + ".json", R"({"session_id":")" + session +
                                                 R"(","hook_event_name":"PermissionRequest",)" +
                                                 R"("tool_name":"Bash","tool_input":{"command":"ls"}})");
        monitor.refresh();
    }
    [[nodiscard]] std::vector<FakeMultiplexer::Call> looks() const { return platform.multiplexer.looks; }
};

TEST_F(ClaudeFrontTerminalTest, TheIslandAskedAUserWhoLookedAtThePane) {
    platform.hosts.frontmost = {terminal};
    ask("aaa");
    EXPECT_THAT(pendingIds(), IsEmpty()) << "held back until the multiplexer has answered";
    EXPECT_FALSE(answerOf("aaa"));
    platform.advance(0);
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_THAT(looks(), ElementsAre(FakeMultiplexer::Call{10, std::nullopt}));
    EXPECT_THAT(platform.multiplexer.calls, IsEmpty()) << "nothing is selected";
}

TEST_F(ClaudeFrontTerminalTest, TheIslandAsksWhereNoClientInFrontShowsThePane) {
    ask("aaa");
    platform.advance(0);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa")) << "a client that is not in front";
    platform.multiplexer.showing[10] = {};
    platform.hosts.frontmost = {terminal};
    ask("bbb");
    platform.advance(0);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa", "bbb")) << "a client in front that shows another pane";
    EXPECT_FALSE(answerOf("aaa"));
    EXPECT_FALSE(answerOf("bbb"));
}

TEST_F(ClaudeFrontTerminalTest, OneOfSeveralClientsInFrontIsEnough) {
    platform.multiplexer.showing[10] = {70, 71, terminal};
    platform.hosts.frontmost = {terminal};
    ask("aaa");
    platform.advance(0);
    EXPECT_EQ(answerOf("aaa"), "pass");
}

TEST_F(ClaudeFrontTerminalTest, ThePaneThatTheSessionNamesIsAskedFor) {
    putSession("s1", 10, R"(,"tmux":"main:@0.%3")");
    ask("aaa");
    EXPECT_THAT(looks(), ElementsAre(FakeMultiplexer::Call{10, "%3"}));
}

TEST_F(ClaudeFrontTerminalTest, OutsideOfAMultiplexerNothingIsStarted) {
    platform.multiplexer.showing.clear();
    ask("aaa");
    EXPECT_THAT(pendingIds(), ElementsAre("aaa")) << "at once";
    EXPECT_THAT(looks(), IsEmpty());
}

TEST_F(ClaudeFrontTerminalTest, AWindowOfItsOwnDecidesThoughTheTerminalWasOpenedFromWithinAMultiplexer) {
    platform.hosts.apps[10] = window;
    platform.hosts.frontmost = {terminal};
    ask("aaa");
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
    EXPECT_THAT(looks(), IsEmpty());
    platform.hosts.frontmost = {10};
    ask("bbb");
    EXPECT_EQ(answerOf("bbb"), "pass");
}

TEST_F(ClaudeFrontTerminalTest, AMultiplexerThatHangsHoldsARequestOnlyForItsLimit) {
    platform.multiplexer.answerTime = 1000;
    platform.hosts.frontmost = {terminal};
    ask("aaa");
    platform.advance(TerminalMultiplexer::findLimit - 0.01);
    EXPECT_THAT(pendingIds(), IsEmpty());
    platform.advance(0.01);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa"));
    platform.advance(20 - TerminalMultiplexer::findLimit);
    EXPECT_THAT(pendingIds(), IsEmpty()) << "its time ran on meanwhile";
}

TEST_F(ClaudeFrontTerminalTest, ARequestThatIsHeldBackKeepsItsPlace) {
    putSession("s2", 11);
    platform.multiplexer.answerTime = 0.2;
    ask("aaa");
    platform.advance(0.1);
    ask("bbb", "s2");
    EXPECT_THAT(pendingIds(), IsEmpty()) << "none drops in front of another that shows already";
    platform.advance(0.1);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa", "bbb"));
}

TEST_F(ClaudeFrontTerminalTest, TheLaterAnswerOfTwoHoldsTheOtherUp) {
    putSession("s2", 11);
    platform.multiplexer.showing[11] = {};
    platform.multiplexer.answerTime = 0.2;
    ask("aaa");
    platform.multiplexer.answerTime = 0.1;
    ask("bbb", "s2");
    platform.advance(0.1);
    EXPECT_THAT(pendingIds(), IsEmpty());
    platform.advance(0.1);
    EXPECT_THAT(pendingIds(), ElementsAre("aaa", "bbb"));
}

TEST_F(ClaudeFrontTerminalTest, WhatIsInFrontHoldsNothingUp) {
    putSession("s2", 11);
    platform.multiplexer.answerTime = 0.2;
    platform.hosts.frontmost = {terminal};
    ask("aaa");
    ask("bbb", "s2");
    platform.advance(0.2);
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_THAT(pendingIds(), ElementsAre("bbb"));
}

TEST_F(ClaudeFrontTerminalTest, AHeldRequestThatIsOverIsNotShownLater) {
    platform.multiplexer.answerTime = 0.2;
    ask("aaa");
    platform.advance(0.1);
    putIntoSpool("tmp.111111.json", R"({"session_id":"s1","hook_event_name":"UserPromptSubmit"})");
    monitor.refresh();
    ask("bbb");
    platform.advance(0.3);
    EXPECT_THAT(pendingIds(), ElementsAre("bbb"));
}

TEST_F(ClaudeFrontTerminalTest, TheTimeMayEndWhileTheMultiplexerIsAsked) {
    platform.multiplexer.answerTime = 0.2;
    platform.disk.clock = now() - 19.9;
    ask("aaa");
    platform.advance(0.1);
    EXPECT_THAT(pendingIds(), IsEmpty());
    platform.advance(1);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_FALSE(answerOf("aaa"));
}

TEST_F(ClaudeFrontTerminalTest, AnOldRequestAsksNoMultiplexer) {
    platform.disk.clock = now() - 21;
    ask("aaa");
    EXPECT_THAT(looks(), IsEmpty());
}

TEST_F(ClaudeFrontTerminalTest, ARequestThatNobodyHasSeenCannotBeAnswered) {
    ask("aaa");
    EXPECT_EQ(monitor.answer("aaa", ClaudeDecision::allow), AnswerOutcome::tooLate);
    EXPECT_EQ(answerOf("aaa"), "pass");
    platform.advance(1);
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(ClaudeFrontTerminalTest, StopDropsWhatIsHeldBack) {
    platform.hosts.frontmost = {terminal};
    ask("aaa");
    monitor.stop();
    EXPECT_EQ(platform.time.pending(), 0u);
    platform.advance(1);
    EXPECT_FALSE(answerOf("aaa"));
    monitor.refresh();
    EXPECT_THAT(pendingIds(), IsEmpty());
}

class CodexFrontTerminalTest : public HookedMonitorTest<codexAgent> {
  protected:
    CodexFrontTerminalTest()
        : HookedMonitorTest("/home/me/.local/share/Veslora/codex-spool",
                            "/home/me/.local/share/Veslora/codex-answers") {
        platform.tasks.running = {{500, "/opt/bin/codex", "app-server", "/"},
                                  {10, "/opt/bin/codex", "", "/p"},
                                  {11, "/opt/bin/codex", "", "/p"}};
        monitor.start();
    }
    /// By the server of all terminals, or else by the session's own process.
    void ask(const std::string& id) {
        putIntoSpool("perm-" + id + ".json", R"({"session_id":"s1","cwd":"/p","tool_name":"Bash",)"
                                             R"("hook_event_name":"PermissionRequest"})");
        monitor.refresh();
    }
};

TEST_F(CodexFrontTerminalTest, TheOtherTerminalOfTheFolderWasInFrontAndTheIslandAsked) {
    platform.hosts.frontmost = {11};
    ask("500-aaa");
    ASSERT_EQ(monitor.summaries().at(0).pid, 10) << "a guess";
    EXPECT_EQ(answerOf("500-aaa"), "pass");
}

TEST_F(CodexFrontTerminalTest, AKnownProcessIsNoGuess) {
    platform.hosts.frontmost = {11};
    ask("10-aaa");
    EXPECT_THAT(pendingIds(), ElementsAre("10-aaa"));
}

TEST_F(CodexFrontTerminalTest, EachPaneOfTheFolderIsAskedFor) {
    platform.multiplexer.showing = {{10, {}}, {11, {terminal}}};
    platform.hosts.frontmost = {terminal};
    ask("500-aaa");
    EXPECT_THAT(platform.multiplexer.looks, UnorderedElementsAre(FakeMultiplexer::Call{10, std::nullopt},
                                                                 FakeMultiplexer::Call{11, std::nullopt}));
    platform.advance(0);
    EXPECT_EQ(answerOf("500-aaa"), "pass");
    EXPECT_TRUE(waits());
}

TEST_F(CodexFrontTerminalTest, WhereNoneOfThemIsInFrontTheIslandAsks) {
    platform.multiplexer.showing = {{10, {terminal}}, {11, {}}};
    ask("500-aaa");
    EXPECT_THAT(pendingIds(), IsEmpty());
    platform.advance(0);
    EXPECT_THAT(pendingIds(), ElementsAre("500-aaa"));
}

TEST_F(CodexFrontTerminalTest, ASessionThatMovedOnMeanwhileLetsItsScriptGo) {
    platform.multiplexer.showing = {{10, {}}, {11, {}}};
    platform.multiplexer.answerTime = 0.2;
    ask("500-aaa");
    putIntoSpool("ev-500-bbb.json", R"({"session_id":"s1","cwd":"/p","hook_event_name":"Interrupt"})");
    monitor.refresh();
    EXPECT_EQ(answerOf("500-aaa"), "pass");
    platform.advance(1);
    EXPECT_THAT(pendingIds(), IsEmpty());
}

} // namespace
} // namespace veslora
