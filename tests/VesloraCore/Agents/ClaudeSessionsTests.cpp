// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudeSessions.h"
#include "VesloraCore/Text/Json.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veslora;

namespace {

using Event = ClaudeHookEvent;
using Status = ClaudeSessionStatus;
using ClaudeStatus::Finished;
using ClaudeStatus::Idle;
using ClaudeStatus::NeedsApproval;
using ClaudeStatus::Working;

ClaudeSessionFile file(const std::string& status, std::optional<Timestamp> since,
                       const std::string& id = "s") {
    ClaudeSessionFile made;
    made.sessionId = id;
    made.pid = 42;
    made.cwd = "/home/me/proj";
    made.isBusy = status == "busy";
    if (status == "waiting") {
        made.waitingFor = "permission prompt";
    }
    made.statusSince = since;
    return made;
}

Event event(Event::Kind kind, Timestamp time, const std::string& id = "s") {
    return {id, time, std::move(kind), std::nullopt};
}

// The status of the one session.
Status status(const ClaudeSessions& sessions, Timestamp now) {
    const auto found = sessions.summaries(now);
    EXPECT_EQ(found.size(), 1u);
    return found.empty() ? Status() : found.front().status;
}

ClaudeSessionSummary summary(const std::string& id, Status status, const std::string& name = "n") {
    return {id, name, 1, std::move(status), std::nullopt, AgentKind::claude};
}

std::string ids(const std::vector<ClaudeSessionSummary>& summaries) {
    std::string made;
    for (const auto& each : summaries) {
        made += each.id + " ";
    }
    return made;
}

} // namespace

TEST(ClaudeSessions, AWaitWithoutAStampBeganWhenItWasFirstSeen) {
    ClaudeSessions sessions;
    const auto since = [&](Timestamp now) {
        sessions.update({file("waiting", std::nullopt)}, now);
        return std::get<NeedsApproval>(status(sessions, now)).since;
    };
    EXPECT_EQ(since(100), 100);
    EXPECT_EQ(since(102), 100);
    sessions.apply(event(Event::NeedsYou{"call"}, 106));
    EXPECT_EQ(since(108), 100) << "the same wait, told a second time";
    sessions.update({file("busy", std::nullopt)}, 110);
    sessions.apply(event(Event::ToolDone{}, 110));
    EXPECT_EQ(since(112), 112) << "another one";
    sessions.update({}, 114);
    EXPECT_EQ(since(116), 116);
    sessions.update({file("waiting", 117)}, 118);
    EXPECT_EQ(since(120), 120);
}

TEST(ClaudeSessions, AnEmptyStateHasNoSummaries) {
    ClaudeSessions sessions;
    EXPECT_TRUE(sessions.summaries(0).empty());
    sessions.markSeen("x");
    sessions.dismissApproval("x");
    EXPECT_EQ(sessions, ClaudeSessions());
}

TEST(ClaudeSessions, AnEventAloneShowsNothingUntilAFileArrives) {
    ClaudeSessions sessions;
    sessions.apply(event(Event::ToolStart{"Bash: ls"}, 10));
    EXPECT_TRUE(sessions.summaries(10).empty());
    sessions.update({file("busy", 9)}, 11);
    EXPECT_EQ(sessions.summaries(11), (std::vector{ClaudeSessionSummary{"s", "proj", 42, Working{9},
                                                                        "Bash: ls", AgentKind::claude}}));
}

TEST(ClaudeSessions, AVanishedFileDropsTheSessionButKeepsItsHistory) {
    ClaudeSessions sessions;
    sessions.apply(event(Event::ToolStart{"Bash: ls"}, 10));
    sessions.update({file("busy", 9)}, 11);
    sessions.update({}, 12);
    EXPECT_TRUE(sessions.summaries(12).empty());
    sessions.update({file("busy", 9)}, 13);
    EXPECT_EQ(sessions.summaries(13).at(0).activity, "Bash: ls");
}

