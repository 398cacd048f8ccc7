// SPDX-License-Identifier: MIT
// The timer from its start to the end of its alert, on a machine whose time a test moves.
#include "VesloraUI/Timer/TimerModel.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr double minute = 60;

class TimerModelTest : public testing::Test {
  protected:
    TimerModelTest() {
        timer.onPresentationChange = [this] { ++presentations; };
    }
    void finish() {
        timer.start();
        platform.advance(5 * minute);
    }
    [[nodiscard]] Timestamp now() const { return platform.time.now(); }
    /// Absent without a countdown.
    [[nodiscard]] std::optional<double> left() const {
        return timer.countdown() ? std::optional(timer.countdown()->remaining(now())) : std::nullopt;
    }

    FakePlatform platform;
    FakeDefaults settings{platform};
    TimerModel timer{settings, {platform.time, platform.sound, platform.taps, &platform.notices}};
    int presentations = 0;
};

TEST_F(TimerModelTest, IsIdleAtFirst) {
    EXPECT_EQ(timer.countdown(), std::nullopt);
    EXPECT_FALSE(timer.isLiveActivityVisible());
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_EQ(timer.selectedMinutes(), 5);
    EXPECT_EQ(timer.lastDuration(), std::nullopt);
    EXPECT_THAT(TimerModel::presetMinutes, ElementsAre(5, 15, 25));
    EXPECT_EQ(platform.time.pending(), 0u);
    EXPECT_THAT(platform.notices.log, IsEmpty());
}

TEST_F(TimerModelTest, StartRunsTheSelectedLength) {
    timer.select(25);
    timer.start();
    EXPECT_THAT(left(), Optional(25 * minute));
    EXPECT_TRUE(timer.isLiveActivityVisible());
    EXPECT_EQ(presentations, 1);
    EXPECT_EQ(platform.time.pending(), 1u) << "nothing but its end wakes it";
    EXPECT_EQ(platform.time.nextDelay(), 25 * minute);
}

TEST_F(TimerModelTest, StartReplacesATimerThatRuns) {
    timer.start();
    platform.advance(4 * minute);
    timer.start();
    EXPECT_THAT(left(), Optional(5 * minute));
    platform.advance(4 * minute);
    EXPECT_FALSE(timer.isShowingDone()) << "the old end wakes nobody";
    platform.advance(1 * minute);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, AtItsEndItTellsByAlertSoundAndNotification) {
    timer.start();
    platform.advance(5 * minute - 0.01);
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_THAT(platform.sound.played, IsEmpty());
    platform.advance(0.01);
    EXPECT_TRUE(timer.isShowingDone());
    EXPECT_EQ(timer.countdown(), std::nullopt);
    EXPECT_THAT(timer.lastDuration(), Optional(5 * minute));
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
    EXPECT_THAT(platform.notices.log, ElementsAre("permission", "finished 300"));
    EXPECT_EQ(presentations, 2);
}

TEST_F(TimerModelTest, TheAlertGoesByItself) {
    finish();
    platform.advance(14.9);
    EXPECT_TRUE(timer.isShowingDone());
    platform.advance(0.1);
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_EQ(presentations, 3);
    EXPECT_EQ(platform.time.pending(), 0u);
    EXPECT_THAT(timer.lastDuration(), Optional(5 * minute)) << "it can still be restarted";
}

TEST_F(TimerModelTest, StartDuringTheAlertEndsIt) {
    finish();
    platform.advance(5);
    timer.start();
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_EQ(platform.time.pending(), 1u) << "the alert's own end was cancelled";
    platform.advance(5 * minute);
    EXPECT_TRUE(timer.isShowingDone());
    platform.advance(14.9);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, RestartRunsTheLastLengthOnceMore) {
    timer.select(1);
    timer.start();
    timer.add(1);
    platform.advance(2 * minute);
    timer.select(60);
    timer.restart();
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_THAT(left(), Optional(2 * minute)) << "time that was added counts";
    EXPECT_EQ(timer.selectedMinutes(), 60);
}

TEST_F(TimerModelTest, RestartNeedsATimerThatHasFinished) {
    timer.restart();
    EXPECT_EQ(timer.countdown(), std::nullopt);
    timer.start();
    timer.cancel();
    timer.restart();
    EXPECT_EQ(timer.countdown(), std::nullopt) << "one that was cancelled has not finished";
}

TEST_F(TimerModelTest, DismissTakesTheAlertAway) {
    finish();
    timer.dismissDone();
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_EQ(platform.time.pending(), 0u);
    EXPECT_EQ(presentations, 3);
}

