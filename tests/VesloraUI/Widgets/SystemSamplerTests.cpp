// SPDX-License-Identifier: MIT
// The sampler, with a machine that says what a test put into it and counts how often it was asked.
#include "VesloraUI/Widgets/SystemSampler.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30;
constexpr double interval = SystemSampler::usualInterval;

class SystemSamplerTest : public testing::Test {
  protected:
    void SetUp() override {
        machine.counted = CPUTicks{100, 100, 1000, 0};
        machine.memory = MemoryPages{2 * gibibyte / 4096, 0, 0, 0, 4096};
        machine.volume = DiskCapacity{500, 300};
    }
    /// Lets the processor count so many ticks.
    void work(std::uint64_t user, std::uint64_t system, std::uint64_t idle) {
        machine.counted->user += user;
        machine.counted->system += system;
        machine.counted->idle += idle;
    }

    ManualScheduler time;
    FakeSystemReadings machine;
    SystemSampler sampler{time, machine};
};

TEST_F(SystemSamplerTest, BeginsWithTheSizeOfTheMemoryAlone) {
    EXPECT_EQ(machine.reads, 1);
    EXPECT_EQ(sampler.memoryTotal(), 16 * gibibyte);
    EXPECT_EQ(sampler.cpu(), std::nullopt);
    EXPECT_EQ(sampler.battery(), std::nullopt);
    EXPECT_EQ(sampler.memoryUsed(), 0U);
    EXPECT_EQ(sampler.diskUsed(), 0U);
    EXPECT_EQ(sampler.diskTotal(), 0U);
}

TEST_F(SystemSamplerTest, WhileNobodyLooksNothingIsReadAndNothingWaits) {
    time.advance(3600);
    EXPECT_EQ(machine.reads, 1);
    EXPECT_EQ(time.pending(), 0U);
    sampler.viewAppeared();
    sampler.viewDisappeared();
    const int reads = machine.reads;
    time.advance(3600);
    EXPECT_EQ(machine.reads, reads);
    EXPECT_EQ(time.pending(), 0U);
    sampler.startAgain();
    EXPECT_EQ(machine.reads, reads);
    EXPECT_EQ(time.pending(), 0U);
}

TEST_F(SystemSamplerTest, TheFirstLookHasAllButTheProcessorsShare) {
    sampler.viewAppeared();
    EXPECT_EQ(sampler.memoryUsed(), 2 * gibibyte);
    EXPECT_EQ(sampler.diskUsed(), 200U);
    EXPECT_EQ(sampler.diskTotal(), 500U);
    EXPECT_EQ(sampler.cpu(), std::nullopt);
    work(30, 20, 50);
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0.3, 0.2}));
    work(0, 0, 10);
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0, 0}));
}

TEST_F(SystemSamplerTest, TwoViewsShareTheReadings) {
    sampler.viewAppeared();
    const int reads = machine.reads;
    sampler.viewAppeared();
    EXPECT_EQ(machine.reads, reads);
    EXPECT_EQ(time.pending(), 1U);
    sampler.viewDisappeared();
    work(1, 1, 2);
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0.25, 0.25}));
    sampler.viewDisappeared();
    EXPECT_EQ(sampler.cpu(), std::nullopt);
    EXPECT_EQ(time.pending(), 0U);
}

TEST_F(SystemSamplerTest, AGapIsNeverPartOfADifference) {
    sampler.viewAppeared();
    sampler.viewDisappeared();
    work(1000, 0, 0);
    time.advance(100);
    sampler.viewAppeared();
    EXPECT_EQ(sampler.cpu(), std::nullopt);
    work(0, 0, 10);
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0, 0}));
}

TEST_F(SystemSamplerTest, TheOtherFiguresStayWhenTheLastViewGoes) {
    machine.power = BatteryReading{0.5, false, true, {}, {}};
    sampler.viewAppeared();
    sampler.viewDisappeared();
    EXPECT_EQ(sampler.memoryUsed(), 2 * gibibyte);
    EXPECT_EQ(sampler.battery(), machine.power);
}

TEST_F(SystemSamplerTest, AGoodbyeTooManyIsNoMatter) {
    sampler.viewDisappeared();
    sampler.viewDisappeared();
    sampler.viewAppeared();
    EXPECT_EQ(time.pending(), 1U);
    EXPECT_EQ(sampler.memoryUsed(), 2 * gibibyte);
}

