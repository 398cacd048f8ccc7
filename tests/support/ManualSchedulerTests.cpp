// SPDX-License-Identifier: MIT
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ManualSchedulerTest : public testing::Test {
  protected:
    ManualScheduler scheduler;
    std::vector<std::string> log;

    std::function<void()> say(std::string word) {
        return [this, word = std::move(word)] { log.push_back(word); };
    }
    [[nodiscard]] double passed() const { return scheduler.now() - ManualScheduler::defaultStart; }
};

} // namespace

TEST_F(ManualSchedulerTest, WaitEndsAtItsMomentAndOnce) {
    const Task task = scheduler.after(2, say("done"));
    EXPECT_TRUE(task.isActive());
    scheduler.advance(1.5);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(0.5);
    EXPECT_THAT(log, ElementsAre("done"));
    EXPECT_FALSE(task.isActive());
    scheduler.advance(10);
    EXPECT_THAT(log, ElementsAre("done"));
    EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(ManualSchedulerTest, CallbackSeesTheClockAtItsMoment) {
    std::vector<double> seen;
    const Task first = scheduler.after(2, [&] { seen.push_back(passed()); });
    const Task second = scheduler.after(5, [&] { seen.push_back(passed()); });
    scheduler.advance(10);
    EXPECT_THAT(seen, ElementsAre(2, 5));
    EXPECT_EQ(passed(), 10);
}

TEST_F(ManualSchedulerTest, WaitOfZeroNeverEndsWithinTheCall) {
    const Task task = scheduler.after(0, say("zero"));
    const Task negative = scheduler.after(-5, say("negative"));
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(0);
    EXPECT_THAT(log, ElementsAre("zero", "negative"));
}

TEST_F(ManualSchedulerTest, OrderIsByMomentAndThenByWhoCameFirst) {
    const Task late = scheduler.after(3, say("late"));
    const Task early = scheduler.after(1, say("early"));
    const Task first = scheduler.after(2, say("first"));
    const Task second = scheduler.after(2, say("second"));
    scheduler.advance(5);
    EXPECT_THAT(log, ElementsAre("early", "first", "second", "late"));
}

TEST_F(ManualSchedulerTest, CancelledAndDroppedWaitsNeverEnd) {
    Task cancelled = scheduler.after(1, say("cancelled"));
    cancelled.cancel();
    EXPECT_FALSE(cancelled.isActive());
    { const Task dropped = scheduler.after(1, say("dropped")); }
    Task replaced = scheduler.after(1, say("replaced"));
    replaced = scheduler.after(2, say("new"));
    EXPECT_EQ(scheduler.pending(), 1U);
    scheduler.advance(5);
    EXPECT_THAT(log, ElementsAre("new"));
}

TEST_F(ManualSchedulerTest, CallbackMayCancelWhatIsDueAtTheSameMoment) {
    Task second;
    const Task first = scheduler.after(1, [&] { second.cancel(); });
    second = scheduler.after(1, say("second"));
    scheduler.advance(5);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(ManualSchedulerTest, RepetitionMayCancelItselfFromWithin) {
    Task task;
    int count = 0;
    task = scheduler.every(1, Precision::coarse, [&] {
        if (++count == 3) {
            task.cancel();
        }
    });
    scheduler.advance(10);
    EXPECT_EQ(count, 3);
    EXPECT_FALSE(task.isActive());
}

TEST_F(ManualSchedulerTest, RepetitionMayEndItsOwnerFromWithin) {
    struct Owner {
        std::string name = "owner";
        Task task;
    };
    auto owner = std::make_unique<Owner>();
    owner->task = scheduler.every(1, Precision::exact, [this, &owner, guard = std::string("kept")] {
        owner.reset();
        log.push_back(guard); // What the callback holds lives until it returns.
    });
    scheduler.advance(5);
    EXPECT_THAT(log, ElementsAre("kept"));
}

TEST_F(ManualSchedulerTest, WaitMayReplaceItselfFromWithin) {
    Task task;
    int rounds = 0;
    std::function<void()> next = [&] {
        log.push_back("round at " + std::to_string(static_cast<int>(passed())));
        if (++rounds < 3) {
            task = scheduler.after(2, next);
        }
    };
    task = scheduler.after(2, next);
    scheduler.advance(10);
    EXPECT_THAT(log, ElementsAre("round at 2", "round at 4", "round at 6"));
}

TEST_F(ManualSchedulerTest, RepetitionKeepsWhatItsCallbackRemembers) {
    const Task task = scheduler.every(
        1, Precision::coarse, [this, count = 0]() mutable { log.push_back(std::to_string(++count)); });
    scheduler.advance(3);
    EXPECT_THAT(log, ElementsAre("1", "2", "3"));
}

TEST_F(ManualSchedulerTest, WhatACallbackStartsRunsInTheSameAdvanceOnlyIfItFallsDue) {
    Task inner;
    Task tooLate;
    const Task outer = scheduler.after(1, [&] {
        inner = scheduler.after(1, say("inner"));
        tooLate = scheduler.after(5, say("too late"));
    });
    scheduler.advance(3);
    EXPECT_THAT(log, ElementsAre("inner"));
}

TEST_F(ManualSchedulerTest, ExactRepetitionsOfOnePeriodTickTogetherOnItsMultiples) {
    std::vector<double> first;
    std::vector<double> second;
    const Task one = scheduler.every(0.5, Precision::exact, [&] { first.push_back(passed()); });
    scheduler.advance(0.7);
    const Task two = scheduler.every(0.5, Precision::exact, [&] { second.push_back(passed()); });
    scheduler.advance(1.3);
    EXPECT_THAT(first, ElementsAre(0.5, 1, 1.5, 2));
    EXPECT_THAT(second, ElementsAre(1, 1.5, 2));
}

TEST_F(ManualSchedulerTest, ExactRepetitionNeverTicksTwiceAtOneMultiple) {
    int count = 0;
    const Task task = scheduler.every(0.1, Precision::exact, [&] { ++count; });
    for (int step = 0; step < 6000; ++step) {
        scheduler.advance(0.05);
    }
    EXPECT_EQ(count, 3000);
}

TEST_F(ManualSchedulerTest, CoarseRepetitionTicksOncePerPeriod) {
    scheduler.advance(0.3);
    std::vector<double> seen;
    const Task task = scheduler.every(2, Precision::coarse, [&] { seen.push_back(passed()); });
    scheduler.advance(6.5);
    EXPECT_THAT(seen, ElementsAre(testing::DoubleNear(2.3, 1e-6), testing::DoubleNear(4.3, 1e-6),
                                  testing::DoubleNear(6.3, 1e-6)));
}

TEST_F(ManualSchedulerTest, RepetitionWithoutAPeriodIsAMistakeOfItsCaller) {
    EXPECT_THROW(static_cast<void>(scheduler.every(0, Precision::coarse, [] {})), std::invalid_argument);
}

TEST_F(ManualSchedulerTest, ProgramThatNeverRestsIsFoundOut) {
    Task task;
    std::function<void()> again = [&] { task = scheduler.after(0, again); };
    again();
    EXPECT_THROW(scheduler.advance(1), std::runtime_error);
}

TEST_F(ManualSchedulerTest, SuspendedMachineMakesUpForNothing) {
    int ticks = 0;
    const Task repetition = scheduler.every(2, Precision::coarse, [&] { ++ticks; });
    const Task wait = scheduler.after(60, say("waited"));
    scheduler.suspend(3601);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(passed(), 3601);
    scheduler.advance(0);
    EXPECT_EQ(ticks, 1);
    EXPECT_THAT(log, ElementsAre("waited"));
    scheduler.advance(1);
    EXPECT_EQ(ticks, 2) << "The old rhythm goes on.";
}

TEST_F(ManualSchedulerTest, ClockSetForwardLeavesWaitsTheirLength) {
    const Task hour = scheduler.after(3600, say("hour"));
    scheduler.setClock(scheduler.now() + 7200);
    scheduler.advance(3599);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(1);
    EXPECT_THAT(log, ElementsAre("hour"));
}

TEST_F(ManualSchedulerTest, ClockSetBackLeavesWaitsTheirLength) {
    const Task task = scheduler.after(60, say("done"));
    scheduler.setClock(scheduler.now() - 86400);
    scheduler.advance(59);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(1);
    EXPECT_THAT(log, ElementsAre("done"));
    EXPECT_EQ(passed(), 60 - 86400);
}

TEST_F(ManualSchedulerTest, DateIsReachedByTheClockHoweverItIsSet) {
    const Task task = scheduler.at(scheduler.now() + 60, [&] {
        log.emplace_back("reached");
        EXPECT_EQ(passed(), 60);
    });
    scheduler.setClock(scheduler.now() + 20);
    scheduler.advance(20);
    scheduler.setClock(scheduler.now() - 30);
    scheduler.advance(49);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(1);
    EXPECT_THAT(log, ElementsAre("reached"));
    EXPECT_EQ(scheduler.pending(), 0u);
}

TEST_F(ManualSchedulerTest, DateThatTheClockJumpsOverIsReachedAtOnceButNotTwice) {
    const Task task = scheduler.at(scheduler.now() + 60, say("reached"));
    scheduler.setClock(scheduler.now() + 86400);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(0);
    scheduler.setClock(scheduler.now() - 86400);
    scheduler.advance(120);
    EXPECT_THAT(log, ElementsAre("reached"));
}

TEST_F(ManualSchedulerTest, DateIsReachedDuringSleepAndDateOfThePastAtOnce) {
    const Task later = scheduler.at(scheduler.now() + 60, say("later"));
    scheduler.suspend(3600);
    EXPECT_THAT(log, IsEmpty());
    const Task before = scheduler.at(scheduler.now() - 60, say("before"));
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(0);
    EXPECT_THAT(log, ElementsAre("later", "before"));
}

TEST_F(ManualSchedulerTest, ClockThatIsSetMovesExactRepetitionsToItsMultiples) {
    std::vector<double> seen;
    const Task task = scheduler.every(1, Precision::exact, [&] { seen.push_back(passed()); });
    scheduler.setClock(ManualScheduler::defaultStart + 0.75);
    scheduler.advance(0.25);
    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_F(ManualSchedulerTest, DeadlineWorkedOutFromTheClockHasPassedWhenItsWaitEnds) {
    for (int round = 1; round <= 1000; ++round) {
        scheduler.advance(0.1 * round);
        const double wait = 0.3 + 0.01 * round;
        const Timestamp deadline = scheduler.now() + wait;
        bool hasEnded = false;
        const Task task = scheduler.after(wait, [&] {
            hasEnded = true;
            EXPECT_LE(deadline, scheduler.now());
        });
        scheduler.advance(wait);
        ASSERT_TRUE(hasEnded) << round;
    }
}

TEST_F(ManualSchedulerTest, BackgroundWorkWaitsForItsCall) {
    const Task task = scheduler.background(say("work"), say("then"));
    scheduler.advance(10);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(scheduler.pendingBackground(), 1U);
    EXPECT_EQ(scheduler.runBackground(), 1U);
    EXPECT_THAT(log, ElementsAre("work", "then"));
    EXPECT_FALSE(task.isActive());
    EXPECT_EQ(scheduler.runBackground(), 0U);
}

TEST_F(ManualSchedulerTest, CancelledBackgroundWorkIsDoneButNotFollowedUp) {
    Task task = scheduler.background(say("work"), say("then"));
    task.cancel();
    scheduler.runBackground();
    EXPECT_THAT(log, ElementsAre("work"));
}

TEST_F(ManualSchedulerTest, BackgroundWorkMayQueueMoreForTheNextCall) {
    Task second;
    const Task first =
        scheduler.background(say("first"), [&] { second = scheduler.background(say("second"), [] {}); });
    EXPECT_EQ(scheduler.runBackground(), 1U);
    EXPECT_THAT(log, ElementsAre("first"));
    EXPECT_EQ(scheduler.runBackground(), 1U);
    EXPECT_THAT(log, ElementsAre("first", "second"));
}

TEST_F(ManualSchedulerTest, TellsWhatIsPendingAndWhenItFallsDue) {
    EXPECT_EQ(scheduler.nextDelay(), std::nullopt);
    const Task late = scheduler.after(5, [] {});
    Task early = scheduler.after(2, [] {});
    EXPECT_EQ(scheduler.pending(), 2U);
    EXPECT_EQ(scheduler.nextDelay(), 2);
    early.cancel();
    EXPECT_EQ(scheduler.pending(), 1U);
    EXPECT_EQ(scheduler.nextDelay(), 5);
    scheduler.suspend(100);
    EXPECT_EQ(scheduler.nextDelay(), 0);
}

TEST_F(ManualSchedulerTest, SteadyClockCountsSleepAndIgnoresTheWallClock) {
    const double start = scheduler.steadyNow();
    scheduler.advance(2);
    scheduler.suspend(3);
    EXPECT_DOUBLE_EQ(scheduler.steadyNow(), start + 5);
    scheduler.setClock(ManualScheduler::defaultStart - 3600);
    EXPECT_DOUBLE_EQ(scheduler.steadyNow(), start + 5);
}