TEST(ClaudeSessions, NamesComeFromTheFileElseFromTheDirectory) {
    ClaudeSessions sessions;
    ClaudeSessionFile one = file("busy", 9);
    one.cwd = "/Users/me/proj/";
    sessions.update({one}, 10);
    EXPECT_EQ(sessions.summaries(10).at(0).name, "proj");
    one.name = "mine";
    sessions.update({one}, 10);
    EXPECT_EQ(sessions.summaries(10).at(0).name, "mine");
}

TEST(ClaudeSessions, AWaitingFileNeedsApproval) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 9)}, 10);
    EXPECT_EQ(status(sessions, 10), Status(NeedsApproval{"permission prompt", 9}));
    ClaudeSessionFile bare = file("waiting", std::nullopt);
    bare.waitingFor = "";
    sessions.update({bare}, 11);
    EXPECT_EQ(status(sessions, 12), Status(NeedsApproval{"Waiting for you", 11}));
}

TEST(ClaudeSessions, ANotificationSaysWhatTheFileWaitsFor) {
    ClaudeSessions sessions;
    sessions.apply(event(Event::NeedsYou{"Claude needs your permission"}, 15));
    sessions.update({file("waiting", 9)}, 16);
    EXPECT_EQ(status(sessions, 16), Status(NeedsApproval{"Claude needs your permission", 9}));
    sessions.update({file("waiting", std::nullopt)}, 16);
    EXPECT_EQ(status(sessions, 17), Status(NeedsApproval{"Claude needs your permission", 15}));
}

TEST(ClaudeSessions, ANotificationAloneNeedsApprovalToo) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 9)}, 10);
    sessions.apply(event(Event::NeedsYou{"m"}, 15));
    EXPECT_EQ(status(sessions, 16), Status(NeedsApproval{"m", 15}));
}

TEST(ClaudeSessions, TheEndOfAToolClosesANotificationAndKeepsTheActivity) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 9)}, 10);
    sessions.apply(event(Event::ToolStart{"a"}, 14));
    sessions.apply(event(Event::NeedsYou{"m"}, 15));
    sessions.apply(event(Event::ToolDone{}, 16));
    EXPECT_EQ(status(sessions, 16), Status(Working{9}));
    EXPECT_EQ(sessions.summaries(16).at(0).activity, "a");
}

TEST(ClaudeSessions, OnlyALaterFileThatDoesNotWaitClosesANotification) {
    ClaudeSessions sessions;
    sessions.apply(event(Event::NeedsYou{"m"}, 15));
    sessions.update({file("busy", 14)}, 20);
    EXPECT_EQ(status(sessions, 20), Status(NeedsApproval{"m", 15}));
    sessions.update({file("busy", 15)}, 20);
    EXPECT_EQ(status(sessions, 20), Status(NeedsApproval{"m", 15}));
    sessions.update({file("busy", std::nullopt)}, 20);
    EXPECT_EQ(status(sessions, 20), Status(NeedsApproval{"m", 15}));
    sessions.update({file("waiting", 18)}, 20);
    EXPECT_EQ(status(sessions, 20), Status(NeedsApproval{"m", 18}));
    sessions.update({file("busy", 19)}, 20);
    EXPECT_EQ(status(sessions, 20), Status(Working{19}));
}

TEST(ClaudeSessions, GoingFromBusyToNotBusyIsAFinishForFiveSeconds) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 9)}, 10);
    sessions.update({file("idle", 20)}, 20.5);
    EXPECT_EQ(status(sessions, 20.5), Status(Finished{20}));
    EXPECT_EQ(status(sessions, 24.999), Status(Finished{20}));
    EXPECT_EQ(status(sessions, 25), Status(Idle{}));
    EXPECT_EQ(sessions.latestFinished(21)->id, "s");
    EXPECT_FALSE(sessions.latestFinished(25));
}