TEST_F(SystemSamplerTest, CountsWithoutAShareClearIt) {
    sampler.viewAppeared();
    work(1, 1, 2);
    time.advance(interval);
    ASSERT_TRUE(sampler.cpu());
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), std::nullopt) << "equal counts";
    work(1, 1, 2);
    time.advance(interval);
    ASSERT_TRUE(sampler.cpu());
    machine.counted->idle = 1;
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), std::nullopt) << "a count that went backwards";
    work(1, 1, 2);
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0.25, 0.25}));
}

TEST_F(SystemSamplerTest, WhatCannotBeReadKeepsItsLastValue) {
    sampler.viewAppeared();
    work(1, 1, 2);
    time.advance(interval);
    machine.counted.reset();
    machine.memory.reset();
    machine.volume.reset();
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0.25, 0.25}));
    EXPECT_EQ(sampler.memoryUsed(), 2 * gibibyte);
    EXPECT_EQ(sampler.diskTotal(), 500U);
    // The next share is of all that was counted since the last good count.
    machine.counted = CPUTicks{101 + 4, 101, 1002, 0};
    time.advance(interval);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{1, 0}));
}

TEST_F(SystemSamplerTest, MemoryBeyondReasonKeepsTheLastValue) {
    sampler.viewAppeared();
    machine.memory = MemoryPages{UINT64_MAX, 0, UINT64_MAX, 0, UINT64_MAX};
    time.advance(interval);
    EXPECT_EQ(sampler.memoryUsed(), 2 * gibibyte);
}

TEST_F(SystemSamplerTest, AMachineThatTellsNoSizeHasNone) {
    machine.physical.reset();
    EXPECT_EQ(SystemSampler(time, machine).memoryTotal(), 0U);
}

TEST_F(SystemSamplerTest, TheDiskIsReadOnlyWithoutABattery) {
    machine.power = BatteryReading{0.5, false, false, {}, 30};
    sampler.viewAppeared();
    EXPECT_EQ(sampler.battery(), machine.power);
    EXPECT_EQ(machine.diskReads, 0);
    machine.power.reset();
    time.advance(interval);
    EXPECT_EQ(sampler.battery(), std::nullopt);
    EXPECT_EQ(machine.diskReads, 1);
    EXPECT_EQ(sampler.diskUsed(), 200U);
}

TEST_F(SystemSamplerTest, MoreAvailableThanThereIsCountsAsAnEmptyDisk) {
    machine.volume = DiskCapacity{500, 501};
    sampler.viewAppeared();
    EXPECT_EQ(sampler.diskUsed(), 0U);
    EXPECT_EQ(sampler.diskTotal(), 500U);
}

TEST_F(SystemSamplerTest, EqualFiguresAreNoNews) {
    sampler.viewAppeared();
    work(10, 10, 20);
    time.advance(interval);
    const QSignalSpy news(&sampler, &SystemSampler::changed);
    work(10, 10, 20);
    time.advance(interval);
    EXPECT_EQ(news.count(), 0);
    machine.memory->wiredPages = 1;
    work(10, 10, 20);
    time.advance(interval);
    EXPECT_EQ(news.count(), 1);
}

TEST_F(SystemSamplerTest, AfterASleepAllIsReadAtOnceAndNoDifferenceIsTaken) {
    sampler.viewAppeared();
    work(1, 1, 2);
    time.advance(interval);
    machine.memory->internalPages *= 2;
    work(1000, 0, 0);
    sampler.startAgain();
    EXPECT_EQ(sampler.memoryUsed(), 4 * gibibyte);
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0.25, 0.25})) << "the last share until there is another";
    EXPECT_EQ(time.pending(), 1U);
    time.advance(interval / 2);
    const int reads = machine.reads;
    work(0, 1, 1);
    time.advance(interval / 2);
    EXPECT_GT(machine.reads, reads) << "a whole interval later";
    EXPECT_EQ(sampler.cpu(), (CPUUsage{0, 0.5}));
}

TEST_F(SystemSamplerTest, CallsAnotherSampleAtAnotherInterval) {
    int calls = 0;
    SystemSampler other(time, machine, 5, [&calls](SystemSampler&) { ++calls; });
    other.viewAppeared();
    EXPECT_EQ(calls, 1);
    time.advance(4.9);
    EXPECT_EQ(calls, 1);
    time.advance(0.1);
    EXPECT_EQ(calls, 2);
    other.viewDisappeared();
    time.advance(50);
    EXPECT_EQ(calls, 2);
}

TEST_F(SystemSamplerTest, ASamplerThatGoesTakesItsIntervalAlong) {
    {
        SystemSampler gone(time, machine);
        gone.viewAppeared();
        EXPECT_EQ(time.pending(), 1U);
    }
    EXPECT_EQ(time.pending(), 0U);
}

} // namespace
} // namespace veslora
