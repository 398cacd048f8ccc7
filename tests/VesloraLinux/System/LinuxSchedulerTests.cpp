// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LinuxScheduler.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <fstream>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

/// The time left on a kernel timer, in seconds, as the kernel tells it: 0 when it is not armed.
double timeLeft(int descriptor) {
    std::ifstream info("/proc/self/fdinfo/" + std::to_string(descriptor));
    for (std::string line; std::getline(info, line);) {
        long seconds = 0;
        long nanoseconds = 0;
        if (std::sscanf(line.c_str(), "it_value: (%ld, %ld)", &seconds, &nanoseconds) == 2) {
            return static_cast<double>(seconds) + static_cast<double>(nanoseconds) / 1e9;
        }
    }
    ADD_FAILURE() << "no timer " << descriptor;
    return -1;
}

class LinuxSchedulerTests : public ::testing::Test {
  protected:
    testing::CoreApplication application;
    Timestamp wall = 1'000'000.25;
    LinuxScheduler scheduler;
    LinuxScheduler schedulerOfWall{[this] { return wall; }};
};

TEST_F(LinuxSchedulerTests, TellsTheWallClock) {
    const auto system =
        std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    EXPECT_NEAR(scheduler.now(), system, 5);
}

TEST_F(LinuxSchedulerTests, SteadyClockIgnoresThatTheWallClockIsSet) {
    const double before = schedulerOfWall.steadyNow();
    wall -= 3600;
    const double after = schedulerOfWall.steadyNow();
    EXPECT_GE(after, before);
    EXPECT_LT(after, before + 60);
}

TEST_F(LinuxSchedulerTests, CallsOnceAndNeverTooEarly) {
    int calls = 0;
    const Timestamp deadline = scheduler.now() + 0.05;
    Timestamp calledAt = 0;
    Task task = scheduler.after(0.05, [&] {
        ++calls;
        calledAt = scheduler.now();
    });
    EXPECT_TRUE(task.isActive());
    ASSERT_TRUE(waitUntil([&] { return calls > 0; }));
    EXPECT_GE(calledAt, deadline);
    EXPECT_FALSE(task.isActive());
    handleEventsFor(100);
    EXPECT_EQ(calls, 1);
}

TEST_F(LinuxSchedulerTests, EndsAWaitOfNothingAtTheNextTurnNotAtOnce) {
    for (const double wait : {0.0, -5.0, std::nan("")}) {
        bool isDone = false;
        const Task task = scheduler.after(wait, [&] { isDone = true; });
        EXPECT_FALSE(isDone);
        EXPECT_TRUE(waitUntil([&] { return isDone; }));
    }
}

TEST_F(LinuxSchedulerTests, KeepsToTheOrderOfDeadlinesAndThenOfAsking) {
    std::string order;
    const Task late = scheduler.after(0.02, [&] { order += 'c'; });
    const Task first = scheduler.after(0, [&] { order += 'a'; });
    const Task second = scheduler.after(0, [&] { order += 'b'; });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    ASSERT_TRUE(waitUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, "abc");
}

TEST_F(LinuxSchedulerTests, LetsACallbackReplaceItsOwnTask) {
    int calls = 0;
    Task task;
    std::function<void()> again = [&] {
        if (++calls < 3) {
            task = scheduler.after(0, again);
        }
    };
    task = scheduler.after(0, again);
    EXPECT_TRUE(waitUntil([&] { return calls == 3; }));
    handleEventsFor(20);
    EXPECT_EQ(calls, 3);
}

TEST_F(LinuxSchedulerTests, LetsACallbackCancelAnotherThatIsDueToo) {
    bool isCalled = false;
    Task second;
    const Task first = scheduler.after(0, [&] { second.cancel(); });
    second = scheduler.after(0, [&] { isCalled = true; });
    handleEventsFor(30);
    EXPECT_FALSE(isCalled);
}

TEST_F(LinuxSchedulerTests, LetsARepetitionEndItself) {
    for (const Precision precision : {Precision::exact, Precision::coarse}) {
        int calls = 0;
        Task task;
        task = scheduler.every(0.01, precision, [&] {
            if (++calls == 2) {
                task.cancel();
            }
        });
        EXPECT_TRUE(waitUntil([&] { return calls == 2; }));
        handleEventsFor(50);
        EXPECT_EQ(calls, 2);
    }
}

TEST_F(LinuxSchedulerTests, ArmsNoTimerWhileNothingWaits) {
    EXPECT_EQ(timeLeft(scheduler.exactTimer()), 0);
    EXPECT_EQ(timeLeft(scheduler.coarseTimer()), 0);
    {
        const Task once = scheduler.after(50, [] {});
        const Task coarse = scheduler.every(40, Precision::coarse, [] {});
        EXPECT_NEAR(timeLeft(scheduler.exactTimer()), 50, 5);
        EXPECT_GT(timeLeft(scheduler.coarseTimer()), 0);
    }
    EXPECT_EQ(timeLeft(scheduler.exactTimer()), 0);
    EXPECT_EQ(timeLeft(scheduler.coarseTimer()), 0);
}

