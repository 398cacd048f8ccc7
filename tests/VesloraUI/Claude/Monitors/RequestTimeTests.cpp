// SPDX-License-Identifier: MIT
// The end of a request's time, whatever the clocks do, and what becomes of an answer: given, too late, not
// written, not taken. For both agents.
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/FixedCalendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct ClaudeWays {
    static constexpr auto makeAgent = claudeAgent;
    static constexpr auto spool = "/claude-spool";
    static constexpr auto answers = "/answers";
    static constexpr auto first = "aaaaaa";
    static constexpr auto second = "bbbbbb";
};

struct CodexWays {
    static constexpr auto makeAgent = codexAgent;
    static constexpr auto spool = "/codex-spool";
    static constexpr auto answers = "/codex-answers";
    static constexpr auto first = "10-aaaaaa";
    static constexpr auto second = "11-bbbbbb";
};

template <class Ways>
class RequestTimeTest : public testing::Test {
  protected:
    RequestTimeTest() { platform.tasks.alive = {10, 11}; }

    /// A session that waits for the user, and the request that it waits with.
    void ask(const std::string& id, const std::string& session = "s1", int pid = 10) {
        platform.disk.put(platform.paths.claude + "/sessions/" + std::to_string(pid) + ".json",
                          R"({"sessionId":")" + session + R"(","pid":)" + std::to_string(pid) +
                              R"(,"cwd":"/p","status":"waiting","waitingFor":"permission prompt",)" +
                              R"("statusUpdatedAt":)" +
                              std::to_string(static_cast<std::int64_t>(platform.time.now() * 1000)) + "}");
        fileRequest(id, session);
    }
    void fileRequest(const std::string& id, const std::string& session = "s1") {
        platform.disk.put(platform.paths.support + Ways::spool + "/perm-" + id + ".json",
                          R"({"session_id":")" + session +
                              R"(","cwd":"/p","hook_event_name":"PermissionRequest","tool_name":"Bash",)" +
                              R"("tool_input":{"command":"ls"}})");
    }
    void setClock(double time) {
        platform.time.setClock(time);
        platform.disk.clock = time;
    }
    [[nodiscard]] double now() const { return platform.time.now(); }
    [[nodiscard]] std::optional<std::string> answerOf(const std::string& id) const {
        return platform.disk.text(platform.paths.support + Ways::answers + "/" + id);
    }
    /// As the script does.
    void takeAnswer(const std::string& id) {
        ASSERT_FALSE(platform.disk.remove(platform.paths.support + Ways::answers + "/" + id));
    }
    [[nodiscard]] std::vector<std::string> pendingIds() const {
        std::vector<std::string> ids;
        for (const auto& request : monitor.pendingRequests()) {
            ids.push_back(request.id);
        }
        return ids;
    }
    [[nodiscard]] bool waits(const std::string& session = "s1") const {
        return std::ranges::any_of(monitor.summaries(), [&](const auto& summary) {
            return summary.id == session &&
                   std::holds_alternative<ClaudeStatus::NeedsApproval>(summary.status);
        });
    }

    FakePlatform platform;
    FaultInjectingFiles files{platform.disk};
    FakeDefaults settings{platform};
    SupportDirectory support{files, platform.paths.support, platform.paths.runtime};
    AgentMonitorSeams seams{platform.paths,       platform.time,     files,
                            platform.watches,     platform.tasks,    platform.hosts,
                            platform.multiplexer, platform.programs, test::fixedCalendar()};
    HookedAgentMonitor monitor{Ways::makeAgent(seams, support), seams, support, settings};
    const std::string first = Ways::first;
    const std::string second = Ways::second;
};

using BothAgents = testing::Types<ClaudeWays, CodexWays>;
TYPED_TEST_SUITE(RequestTimeTest, BothAgents, );

TYPED_TEST(RequestTimeTest, ARequestStoodUpToTwoSecondsBeyondItsTime) {
    this->monitor.start();
    this->platform.advance(0.7);
    this->ask(this->first);
    this->monitor.refresh();
    this->platform.advance(19.999);
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
    this->platform.advance(0.001);
    EXPECT_THAT(this->pendingIds(), IsEmpty());
    EXPECT_TRUE(this->waits());
    EXPECT_FALSE(this->answerOf(this->first));
}