TEST(ClaudeSessions, AFinishWithoutAStampCountsFromNow) {
    ClaudeSessions sessions;
    sessions.update({file("busy", std::nullopt)}, 10);
    sessions.update({file("idle", std::nullopt)}, 20);
    EXPECT_EQ(status(sessions, 21), Status(Finished{20}));
}

TEST(ClaudeSessions, ASessionThatWasNeverBusyDoesNotFinish) {
    ClaudeSessions sessions;
    sessions.update({file("idle", 9)}, 10);
    sessions.update({file("idle", 11)}, 12);
    EXPECT_EQ(status(sessions, 12), Status(Idle{}));
}

TEST(ClaudeSessions, AStopOutlivesAFileThatIsStillBusy) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 9)}, 10);
    sessions.apply(event(Event::Stop{}, 20));
    sessions.update({file("busy", 9)}, 20.5);
    EXPECT_EQ(status(sessions, 21), Status(Finished{20}));
    sessions.update({file("busy", 20.2)}, 21);
    EXPECT_EQ(status(sessions, 21), Status(Working{20.2}));
}

TEST(ClaudeSessions, TheFilesFinishAfterAStopIsNotASecondOne) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 9)}, 10);
    sessions.apply(event(Event::Stop{}, 20));
    sessions.markSeen("s");
    sessions.update({file("idle", 19.9)}, 20.5);
    EXPECT_EQ(status(sessions, 21), Status(Idle{}));
}

TEST(ClaudeSessions, AFinishEndsWhenSeen) {
    ClaudeSessions sessions;
    sessions.update({file("idle", 9)}, 10);
    sessions.apply(event(Event::Stop{}, 20));
    EXPECT_EQ(status(sessions, 20), Status(Finished{20}));
    sessions.markSeen("s");
    EXPECT_EQ(status(sessions, 20), Status(Idle{}));
    sessions.apply(event(Event::Stop{}, 22));
    EXPECT_EQ(status(sessions, 22), Status(Finished{22}));
}

TEST(ClaudeSessions, AStopClearsNotificationAndActivity) {
    ClaudeSessions sessions;
    sessions.update({file("idle", 9)}, 10);
    sessions.apply(event(Event::ToolStart{"a"}, 11));
    sessions.apply(event(Event::NeedsYou{"m"}, 12));
    sessions.apply(event(Event::Stop{}, 13));
    EXPECT_EQ(status(sessions, 20), Status(Idle{}));
    EXPECT_FALSE(sessions.summaries(20).at(0).activity);
}

TEST(ClaudeSessions, APromptClearsWhatWasBeforeIt) {
    ClaudeSessions sessions;
    sessions.update({file("busy", std::nullopt)}, 10);
    sessions.apply(event(Event::ToolStart{"a"}, 11));
    sessions.apply(event(Event::NeedsYou{"m"}, 12));
    sessions.apply(event(Event::Stop{}, 13));
    sessions.apply(event(Event::Prompt{}, 14));
    EXPECT_EQ(status(sessions, 14), Status(Working{14}));
    EXPECT_FALSE(sessions.summaries(14).at(0).activity);
}

TEST(ClaudeSessions, ABusySessionWithoutASignOfLifeIsIdleAfterTenMinutes) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 100)}, 100);
    EXPECT_EQ(status(sessions, 700), Status(Working{100}));
    EXPECT_EQ(status(sessions, 700.5), Status(Idle{}));
    sessions.apply(event(Event::Ignored{}, 650));
    EXPECT_EQ(status(sessions, 1250), Status(Working{100}));
    EXPECT_EQ(status(sessions, 1251), Status(Idle{}));
    sessions.update({file("busy", 1300)}, 1301);
    EXPECT_EQ(status(sessions, 1301), Status(Working{1300}));
}

TEST(ClaudeSessions, WithoutAnyTimeABusySessionWorksSinceNow) {
    ClaudeSessions sessions;
    sessions.update({file("busy", std::nullopt)}, 10);
    EXPECT_EQ(status(sessions, 5000), Status(Working{5000}));
}

