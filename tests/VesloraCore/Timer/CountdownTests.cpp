// SPDX-License-Identifier: MIT
#include "VesloraCore/Timer/Countdown.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

/// A minute that starts at 100.
Countdown minute() {
    return {60, 100};
}

Countdown pausedWith(double left) {
    Countdown countdown = minute();
    countdown.pause(160 - left);
    return countdown;
}

} // namespace

TEST(Countdown, RunsDownToItsEnd) {
    EXPECT_EQ(minute().remaining(100), 60);
    EXPECT_EQ(minute().remaining(159.5), 0.5);
    EXPECT_EQ(minute().remaining(161), 0);
    EXPECT_FALSE(minute().isFinished(159.5));
    EXPECT_TRUE(minute().isFinished(160));
}

TEST(Countdown, PausedKeepsWhatIsLeft) {
    const Countdown countdown = pausedWith(25);
    EXPECT_TRUE(countdown.isPaused());
    EXPECT_EQ(countdown.remaining(9999), 25);
    EXPECT_FALSE(countdown.isFinished(9999)) << "Paused through its original end.";
}

TEST(Countdown, ResumesWithWhatWasLeft) {
    Countdown countdown = pausedWith(25);
    countdown.resume(1000);
    EXPECT_FALSE(countdown.isPaused());
    EXPECT_EQ(countdown.remaining(1005), 20);
}

TEST(Countdown, PausingTwiceOrResumingARunChangesNothing) {
    Countdown paused = pausedWith(25);
    paused.pause(150);
    EXPECT_EQ(paused, pausedWith(25));
    Countdown running = minute();
    running.resume(130);
    EXPECT_EQ(running, minute());
}

TEST(Countdown, PausedAtItsEndIsFinished) {
    EXPECT_TRUE(pausedWith(0).isFinished(0));
}

TEST(Countdown, FractionFallsFromOneToZero) {
    EXPECT_EQ(minute().fractionRemaining(100), 1);
    EXPECT_EQ(minute().fractionRemaining(145), 0.25);
    EXPECT_EQ(minute().fractionRemaining(200), 0);
    EXPECT_EQ(minute().fractionRemaining(0), 1) << "A clock set back makes it no more than full.";
    EXPECT_EQ(Countdown(0, 100).fractionRemaining(100), 0);
}

TEST(Countdown, UrgentInItsLastTenSecondsWhileItRuns) {
    EXPECT_FALSE(minute().isUrgent(149.9));
    EXPECT_TRUE(minute().isUrgent(150));
    EXPECT_TRUE(minute().isUrgent(159.9));
    EXPECT_FALSE(minute().isUrgent(160));
    EXPECT_FALSE(pausedWith(5).isUrgent(155));
}

TEST(Countdown, AddedTimeLengthensARun) {
    Countdown countdown = minute();
    countdown.extend(60, 130);
    EXPECT_EQ(countdown.duration, 120);
    EXPECT_EQ(countdown.remaining(130), 90);
    EXPECT_EQ(countdown.fractionRemaining(130), 0.75);
}

TEST(Countdown, AddedTimeLengthensAPausedRunAndLeavesItPaused) {
    Countdown countdown = pausedWith(30);
    countdown.extend(60, 500);
    EXPECT_TRUE(countdown.isPaused());
    EXPECT_EQ(countdown.remaining(500), 90);
    EXPECT_LE(countdown.fractionRemaining(500), 1);
}

TEST(Countdown, AddingTimeAfterTheEndStartsAfresh) {
    Countdown countdown = minute();
    countdown.extend(300, 400);
    EXPECT_EQ(countdown, Countdown(300, 400));
    Countdown paused = pausedWith(0);
    paused.extend(300, 400);
    EXPECT_EQ(paused, Countdown(300, 400)) << "The pause is lost.";
}
