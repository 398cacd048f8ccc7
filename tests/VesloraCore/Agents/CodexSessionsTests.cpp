// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/CodexSessions.h"
#include "tests/VesloraCore/TestData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Event = CodexHookEvent;
using Client = CodexSessions::Client;
using Status = ClaudeSessionStatus;

constexpr Timestamp t0 = 1'800'000'000;

class CodexSessionsTest : public testing::Test {
  protected:
    void apply(const Event::Kind& kind, Timestamp time, const std::string& id = "s",
               std::optional<std::int32_t> pid = std::nullopt, const std::string& cwd = "/home/me/proj") {
        sessions.apply({id, time, pid, cwd, kind});
    }
    [[nodiscard]] ClaudeSessionSummary summary(Timestamp now, const std::string& id = "s") const {
        for (const auto& found : sessions.summaries(now)) {
            if (found.id == id) {
                return found;
            }
        }
        ADD_FAILURE() << "no session " << id;
        return {};
    }
    [[nodiscard]] Status status(Timestamp now, const std::string& id = "s") const {
        return summary(now, id).status;
    }
    [[nodiscard]] std::vector<std::string> ids(Timestamp now) const {
        std::vector<std::string> found;
        for (const auto& each : sessions.summaries(now)) {
            found.push_back(each.id);
        }
        return found;
    }

    CodexSessions sessions;
};

} // namespace

TEST_F(CodexSessionsTest, WithoutEventsThereIsNothing) {
    EXPECT_THAT(sessions.summaries(t0), IsEmpty());
    EXPECT_TRUE(sessions.isEmpty());
}

TEST_F(CodexSessionsTest, AStartAloneMakesAnIdleSession) {
    apply(Event::Start{}, t0, "s", 123);
    const auto found = summary(t0);
    EXPECT_EQ(found,
              (ClaudeSessionSummary{"s", "proj", 123, ClaudeStatus::Idle{}, std::nullopt, AgentKind::codex}));
    EXPECT_FALSE(sessions.isEmpty());
}

TEST_F(CodexSessionsTest, WithoutAFolderTheIdentifierNamesIt) {
    apply(Event::Start{}, t0, "s-1", std::nullopt, "");
    EXPECT_EQ(summary(t0, "s-1").name, "s-1");
    EXPECT_EQ(summary(t0, "s-1").pid, 0);
    apply(Event::Ignored{}, t0, "s-1", 5, "/a/b/");
    EXPECT_EQ(summary(t0, "s-1").name, "b");
    apply(Event::Ignored{}, t0, "s-1", std::nullopt, "");
    EXPECT_EQ(summary(t0, "s-1").name, "b") << "what is known stays";
    EXPECT_EQ(summary(t0, "s-1").pid, 5);
}

TEST_F(CodexSessionsTest, APromptBeginsATurn) {
    apply(Event::Stop{}, t0);
    sessions.needsApproval("s", "Wants to use Bash", t0);
    apply(Event::ToolStart{"old"}, t0);
    apply(Event::Prompt{}, t0 + 1);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::Working{t0 + 1}));
    EXPECT_EQ(summary(t0 + 1).activity, std::nullopt);
}

TEST_F(CodexSessionsTest, AToolWithoutAPromptBeginsOneToo) {
    apply(Event::ToolStart{"Bash: ls"}, t0 + 3);
    apply(Event::ToolStart{"Bash: pwd"}, t0 + 4);
    EXPECT_EQ(status(t0 + 4), Status(ClaudeStatus::Working{t0 + 3}));
    EXPECT_EQ(summary(t0 + 4).activity, "Bash: pwd");
}

TEST_F(CodexSessionsTest, AToolsEndKeepsItsLine) {
    apply(Event::ToolStart{"Bash: ls"}, t0);
    sessions.needsApproval("s", "m", t0);
    apply(Event::ToolDone{}, t0 + 1);
    EXPECT_EQ(summary(t0 + 1).activity, "Bash: ls");
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::Working{t0}));
}