TYPED_TEST(RequestTimeTest, APressAfterTheTimeDidNothingAndHidTheWait) {
    this->ask(this->first);
    this->monitor.start();
    // The machine sleeps, so that nothing has been published when the press comes.
    this->platform.time.suspend(20);
    ASSERT_THAT(this->pendingIds(), ElementsAre(this->first));
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::allow), AnswerOutcome::tooLate)
        << "at just the deadline";
    EXPECT_EQ(this->answerOf(this->first), "pass");
    EXPECT_THAT(this->pendingIds(), IsEmpty());
    EXPECT_TRUE(this->waits());
    this->platform.advance(1.5);
    EXPECT_TRUE(this->waits());
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::deny), AnswerOutcome::tooLate);
    EXPECT_EQ(this->answerOf(this->first), "pass");
}

TYPED_TEST(RequestTimeTest, APressShortlyBeforeTheEndIsGiven) {
    this->ask(this->first);
    this->monitor.start();
    this->platform.advance(19.99);
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::allow), AnswerOutcome::given);
    EXPECT_EQ(this->answerOf(this->first), "allow");
}

TYPED_TEST(RequestTimeTest, OfTwoOnlyTheOneThatIsOverLeaves) {
    this->ask(this->first);
    this->monitor.start();
    this->platform.advance(5);
    this->ask(this->second, "s2", 11);
    this->monitor.refresh();
    this->platform.advance(15);
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->second));
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::allow), AnswerOutcome::tooLate);
    EXPECT_EQ(this->monitor.answer(this->second, ClaudeDecision::allow), AnswerOutcome::given);
}

TYPED_TEST(RequestTimeTest, ASleepPastTheDeadlineEndsTheRequest) {
    this->ask(this->first);
    this->monitor.start();
    this->platform.time.suspend(3600);
    this->platform.advance(0);
    EXPECT_THAT(this->pendingIds(), IsEmpty());
    EXPECT_TRUE(this->waits());
}

TYPED_TEST(RequestTimeTest, AClockSetBackLeftAGhostWhichHidTheNextRequest) {
    this->ask(this->first);
    this->monitor.start();
    this->setClock(this->now() - 3600);
    this->platform.advance(10);
    this->ask(this->second, "s2", 11);
    this->monitor.refresh();
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->first, this->second)) << "in order of arrival";
    this->platform.advance(10);
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->second));
    this->platform.advance(10);
    EXPECT_THAT(this->pendingIds(), IsEmpty());
}

TYPED_TEST(RequestTimeTest, AFileFromTheFutureLeftAGhost) {
    this->platform.disk.clock = this->now() + 3600;
    this->fileRequest(this->first);
    this->platform.disk.clock = this->now();
    this->monitor.start();
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
    this->platform.advance(20);
    EXPECT_THAT(this->pendingIds(), IsEmpty());
}

TYPED_TEST(RequestTimeTest, AClockSetForwardTookTheTimeAway) {
    this->ask(this->first);
    this->monitor.start();
    this->platform.advance(1);
    this->setClock(this->now() + 3600);
    this->platform.advance(0);
    this->monitor.refresh();
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::allow), AnswerOutcome::given);
}

TYPED_TEST(RequestTimeTest, AClockSetForwardMovesNoDeadline) {
    this->ask(this->first);
    this->monitor.start();
    this->setClock(this->now() + 15);
    this->platform.advance(19.9);
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
    this->platform.advance(0.1);
    EXPECT_THAT(this->pendingIds(), IsEmpty());
}

TYPED_TEST(RequestTimeTest, AnOldFileHasOnlyTheRestOfItsTime) {
    this->ask(this->first);
    this->platform.advance(15);
    this->monitor.start();
    EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
    this->platform.advance(5);
    EXPECT_THAT(this->pendingIds(), IsEmpty());
    this->ask(this->second);
    this->platform.advance(20);
    this->monitor.refresh();
    EXPECT_THAT(this->pendingIds(), IsEmpty());
}