TEST(ClaudeSessions, AnOlderEventDoesNotMoveTheLastOneBack) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 100)}, 100);
    sessions.apply(event(Event::Ignored{}, 800));
    sessions.apply(event(Event::Ignored{}, 50));
    EXPECT_EQ(status(sessions, 1400), Status(Working{100}));
}

TEST(ClaudeSessions, ADismissedWaitStaysHiddenUntilItsStampChanges) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 9)}, 10);
    sessions.dismissApproval("s");
    EXPECT_EQ(status(sessions, 10), Status(Idle{}));
    sessions.update({file("waiting", 9)}, 11);
    EXPECT_EQ(status(sessions, 11), Status(Idle{}));
    sessions.update({file("waiting", 12)}, 13);
    EXPECT_EQ(status(sessions, 13), Status(NeedsApproval{"permission prompt", 12}));
}

TEST(ClaudeSessions, ADismissedWaitWithoutAStampStaysHiddenToo) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", std::nullopt)}, 10);
    sessions.dismissApproval("s");
    EXPECT_EQ(status(sessions, 10), Status(Idle{}));
    sessions.update({file("waiting", 3)}, 11);
    EXPECT_EQ(status(sessions, 11), Status(NeedsApproval{"permission prompt", 3}));
}

TEST(ClaudeSessions, ADismissedNotificationReturnsWithTheNext) {
    ClaudeSessions sessions;
    sessions.update({file("idle", 9)}, 10);
    sessions.apply(event(Event::NeedsYou{"m"}, 11));
    sessions.dismissApproval("s");
    EXPECT_EQ(status(sessions, 12), Status(Idle{}));
    sessions.apply(event(Event::NeedsYou{"m"}, 13));
    EXPECT_EQ(status(sessions, 13), Status(NeedsApproval{"m", 13}));
}

TEST(ClaudeSessions, ADismissedWaitHidesTheNotificationBehindItAsWell) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 9)}, 10);
    sessions.dismissApproval("s");
    sessions.apply(event(Event::NeedsYou{"m"}, 11));
    EXPECT_EQ(status(sessions, 12), Status(Idle{}));
}

TEST(ClaudeSessions, RemembersTheLastWaitItSaw) {
    ClaudeSessions sessions;
    EXPECT_FALSE(sessions.lastWaitOf("s"));
    sessions.update({file("busy", 8)}, 8);
    EXPECT_FALSE(sessions.lastWaitOf("s"));
    sessions.update({file("waiting", 9)}, 10);
    sessions.update({file("waiting", std::nullopt)}, 10);
    sessions.update({file("busy", 12)}, 12);
    EXPECT_EQ(sessions.lastWaitOf("s"), 9.0);
    sessions.update({file("waiting", 15)}, 15);
    EXPECT_EQ(sessions.lastWaitOf("s"), 15.0);
}

TEST(ClaudeSessions, ListsTheUrgentFirst) {
    const auto sorted = ClaudeSessions::ordered(
        {summary("idle", Idle{}), summary("working late", Working{50}), summary("finish 6", Finished{6}),
         summary("wait 5", NeedsApproval{"m", 5}), summary("working early", Working{40}),
         summary("wait 0", NeedsApproval{"m", 0}), summary("finish 7", Finished{7})});
    EXPECT_EQ(ids(sorted), "wait 0 wait 5 finish 7 finish 6 working early working late idle ");
}

TEST(ClaudeSessions, EqualRanksSortByNameThenStayInTheirOrder) {
    const auto sorted = ClaudeSessions::ordered({summary("1", Idle{}, "b"), summary("2", Idle{}, "a"),
                                                 summary("3", Idle{}, "B"), summary("4", Idle{}, "a")});
    EXPECT_EQ(ids(sorted), "3 2 4 1 ");
}

TEST(ClaudeSessions, ListsThoseThatWait) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 9, "late"), file("busy", 1, "busy"), file("waiting", 3, "early")}, 10);
    EXPECT_EQ(ids(sessions.waitingForApproval(10)), "early late ");
}