TEST_F(CodexSessionsTest, AFinishShowsForFiveSeconds) {
    apply(Event::Prompt{}, t0);
    apply(Event::ToolStart{"Bash: ls"}, t0);
    apply(Event::Stop{}, t0 + 10);
    EXPECT_EQ(status(t0 + 14.9), Status(ClaudeStatus::Finished{t0 + 10}));
    EXPECT_EQ(summary(t0 + 10).activity, std::nullopt);
    EXPECT_EQ(status(t0 + 15), Status(ClaudeStatus::Idle{}));
}

TEST_F(CodexSessionsTest, ASeenFinishIsOverAtOnceAndTheNextShowsAgain) {
    apply(Event::Stop{}, t0);
    sessions.markSeen("s");
    EXPECT_EQ(status(t0), Status(ClaudeStatus::Idle{}));
    apply(Event::Stop{}, t0 + 1);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::Finished{t0 + 1}));
}

TEST_F(CodexSessionsTest, AnInterruptIsNoFinish) {
    apply(Event::Prompt{}, t0);
    apply(Event::ToolStart{"Bash: ls"}, t0);
    sessions.needsApproval("s", "m", t0);
    apply(Event::Interrupt{}, t0 + 1);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::Idle{}));
    EXPECT_EQ(summary(t0 + 1).activity, std::nullopt);
}

TEST_F(CodexSessionsTest, AnEndRemovesTheSession) {
    apply(Event::Prompt{}, t0);
    apply(Event::End{}, t0 + 1);
    EXPECT_THAT(sessions.summaries(t0 + 1), IsEmpty());
    apply(Event::End{}, t0 + 2, "unknown");
    EXPECT_THAT(sessions.summaries(t0 + 2), IsEmpty());
}

TEST_F(CodexSessionsTest, ARequestIsSeenFirstUntilItIsDealtWith) {
    sessions.needsApproval("s", "Wants to use Bash", t0);
    EXPECT_EQ(status(t0), Status(ClaudeStatus::NeedsApproval{"Wants to use Bash", t0}));
    apply(Event::Stop{}, t0 - 1, "other");
    sessions.approvalAnswered("s");
    EXPECT_EQ(status(t0), Status(ClaudeStatus::Idle{}));
    sessions.approvalAnswered("unknown");
    EXPECT_THAT(ids(t0), ElementsAre("other", "s"));
}

TEST_F(CodexSessionsTest, AStopAndASignOfLifeTreatARequestDifferently) {
    sessions.needsApproval("s", "m", t0);
    apply(Event::Ignored{}, t0 + 1);
    apply(Event::Start{}, t0 + 1);
    apply(Event::ToolStart{"x"}, t0 + 1);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::NeedsApproval{"m", t0}));
    apply(Event::Stop{}, t0 + 2);
    EXPECT_EQ(status(t0 + 2), Status(ClaudeStatus::Finished{t0 + 2}));
}

TEST_F(CodexSessionsTest, ADismissedRequestIsHiddenUntilTheNext) {
    sessions.needsApproval("s", "m", t0);
    sessions.dismissApproval("s");
    EXPECT_EQ(status(t0), Status(ClaudeStatus::Idle{}));
    sessions.needsApproval("s", "again", t0 + 1);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::NeedsApproval{"again", t0 + 1}));
}

TEST_F(CodexSessionsTest, AnAnswerThatNeverArrivedLeavesTheWait) {
    sessions.needsApproval("s", "m", t0);
    const auto since = sessions.approvalAnswered("s");
    EXPECT_EQ(since, t0);
    ASSERT_EQ(status(t0), Status(ClaudeStatus::Idle{}));
    apply(Event::Ignored{}, t0 + 1);
    sessions.raiseApproval("s", t0);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::NeedsApproval{"m", t0}));
}

TEST_F(CodexSessionsTest, ASessionThatHasGoneOnWaitsForNothing) {
    for (const Event::Kind& kind : {Event::Kind(Event::ToolDone{}), Event::Kind(Event::Prompt{}),
                                    Event::Kind(Event::Interrupt{}), Event::Kind(Event::Stop{})}) {
        sessions.needsApproval("s", "m", t0);
        sessions.approvalAnswered("s");
        apply(kind, t0 + 0.5);
        sessions.raiseApproval("s", t0);
        EXPECT_FALSE(std::holds_alternative<ClaudeStatus::NeedsApproval>(status(t0 + 1)));
    }
}