TEST_F(LinuxSchedulerTests, IsNotWokenForWhatWasCancelled) {
    const Task late = scheduler.after(1000, [] {});
    Task early = scheduler.after(10, [] {});
    EXPECT_NEAR(timeLeft(scheduler.exactTimer()), 10, 5);
    early.cancel();
    EXPECT_NEAR(timeLeft(scheduler.exactTimer()), 1000, 10);
}

TEST_F(LinuxSchedulerTests, WaitsForeverWithoutBeingWoken) {
    const Task task = scheduler.after(std::numeric_limits<double>::infinity(), [] { FAIL(); });
    EXPECT_GT(timeLeft(scheduler.exactTimer()), 1e9);
}

/// Numbers the times at which the scheduler fires: whatever runs together sees the same number.
class Turns {
  public:
    explicit Turns(LinuxScheduler& scheduler) : m_scheduler(scheduler) {}
    int now() {
        // A wait of nothing ends at the next turn, after everything that fires in this one.
        m_next = m_scheduler.after(0, [this] { ++m_number; });
        return m_number;
    }

  private:
    LinuxScheduler& m_scheduler;
    int m_number = 0;
    Task m_next;
};

TEST_F(LinuxSchedulerTests, WakesOnceForAllRepetitionsOfAKind) {
    for (const Precision precision : {Precision::exact, Precision::coarse}) {
        Turns turns(scheduler);
        std::vector<int> seen;
        std::vector<Task> tasks;
        for (int index = 0; index < 3; ++index) {
            tasks.push_back(scheduler.every(0.2, precision, [&] { seen.push_back(turns.now()); }));
            handleEventsFor(20);
        }
        ASSERT_TRUE(waitUntil([&] { return seen.size() >= 15; }));
        // Begun at different moments they tick together from then on.
        int together = 0;
        for (std::size_t index = 0; index + 2 < seen.size(); ++index) {
            together += seen[index] == seen[index + 2] ? 1 : 0;
        }
        EXPECT_GE(together, 4);
    }
}

TEST_F(LinuxSchedulerTests, TicksCoarselyAsOftenAsAsked) {
    const Timestamp start = scheduler.now();
    int often = 0;
    int seldom = 0;
    const Task first = scheduler.every(0.05, Precision::coarse, [&] { ++often; });
    const Task second = scheduler.every(0.15, Precision::coarse, [&] { ++seldom; });
    ASSERT_TRUE(waitUntil([&] { return often >= 12; }));
    const double passed = scheduler.now() - start;
    EXPECT_LE(often, passed / 0.05 + 1);
    EXPECT_LE(seldom, passed / 0.15 + 1);
    EXPECT_GE(seldom, 2);
}

TEST_F(LinuxSchedulerTests, DoesNotMakeUpForMissedRepetitions) {
    for (const Precision precision : {Precision::exact, Precision::coarse}) {
        int calls = 0;
        const Task task = scheduler.every(0.05, precision, [&] { ++calls; });
        std::this_thread::sleep_for(std::chrono::milliseconds(320));
        handleEventsFor(10);
        EXPECT_GE(calls, 1);
        EXPECT_LE(calls, 2);
    }
}

TEST_F(LinuxSchedulerTests, PutsExactRepetitionsOnMultiplesOfTheirPeriod) {
    int calls = 0;
    wall = 1'000'099.98;
    const Task task = schedulerOfWall.every(100, Precision::exact, [&] { ++calls; });
    EXPECT_LT(timeLeft(schedulerOfWall.exactTimer()), 0.05);
    // Even if the clocks disagree a little when it fires, the same multiple does not come twice.
    wall = 1'000'099.9995;
    ASSERT_TRUE(waitUntil([&] { return calls > 0; }));
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 100, 5);
    EXPECT_EQ(calls, 1);
}

TEST_F(LinuxSchedulerTests, AWaitIsNeitherCutNorDrawnOutByAClockThatIsSet) {
    const Task task = schedulerOfWall.after(100, [] {});
    for (const double step : {86400.0, -2 * 86400.0, 101.0}) {
        wall += step;
        schedulerOfWall.wallClockWasSet();
        EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 100, 10) << step;
    }
}

TEST_F(LinuxSchedulerTests, ReachesADateHoweverTheClockIsSet) {
    bool isReached = false;
    const Task task = schedulerOfWall.at(wall + 3600, [&] { isReached = true; });
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 3600, 10);
    wall += 1800;
    schedulerOfWall.wallClockWasSet();
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 1800, 10);
    wall -= 3600;
    schedulerOfWall.wallClockWasSet();
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 5400, 10);
    wall += 5400;
    schedulerOfWall.wallClockWasSet();
    EXPECT_TRUE(waitUntil([&] { return isReached; }));
    EXPECT_EQ(timeLeft(schedulerOfWall.exactTimer()), 0);
}