TEST(ClaudeSessions, FollowsACapturedPromptFromItsStartToItsEnd) {
    std::istringstream lines(test::dataFile("agents/claude/sessions/allowed-by-hook.timeline.jsonl"));
    ClaudeSessions sessions;
    std::string seen;
    for (std::string line; std::getline(lines, line);) {
        const auto entry = Json::parse(line);
        ASSERT_TRUE(entry);
        const std::string* content = entry->stringAt("content");
        const auto state = content ? ClaudeSessionFile::parse(*content) : std::nullopt;
        if (!state) {
            continue;
        }
        const double now = *entry->find("t")->number();
        sessions.update({*state}, now);
        seen += "iwfb"[std::array{0, 1, 2, 3}[status(sessions, now).index()]];
    }
    EXPECT_EQ(seen, "ibwbf");
}

TEST(ClaudeSessions, ADismissedWaitThatStillStandsIsRaisedAgain) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 100)}, 100);
    sessions.dismissApproval("s");
    const ClaudeSessions::Wait wait = sessions.waitOf("s");
    EXPECT_EQ(wait, (ClaudeSessions::Wait{100, std::nullopt}));
    ASSERT_NE(status(sessions, 101), Status(NeedsApproval{"permission prompt", 100}));
    sessions.update({file("waiting", 100)}, 101);
    sessions.raiseApproval("s", wait);
    EXPECT_EQ(status(sessions, 101), Status(NeedsApproval{"permission prompt", 100}));
}

TEST(ClaudeSessions, ANotificationIsRaisedAgainOnlyWhileItStands) {
    ClaudeSessions sessions;
    sessions.update({file("busy", 90)}, 100);
    sessions.apply(event(Event::NeedsYou{"Claude needs you"}, 100));
    sessions.dismissApproval("s");
    const ClaudeSessions::Wait wait = sessions.waitOf("s");
    EXPECT_EQ(wait, (ClaudeSessions::Wait{std::nullopt, 100}));
    ClaudeSessions answered = sessions;
    sessions.raiseApproval("s", wait);
    EXPECT_EQ(status(sessions, 101), Status(NeedsApproval{"Claude needs you", 100}));
    answered.apply(event(Event::ToolDone{}, 101));
    answered.raiseApproval("s", wait);
    EXPECT_EQ(status(answered, 101), Status(Working{90}));
}

TEST(ClaudeSessions, ANotificationThatCameSinceDoesNotKeepTheFilesWaitHidden) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 100)}, 100);
    sessions.dismissApproval("s");
    const ClaudeSessions::Wait wait = sessions.waitOf("s");
    sessions.apply(event(Event::NeedsYou{"Claude needs you"}, 100.5));
    sessions.raiseApproval("s", wait);
    EXPECT_EQ(status(sessions, 101), Status(NeedsApproval{"Claude needs you", 100}));
}

TEST(ClaudeSessions, ALaterWaitThatTheUserDismissedStaysHidden) {
    ClaudeSessions sessions;
    sessions.update({file("waiting", 100)}, 100);
    sessions.dismissApproval("s");
    const ClaudeSessions::Wait first = sessions.waitOf("s");
    sessions.update({file("waiting", 100.5)}, 100.5);
    sessions.dismissApproval("s");
    sessions.raiseApproval("s", first);
    EXPECT_FALSE(std::holds_alternative<NeedsApproval>(status(sessions, 101)));
}

TEST(ClaudeSessions, WithoutAWaitNothingIsRaised) {
    ClaudeSessions sessions;
    EXPECT_EQ(sessions.waitOf("unknown"), ClaudeSessions::Wait());
    sessions.raiseApproval("unknown", {100, 100});
    EXPECT_EQ(sessions, ClaudeSessions());
    sessions.update({file("busy", 90)}, 100);
    sessions.dismissApproval("s");
    sessions.raiseApproval("s", sessions.waitOf("s"));
    EXPECT_EQ(status(sessions, 101), Status(Working{90}));
}