TEST_F(CodexSessionsTest, AnOldAnswerSaysNothingOfTheNextRequest) {
    sessions.needsApproval("s", "first", t0);
    sessions.approvalAnswered("s");
    sessions.needsApproval("s", "second", t0 + 1);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::NeedsApproval{"second", t0 + 1}));
    sessions.approvalAnswered("s");
    sessions.raiseApproval("s", t0);
    EXPECT_EQ(status(t0 + 1), Status(ClaudeStatus::Idle{}));
}

TEST_F(CodexSessionsTest, AWaitThatTheUserDismissedIsNotRaisedAgain) {
    sessions.needsApproval("s", "m", t0);
    sessions.approvalAnswered("s");
    sessions.dismissApproval("s");
    sessions.raiseApproval("s", t0);
    EXPECT_EQ(status(t0), Status(ClaudeStatus::Idle{}));
}

TEST_F(CodexSessionsTest, AGuessedProcessMayBeAnyOfItsFolder) {
    apply(Event::Start{}, t0, "guessed");
    apply(Event::Start{}, t0, "known", 9);
    EXPECT_THAT(sessions.processesOf("guessed"), IsEmpty());
    sessions.reconcile({{7, "/home/me/proj"}, {8, "/elsewhere"}, {9, "/home/me/proj"}}, t0);
    EXPECT_THAT(sessions.processesOf("guessed"), ElementsAre(7, 9));
    EXPECT_THAT(sessions.processesOf("known"), ElementsAre(9));
    sessions.reconcile({{6, "/home/me/proj"}, {7, "/home/me/proj"}, {9, "/home/me/proj"}}, t0);
    EXPECT_EQ(summary(t0, "guessed").pid, 7);
    EXPECT_THAT(sessions.processesOf("guessed"), ElementsAre(6, 7, 9)) << "one that was opened since";
    apply(Event::Ignored{}, t0, "guessed", 7);
    EXPECT_THAT(sessions.processesOf("guessed"), ElementsAre(7)) << "known by now";
    EXPECT_THAT(sessions.processesOf("unknown"), IsEmpty());
}

TEST_F(CodexSessionsTest, UnknownIdentifiersMakeNothing) {
    sessions.markSeen("x");
    sessions.dismissApproval("x");
    EXPECT_FALSE(sessions.approvalAnswered("x"));
    sessions.raiseApproval("x", t0);
    EXPECT_TRUE(sessions.isEmpty());
}

TEST_F(CodexSessionsTest, ALongSilentTurnCountsAsIdle) {
    apply(Event::Prompt{}, t0);
    apply(Event::Ignored{}, t0 - 50);
    EXPECT_EQ(status(t0 + 600), Status(ClaudeStatus::Working{t0})) << "an older event takes nothing back";
    EXPECT_EQ(status(t0 + 600.5), Status(ClaudeStatus::Idle{}));
    sessions.reconcile({}, t0 + 600);
    EXPECT_FALSE(sessions.isEmpty()) << "something is going on";
    sessions.reconcile({}, t0 + 600.5);
    EXPECT_TRUE(sessions.isEmpty());
}

TEST_F(CodexSessionsTest, ARestingSessionWithoutAProcessIsKeptForAMinute) {
    apply(Event::Start{}, t0);
    sessions.reconcile({}, t0 + 60);
    EXPECT_FALSE(sessions.isEmpty());
    sessions.reconcile({{9, "/elsewhere"}}, t0 + 60.5);
    EXPECT_TRUE(sessions.isEmpty());
}

TEST_F(CodexSessionsTest, AWaitingSessionStaysWithoutAProcess) {
    sessions.needsApproval("s", "m", t0);
    sessions.reconcile({}, t0 + 5000);
    EXPECT_FALSE(sessions.isEmpty());
    sessions.dismissApproval("s");
    sessions.reconcile({}, t0 + 5000);
    EXPECT_TRUE(sessions.isEmpty());
}