TEST_F(TimerModelTest, CancelEndsItWithoutAWord) {
    timer.start();
    platform.advance(1 * minute);
    timer.cancel();
    EXPECT_EQ(timer.countdown(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0u);
    EXPECT_EQ(presentations, 2);
    platform.advance(10 * minute);
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_THAT(platform.sound.played, IsEmpty());
    EXPECT_EQ(timer.lastDuration(), std::nullopt);
}

TEST_F(TimerModelTest, CancelTakesTheAlertAwayToo) {
    finish();
    timer.cancel();
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(TimerModelTest, PausedThroughItsEndItDoesNotFinish) {
    timer.start();
    platform.advance(4 * minute);
    timer.pause();
    EXPECT_TRUE(timer.countdown()->isPaused());
    EXPECT_EQ(platform.time.pending(), 0u) << "a paused timer wakes nobody";
    platform.advance(60 * minute);
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_THAT(left(), Optional(1 * minute));
    timer.resume();
    EXPECT_FALSE(timer.countdown()->isPaused());
    platform.advance(59.9);
    EXPECT_FALSE(timer.isShowingDone());
    platform.advance(0.1);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, PausingAndResumingNothingDoesNothing) {
    timer.pause();
    timer.resume();
    timer.add(5);
    timer.dismissDone();
    timer.cancel();
    EXPECT_EQ(timer.countdown(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0u);
    timer.start();
    timer.resume();
    EXPECT_THAT(left(), Optional(5 * minute));
    EXPECT_EQ(platform.time.pending(), 1u);
    timer.pause();
    timer.pause();
    EXPECT_TRUE(timer.countdown()->isPaused());
}

TEST_F(TimerModelTest, PausedAtItsVeryEndItWaitsToBeResumed) {
    timer.start();
    platform.time.suspend(6 * minute);
    timer.pause();
    platform.advance(1 * minute);
    EXPECT_THAT(left(), Optional(0.0));
    EXPECT_FALSE(timer.isShowingDone());
    timer.resume();
    EXPECT_FALSE(timer.isShowingDone()) << "never within the call";
    platform.advance(0);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, AddedTimePushesTheEndBack) {
    timer.start();
    platform.advance(4 * minute);
    timer.add(5);
    EXPECT_EQ(presentations, 2) << "the wings may grow";
    EXPECT_EQ(timer.countdown()->duration, 10 * minute);
    platform.advance(5.9 * minute);
    EXPECT_FALSE(timer.isShowingDone()) << "the old end wakes nobody";
    platform.advance(0.1 * minute);
    EXPECT_TRUE(timer.isShowingDone());
    EXPECT_THAT(timer.lastDuration(), Optional(10 * minute));
}

TEST_F(TimerModelTest, AddedTimeLeavesAPausedTimerPaused) {
    timer.start();
    platform.advance(4.5 * minute);
    timer.pause();
    timer.add(1);
    EXPECT_THAT(left(), Optional(1.5 * minute));
    EXPECT_TRUE(timer.countdown()->isPaused());
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(TimerModelTest, AddedTimeAfterTheEndIsAFreshRun) {
    timer.start();
    platform.time.suspend(6 * minute);
    timer.add(1);
    EXPECT_EQ(timer.countdown()->duration, 1 * minute);
    platform.advance(59.9);
    EXPECT_FALSE(timer.isShowingDone());
    platform.advance(0.1);
    EXPECT_THAT(timer.lastDuration(), Optional(1 * minute));
}

TEST_F(TimerModelTest, OneThatEndedDuringSleepFinishesOnWaking) {
    timer.start();
    platform.time.suspend(60 * minute);
    platform.advance(0);
    EXPECT_TRUE(timer.isShowingDone());
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
    platform.advance(14.9);
    EXPECT_TRUE(timer.isShowingDone()) << "the alert has its whole time";
}

TEST_F(TimerModelTest, SleepChangesNothingElse) {
    timer.start();
    platform.time.suspend(4 * minute);
    platform.advance(0);
    EXPECT_THAT(left(), Optional(1 * minute));
    platform.advance(59.9);
    EXPECT_FALSE(timer.isShowingDone());
    platform.advance(0.1);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, AClockSetForwardBringsTheEndCloser) {
    timer.start();
    platform.time.setClock(now() + 3 * minute);
    EXPECT_THAT(left(), Optional(2 * minute));
    platform.advance(2 * minute - 0.1);
    EXPECT_FALSE(timer.isShowingDone());
    platform.advance(0.1);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, AClockSetPastTheEndEndsIt) {
    timer.start();
    platform.time.setClock(now() + 60 * minute);
    platform.advance(0);
    EXPECT_TRUE(timer.isShowingDone());
    platform.advance(15);
    EXPECT_FALSE(timer.isShowingDone());
}

TEST_F(TimerModelTest, TheAlertStaysItsTimeHoweverTheClockIsSet) {
    for (const double step : {3600.0, -3600.0}) {
        finish();
        platform.time.setClock(platform.time.now() + step);
        platform.advance(14.9);
        EXPECT_TRUE(timer.isShowingDone()) << step;
        platform.advance(0.1);
        EXPECT_FALSE(timer.isShowingDone()) << step;
    }
}

TEST_F(TimerModelTest, AClockSetBackPutsTheEndOff) {
    timer.start();
    platform.time.setClock(now() - 10 * minute);
    platform.advance(5 * minute);
    EXPECT_FALSE(timer.isShowingDone());
    EXPECT_THAT(left(), Optional(10 * minute));
    platform.advance(10 * minute);
    EXPECT_TRUE(timer.isShowingDone());
}

TEST_F(TimerModelTest, TheAlertGoesWhateverTheClockIsSetTo) {
    finish();
    platform.time.setClock(now() - 60 * minute);
    platform.advance(15);
    EXPECT_FALSE(timer.isShowingDone());
}

TEST_F(TimerModelTest, SoundAndNotificationFollowTheSettings) {
    settings.set(SettingsKeys::timerSound, "Submarine");
    settings.set(SettingsKeys::timerNotifications, false);
    finish();
    EXPECT_THAT(platform.sound.played, ElementsAre("Submarine"));
    EXPECT_THAT(platform.notices.log, IsEmpty());
    settings.set(SettingsKeys::timerSound, "None");
    settings.set(SettingsKeys::timerNotifications, true);
    finish();
    EXPECT_THAT(platform.sound.played, ElementsAre("Submarine"));
    EXPECT_THAT(platform.notices.log, ElementsAre("permission", "finished 300"));
}

TEST_F(TimerModelTest, TheSettingsCountThatHoldAtTheEnd) {
    timer.start();
    settings.set(SettingsKeys::timerNotifications, false);
    settings.set(SettingsKeys::timerSound, "Hero");
    platform.advance(5 * minute);
    EXPECT_THAT(platform.notices.log, ElementsAre("permission"));
    EXPECT_THAT(platform.sound.played, ElementsAre("Hero"));
}

TEST_F(TimerModelTest, ASoundThatIsNoTextFallsBack) {
    settings.set(SettingsKeys::timerSound, 7);
    finish();
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
}

TEST_F(TimerModelTest, WithoutNotifierAndSoundItFinishesSilently) {
    settings.set(SettingsKeys::timerSound, "None");
    TimerModel silent(settings, {platform.time, platform.sound, platform.taps, nullptr});
    silent.select(25);
    silent.start();
    platform.advance(25 * minute);
    EXPECT_TRUE(silent.isShowingDone());
    platform.advance(15);
    EXPECT_FALSE(silent.isShowingDone());
    EXPECT_THAT(platform.sound.played, IsEmpty());
    EXPECT_THAT(platform.notices.log, IsEmpty());
}

TEST_F(TimerModelTest, SelectionIsHeldToTheLadder) {
    timer.select(15);
    EXPECT_EQ(timer.selectedMinutes(), 15);
    timer.select(12);
    EXPECT_EQ(timer.selectedMinutes(), 12) << "held between the ends, not to the steps";
    timer.select(0);
    EXPECT_EQ(timer.selectedMinutes(), 1);
    timer.select(1'000'000);
    EXPECT_EQ(timer.selectedMinutes(), 180);
}

TEST_F(TimerModelTest, EachStepOfTheSelectionIsFelt) {
    QSignalSpy moved(&timer, &TimerModel::selectedMinutesChanged);
    timer.adjustSelection(1);
    EXPECT_EQ(timer.selectedMinutes(), 6);
    timer.adjustSelection(-2);
    EXPECT_EQ(timer.selectedMinutes(), 4);
    EXPECT_EQ(moved.count(), 2);
    EXPECT_THAT(platform.taps.performed, ElementsAre(HapticPattern::alignment, HapticPattern::alignment));
}

TEST_F(TimerModelTest, BeyondTheLaddersEndsNothingMovesAndNothingIsFelt) {
    timer.select(180);
    timer.adjustSelection(1);
    EXPECT_EQ(timer.selectedMinutes(), 180);
    timer.select(1);
    timer.adjustSelection(-3);
    timer.adjustSelection(0);
    EXPECT_EQ(timer.selectedMinutes(), 1);
    EXPECT_THAT(platform.taps.performed, IsEmpty());
}

TEST_F(TimerModelTest, WhateverHappensTheAlertAndACountdownNeverLeaveAGap) {
    timer.start();
    bool isClosedInBetween = false;
    const auto look = [&] { isClosedInBetween |= !timer.countdown() && !timer.isShowingDone(); };
    QObject::connect(&timer, &TimerModel::countdownChanged, look);
    QObject::connect(&timer, &TimerModel::isShowingDoneChanged, look);
    platform.advance(5 * minute);
    timer.restart();
    EXPECT_TRUE(timer.isLiveActivityVisible());
    EXPECT_FALSE(isClosedInBetween);
}

TEST_F(TimerModelTest, NothingWakesAModelThatIsGone) {
    {
        TimerModel brief(settings, {platform.time, platform.sound, platform.taps, &platform.notices});
        brief.start();
    }
    EXPECT_EQ(platform.time.pending(), 0u);
    platform.advance(10 * minute);
    EXPECT_THAT(platform.sound.played, IsEmpty());
}

} // namespace
} // namespace veslora