TYPED_TEST(RequestTimeTest, ADeadlineIsWaitedForOnceAndOnlyWithARequest) {
    this->monitor.start();
    const std::size_t resting = this->platform.time.pending();
    this->ask(this->first);
    this->ask(this->second, "s2", 11);
    this->monitor.refresh();
    EXPECT_EQ(this->platform.time.pending(), resting + 1);
    this->monitor.refresh();
    EXPECT_EQ(this->platform.time.pending(), resting + 1);
    this->monitor.answer(this->first, ClaudeDecision::pass);
    EXPECT_EQ(this->platform.time.pending(), resting + 1);
    this->monitor.answer(this->second, ClaudeDecision::pass);
    EXPECT_EQ(this->platform.time.pending(), resting);
}

TYPED_TEST(RequestTimeTest, StopEndsEveryWait) {
    this->ask(this->first);
    this->ask(this->second, "s2", 11);
    this->monitor.start();
    this->monitor.answer(this->first, ClaudeDecision::allow);
    this->monitor.stop();
    EXPECT_EQ(this->platform.time.pending(), 0u);
    this->monitor.answer(this->second, ClaudeDecision::pass);
    this->monitor.dismissApproval("s1");
    EXPECT_EQ(this->platform.time.pending(), 0u) << "what is published afterwards waits for nothing";
}

TYPED_TEST(RequestTimeTest, OnAFullDiskTheAlertVanishedAndNothingWasAnswered) {
    this->ask(this->first);
    this->monitor.start();
    for (const ClaudeDecision decision :
         {ClaudeDecision::allow, ClaudeDecision::deny, ClaudeDecision::pass}) {
        this->files.writeError = std::errc::no_space_on_device;
        EXPECT_EQ(this->monitor.answer(this->first, decision), AnswerOutcome::failed);
        EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
        EXPECT_TRUE(this->waits());
        this->platform.advance(1.5);
        EXPECT_THAT(this->pendingIds(), ElementsAre(this->first));
    }
    this->files.writeError.reset();
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::allow), AnswerOutcome::given);
    EXPECT_EQ(this->answerOf(this->first), "allow");
    EXPECT_THAT(this->pendingIds(), IsEmpty());
}

TYPED_TEST(RequestTimeTest, APressTooLateOnAFullDiskIsTooLate) {
    this->ask(this->first);
    this->monitor.start();
    this->platform.time.suspend(21);
    this->files.writeError = std::errc::no_space_on_device;
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::allow), AnswerOutcome::tooLate);
    EXPECT_TRUE(this->waits());
    EXPECT_THAT(this->pendingIds(), IsEmpty());
}

TYPED_TEST(RequestTimeTest, NoDecisionIsWrittenForAnIdThatNobodyAsksUnder) {
    this->monitor.start();
    EXPECT_EQ(this->monitor.answer("zzz", ClaudeDecision::allow), AnswerOutcome::tooLate);
    EXPECT_EQ(this->answerOf("zzz"), "pass");
}

TYPED_TEST(RequestTimeTest, AnAnswerThatNoScriptTookLeftTheSessionWaitingUnseen) {
    for (const ClaudeDecision decision : {ClaudeDecision::allow, ClaudeDecision::deny}) {
        this->ask(this->first);
        this->monitor.refresh();
        ASSERT_EQ(this->monitor.answer(this->first, decision), AnswerOutcome::given);
        EXPECT_FALSE(this->waits());
        this->platform.advance(0.99);
        EXPECT_FALSE(this->waits());
        this->platform.advance(0.01);
        EXPECT_TRUE(this->waits());
        EXPECT_THAT(this->pendingIds(), IsEmpty());
        EXPECT_TRUE(this->answerOf(this->first)) << "a script that comes late still finds it";
        this->platform.advance(1);
    }
}