TEST_F(CodexSessionsTest, AKnownProcessThatRunsIsKept) {
    apply(Event::Start{}, t0, "s", 5);
    sessions.reconcile({{4, "/home/me/proj"}, {5, "/somewhere/else"}}, t0 + 9000);
    EXPECT_EQ(summary(t0).pid, 5);
}

TEST_F(CodexSessionsTest, ADeadProcessIsReplacedByTheClientInItsFolder) {
    apply(Event::Start{}, t0, "s", 5);
    sessions.reconcile({{6, "/other"}, {7, "/home/me/proj"}, {8, "/home/me/proj"}}, t0 + 9000);
    EXPECT_EQ(summary(t0).pid, 7);
}

TEST_F(CodexSessionsTest, TwoSessionsOfOneFolderGetAClientEach) {
    apply(Event::Start{}, t0, "a");
    apply(Event::Start{}, t0, "b");
    sessions.reconcile({{7, "/home/me/proj"}, {8, "/home/me/proj"}}, t0);
    EXPECT_EQ(summary(t0, "a").pid, 7);
    EXPECT_EQ(summary(t0, "b").pid, 8);
    sessions.reconcile({{7, "/home/me/proj"}, {8, "/home/me/proj"}}, t0 + 1);
    EXPECT_EQ(summary(t0, "a").pid, 7);
    EXPECT_EQ(summary(t0, "b").pid, 8);
}

TEST_F(CodexSessionsTest, AClientThatASessionHasIsNotGivenAwayWhileThereIsAnother) {
    apply(Event::Start{}, t0, "z", 7);
    apply(Event::Start{}, t0 + 1, "a");
    sessions.reconcile({{7, "/home/me/proj"}, {8, "/home/me/proj"}}, t0 + 1);
    EXPECT_EQ(summary(t0, "z").pid, 7);
    EXPECT_EQ(summary(t0, "a").pid, 8);
}

TEST_F(CodexSessionsTest, WithTooFewClientsTheyAreShared) {
    apply(Event::Start{}, t0, "a");
    apply(Event::Start{}, t0 + 1, "b");
    apply(Event::Start{}, t0 + 2, "c");
    sessions.reconcile({{7, "/home/me/proj"}, {8, "/home/me/proj"}}, t0 + 2);
    EXPECT_EQ(summary(t0, "c").pid, 7) << "the one heard of last chooses first";
    EXPECT_EQ(summary(t0, "b").pid, 8);
    EXPECT_EQ(summary(t0, "a").pid, 7);
}

TEST_F(CodexSessionsTest, RemovesTheDeadButNotTheUnknown) {
    apply(Event::Start{}, t0, "dead", 5);
    apply(Event::Start{}, t0, "alive", 6);
    apply(Event::Start{}, t0, "unknown");
    sessions.removeDead([](std::int32_t pid) { return pid == 6; });
    EXPECT_THAT(ids(t0), ElementsAre("alive", "unknown"));
    EXPECT_EQ(summary(t0, "unknown").pid, 0);
}

TEST_F(CodexSessionsTest, FollowsACapturedTurn) {
    const auto feed = [this](const std::string& name, Timestamp time) {
        const auto event =
            Event::parse(test::dataFile("agents/codex/hooks/" + name + ".json"), time, std::nullopt);
        ASSERT_TRUE(event) << name;
        sessions.apply(*event);
    };
    feed("SessionStart", t0);
    feed("UserPromptSubmit", t0 + 1);
    feed("PreToolUse.Bash", t0 + 2);
    const auto working = sessions.summaries(t0 + 2);
    ASSERT_EQ(working.size(), 1u);
    EXPECT_EQ(working.front().name, "kw-sol");
    EXPECT_EQ(working.front().activity, "Bash: touch a.txt");
    EXPECT_EQ(working.front().status, Status(ClaudeStatus::Working{t0 + 1}));
    feed("PermissionRequest.Bash", t0 + 3);
    feed("PostToolUse.Bash", t0 + 4);
    feed("Stop", t0 + 5);
    EXPECT_EQ(sessions.summaries(t0 + 6).front().status, Status(ClaudeStatus::Finished{t0 + 5}));
    feed("SessionEnd", t0 + 7);
    EXPECT_TRUE(sessions.isEmpty());
}