TEST_F(LinuxSchedulerTests, ReachesADateOfThePastAtTheNextTurnNotAtOnce) {
    int reached = 0;
    const Task past = scheduler.at(scheduler.now() - 10, [&] { ++reached; });
    const Task none = scheduler.at(std::nan(""), [&] { ++reached; });
    EXPECT_EQ(reached, 0);
    EXPECT_TRUE(waitUntil([&] { return reached == 2; }));
}

TEST_F(LinuxSchedulerTests, AlignsExactRepetitionsAgainWhenTheClockIsSet) {
    wall = 1'000'000.25;
    const Task task = schedulerOfWall.every(100, Precision::exact, [] {});
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 99.75, 5);
    wall = 1'000'060;
    schedulerOfWall.wallClockWasSet();
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 40, 5);
    wall = 999'950;
    schedulerOfWall.wallClockWasSet();
    EXPECT_NEAR(timeLeft(schedulerOfWall.exactTimer()), 50, 5);
}

TEST_F(LinuxSchedulerTests, WorksInTheBackgroundAndEndsOnTheMainThread) {
    std::thread::id worker;
    int niceness = 0;
    bool isDone = false;
    const Task task = scheduler.background(
        [&] {
            worker = std::this_thread::get_id();
            niceness = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid()));
        },
        [&] {
            isDone = true;
            EXPECT_NE(worker, std::this_thread::get_id());
        });
    ASSERT_TRUE(waitUntil([&] { return isDone; }));
    EXPECT_GE(niceness, 10);
    EXPECT_EQ(getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())), getpriority(PRIO_PROCESS, 0));
    EXPECT_FALSE(task.isActive());
}

TEST_F(LinuxSchedulerTests, WhatSomebodyWaitsForIsNotBehindBackgroundWork) {
    const auto mayEnd = std::make_shared<std::atomic<bool>>(false);
    std::vector<Task> busy;
    for (int count = 0; count < 4; ++count) {
        busy.push_back(scheduler.background(
            [mayEnd] {
                while (!*mayEnd) {
                    std::this_thread::yield();
                }
            },
            [] {}));
    }
    std::vector<int> order;
    int niceness = -1;
    const Task first =
        scheduler.concurrently([&] { niceness = getpriority(PRIO_PROCESS, static_cast<id_t>(gettid())); },
                               [&] { order.push_back(1); });
    const Task second = scheduler.concurrently([] {}, [&] { order.push_back(2); });
    EXPECT_TRUE(waitUntil([&] { return order.size() == 2; }));
    *mayEnd = true;
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
    EXPECT_EQ(niceness, getpriority(PRIO_PROCESS, 0));
}

TEST_F(LinuxSchedulerTests, DropsTheEndOfBackgroundWorkThatWasCancelled) {
    // The work may outlive this function when something fails, so it shares what it looks at.
    struct Stages {
        std::atomic<bool> hasBegun = false;
        std::atomic<bool> mayEnd = false;
        std::atomic<bool> hasEnded = false;
    };
    const auto stages = std::make_shared<Stages>();
    bool isDone = false;
    Task task = scheduler.background(
        [stages] {
            stages->hasBegun = true;
            while (!stages->mayEnd) {
                std::this_thread::yield();
            }
            stages->hasEnded = true;
        },
        [&] { isDone = true; });
    EXPECT_TRUE(waitUntil([&] { return stages->hasBegun.load(); }));
    task.cancel();
    stages->mayEnd = true;
    EXPECT_TRUE(waitUntil([&] { return stages->hasEnded.load(); }));
    handleEventsFor(20);
    EXPECT_FALSE(isDone);
}

TEST_F(LinuxSchedulerTests, DropsEveryCallbackWhenItEnds) {
    auto ended = std::make_unique<LinuxScheduler>();
    const auto kept = std::make_shared<int>(0);
    const auto fail = [kept] { ADD_FAILURE(); };
    const Task once = ended->after(0, fail);
    const Task repetition = ended->every(0.01, Precision::coarse, fail);
    const Task work = ended->background([] {}, fail);
    ended.reset();
    handleEventsFor(50);
    EXPECT_FALSE(once.isActive());
    EXPECT_FALSE(repetition.isActive());
}

TEST_F(LinuxSchedulerTests, FreesWhatACallbackHoldsAsSoonAsItIsCancelled) {
    const auto held = std::make_shared<int>(0);
    Task task = scheduler.after(1000, [held] {});
    EXPECT_EQ(held.use_count(), 2);
    task.cancel();
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace veslora