TYPED_TEST(RequestTimeTest, AnAnswerThatWasTakenRaisesNothing) {
    this->ask(this->first);
    this->monitor.start();
    this->monitor.answer(this->first, ClaudeDecision::allow);
    this->platform.advance(0.3);
    this->takeAnswer(this->first);
    this->platform.advance(5);
    EXPECT_FALSE(this->waits());
}

TYPED_TEST(RequestTimeTest, APassIsNotLookedAfter) {
    this->ask(this->first);
    this->monitor.start();
    const std::size_t before = this->platform.time.pending();
    EXPECT_EQ(this->monitor.answer(this->first, ClaudeDecision::pass), AnswerOutcome::given);
    EXPECT_EQ(this->platform.time.pending(), before - 1) << "only the deadline is gone";
    EXPECT_TRUE(this->waits());
}

TYPED_TEST(RequestTimeTest, AWaitThatTheUserDealtWithIsNotRaisedAgain) {
    for (const bool isJump : {false, true}) {
        this->platform.advance(1);
        this->ask(this->first);
        this->monitor.refresh();
        this->monitor.answer(this->first, ClaudeDecision::allow);
        if (isJump) {
            this->monitor.jump("s1");
        } else {
            this->monitor.dismissApproval("s1");
        }
        this->platform.advance(5);
        EXPECT_FALSE(this->waits());
    }
}

TYPED_TEST(RequestTimeTest, OfTwoSessionsOnlyTheOneWhoseAnswerWasNotTakenWaits) {
    this->ask(this->first);
    this->ask(this->second, "s2", 11);
    this->monitor.start();
    this->monitor.answer(this->first, ClaudeDecision::allow);
    this->monitor.answer(this->second, ClaudeDecision::allow);
    this->takeAnswer(this->second);
    this->platform.advance(1);
    EXPECT_TRUE(this->waits("s1"));
    EXPECT_FALSE(this->waits("s2"));
}

TYPED_TEST(RequestTimeTest, AClockSetForwardDoesNotHurryTheScript) {
    this->ask(this->first);
    this->monitor.start();
    this->monitor.answer(this->first, ClaudeDecision::allow);
    this->setClock(this->now() + 30);
    this->platform.advance(0.5);
    EXPECT_FALSE(this->waits());
    this->platform.advance(0.5);
    EXPECT_TRUE(this->waits());
}

using ClaudeRequestTimeTest = RequestTimeTest<ClaudeWays>;
using CodexRequestTimeTest = RequestTimeTest<CodexWays>;

TEST_F(ClaudeRequestTimeTest, ASessionThatHasGoneOnIsNotRaised) {
    ask(first);
    monitor.start();
    monitor.answer(first, ClaudeDecision::allow);
    platform.advance(0.5);
    platform.disk.put(platform.paths.claude + "/sessions/10.json",
                      R"({"sessionId":"s1","pid":10,"status":"busy","statusUpdatedAt":)" +
                          std::to_string(static_cast<std::int64_t>(now() * 1000)) + "}");
    platform.advance(5);
    EXPECT_FALSE(waits());
}

TEST_F(ClaudeRequestTimeTest, TwoRequestsOfOneSessionShareItsWait) {
    ask(first);
    fileRequest(second);
    monitor.start();
    monitor.answer(first, ClaudeDecision::allow);
    EXPECT_FALSE(waits());
    EXPECT_THAT(pendingIds(), ElementsAre(second)) << "the other is asked on";
    monitor.answer(second, ClaudeDecision::allow);
    takeAnswer(first);
    platform.advance(1);
    EXPECT_TRUE(waits()) << "one of them never reached its agent";
}

TEST_F(CodexRequestTimeTest, ASessionThatHasGoneOnIsNotRaised) {
    ask(first);
    monitor.start();
    monitor.answer(first, ClaudeDecision::allow);
    platform.advance(0.5);
    platform.disk.put(platform.paths.support + "/codex-spool/ev-10-cccccc.json",
                      R"({"session_id":"s1","cwd":"/p","hook_event_name":"PostToolUse"})");
    platform.advance(5);
    EXPECT_FALSE(waits());
}

} // namespace
} // namespace veslora
