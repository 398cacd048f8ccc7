// SPDX-License-Identifier: MIT
// What a pause of alerts does to requests: to those that come, and to those that are there.
#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"
#include "tests/support/FixedCalendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PausedAlertsTest : public ClaudeMonitorTest {
  protected:
    PausedAlertsTest() { monitor.obey(pausing); }
    void pause() { pausing.pause(AlertPause::For{AlertPause::hour}); }

    AlertPausing pausing{settings, platform.time, platform.quiet, test::fixedCalendar()};
};

TEST_F(PausedAlertsTest, WhatComesGoesStraightToItsTerminal) {
    pause();
    putRequest("aaa");
    monitor.start();
    putRequest("bbb");
    platform.watches.fire(spool, DirectoryChanges::movedInto);
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_EQ(answerOf("bbb"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
}

TEST_F(PausedAlertsTest, WhatIsShownIsLetGoAtOnce) {
    monitor.start();
    putRequest("aaa");
    putRequest("bbb");
    monitor.refresh();
    ASSERT_THAT(pendingIds(), ElementsAre("aaa", "bbb"));
    changes = 0;
    pause();
    EXPECT_EQ(answerOf("aaa"), "pass");
    EXPECT_EQ(answerOf("bbb"), "pass");
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_EQ(changes, 1);
}

TEST_F(PausedAlertsTest, AnAnswerThatComesAfterwardsAllowsNothing) {
    monitor.start();
    putRequest("aaa");
    monitor.refresh();
    pause();
    EXPECT_EQ(monitor.answer("aaa", ClaudeDecision::allow), AnswerOutcome::tooLate);
    EXPECT_EQ(answerOf("aaa"), "pass");
}

TEST_F(PausedAlertsTest, AnAnswerThatWasGivenBeforeStands) {
    monitor.start();
    putRequest("aaa");
    monitor.refresh();
    EXPECT_EQ(monitor.answer("aaa", ClaudeDecision::deny), AnswerOutcome::given);
    const auto given = answerOf("aaa");
    pause();
    EXPECT_EQ(answerOf("aaa"), given);
    EXPECT_NE(given, "pass");
}

TEST_F(PausedAlertsTest, TheSessionGoesOnWaiting) {
    putSession("s1", "waiting", now(), R"(,"waitingFor":"permission prompt")");
    putRequest("aaa");
    monitor.start();
    ASSERT_TRUE(waits());
    pause();
    EXPECT_TRUE(waits());
}

TEST_F(PausedAlertsTest, AfterItRequestsAreShownAgainAndNoOldOneComesBack) {
    monitor.start();
    putRequest("aaa");
    monitor.refresh();
    pause();
    pausing.resume();
    EXPECT_THAT(pendingIds(), IsEmpty());
    putRequest("bbb");
    monitor.refresh();
    EXPECT_THAT(pendingIds(), ElementsAre("bbb"));
    EXPECT_FALSE(answerOf("bbb"));
}

TEST_F(PausedAlertsTest, TheDesktopsDoNotDisturbDoesTheSame) {
    monitor.start();
    putRequest("aaa");
    monitor.refresh();
    platform.quiet.turn(true);
    EXPECT_EQ(answerOf("aaa"), "pass");
    putRequest("bbb");
    monitor.refresh();
    EXPECT_EQ(answerOf("bbb"), "pass");
    settings.set(SettingsKeys::followDoNotDisturb, false);
    putRequest("ccc");
    monitor.refresh();
    EXPECT_THAT(pendingIds(), ElementsAre("ccc"));
}

TEST_F(PausedAlertsTest, NothingIsReadForAPauseWithoutRequests) {
    monitor.start();
    const int reads = platform.disk.reads();
    platform.quiet.turn(true);
    EXPECT_EQ(platform.disk.reads(), reads);
}

} // namespace
} // namespace veslora
