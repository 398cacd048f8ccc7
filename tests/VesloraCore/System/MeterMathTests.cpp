// SPDX-License-Identifier: MIT
#include "VesloraCore/System/MeterMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace veslora {
namespace {

using namespace MeterMath;

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30;

MeterReading reading(MeterKind kind, std::optional<double> fraction, bool isCharging = false) {
    return {kind, fraction, isCharging};
}

BatteryReading charging(std::optional<int> minutesToFull) {
    BatteryReading battery;
    battery.isCharging = true;
    battery.onAC = true;
    battery.minutesToFull = minutesToFull;
    return battery;
}

BatteryReading draining(std::optional<int> minutesToEmpty) {
    BatteryReading battery;
    battery.minutesToEmpty = minutesToEmpty;
    return battery;
}

TEST(MeterMathCpu, SharesAreOfTheTicksBetweenTwoCounts) {
    const auto usage = cpuUsage({100, 50, 1000, 10}, {115, 58, 1077, 10});
    ASSERT_TRUE(usage);
    EXPECT_DOUBLE_EQ(usage->user, 0.15);
    EXPECT_DOUBLE_EQ(usage->system, 0.08);
    EXPECT_DOUBLE_EQ(usage->total(), 0.23);
}

TEST(MeterMathCpu, NiceTimeIsTheUsers) {
    EXPECT_EQ(cpuUsage({0, 0, 0, 0}, {10, 20, 50, 20}), (CPUUsage{0.3, 0.2}));
}

TEST(MeterMathCpu, ReachesBothEnds) {
    EXPECT_EQ(cpuUsage({5, 5, 5, 5}, {5, 5, 6, 5}), (CPUUsage{0, 0}));
    EXPECT_EQ(cpuUsage({5, 5, 5, 5}, {5, 9, 5, 5}), (CPUUsage{0, 1}));
}

TEST(MeterMathCpu, WithoutATickBetweenThemThereIsNoFigure) {
    EXPECT_EQ(cpuUsage({1, 2, 3, 4}, {1, 2, 3, 4}), std::nullopt);
    EXPECT_EQ(cpuUsage({}, {}), std::nullopt);
}

TEST(MeterMathCpu, ACounterThatWentBackwardsGivesNoFigure) {
    const CPUTicks before{10, 10, 10, 10};
    EXPECT_EQ(cpuUsage(before, {9, 20, 20, 20}), std::nullopt);
    EXPECT_EQ(cpuUsage(before, {20, 9, 20, 20}), std::nullopt);
    EXPECT_EQ(cpuUsage(before, {20, 20, 9, 20}), std::nullopt);
    EXPECT_EQ(cpuUsage(before, {20, 20, 20, 9}), std::nullopt);
    EXPECT_EQ(cpuUsage({most, 0, 0, 0}, {3, 0, 0, 0}), std::nullopt);
}

TEST(MeterMathCpu, HugeDifferencesStayShares) {
    const auto usage = cpuUsage({}, {most, most, most, most});
    ASSERT_TRUE(usage);
    EXPECT_DOUBLE_EQ(usage->user, 0.5);
    EXPECT_DOUBLE_EQ(usage->total(), 0.75);
}

TEST(MeterMathMemory, CountsWhatCannotBeGivenUp) {
    EXPECT_EQ(memoryUsedBytes(100, 30, 20, 10, 4096), 100U * 4096);
    EXPECT_EQ(memoryUsedBytes(0, 0, 0, 0, 4096), 0U);
}

TEST(MeterMathMemory, MorePurgeableThanInternalCountsAsNone) {
    EXPECT_EQ(memoryUsedBytes(30, 100, 20, 10, 4096), 30U * 4096);
}

TEST(MeterMathMemory, BeyondSixtyFourBitsThereIsNoFigure) {
    EXPECT_EQ(memoryUsedBytes(most, 0, 1, 0, 1), std::nullopt);
    EXPECT_EQ(memoryUsedBytes(most, 0, 0, 1, 1), std::nullopt);
    EXPECT_EQ(memoryUsedBytes(most / 2, 0, 0, 0, 4096), std::nullopt);
    EXPECT_EQ(memoryUsedBytes(most, 0, 0, 0, 1), most);
}

TEST(MeterMathMemory, GigabytesAreBinaryWithADecimalWhereThereIsOne) {
    EXPECT_EQ(memoryGigabytes(std::uint64_t{1} << 33), "8");
    EXPECT_EQ(memoryGigabytes(gibibyte * 3 / 2), "1.5");
    EXPECT_EQ(memoryGigabytes(gibibyte * 15 / 2), "7.5");
    EXPECT_EQ(memoryGigabytes(gibibyte / 100 * 796), "8");
    EXPECT_EQ(memoryGigabytes(gibibyte * 16), "16");
    EXPECT_EQ(memoryGigabytes(0), "0");
    EXPECT_EQ(memoryGigabytes(gibibyte / 10), "0.1");
    EXPECT_EQ(memoryGigabytes(most), "17179869184");
}

TEST(MeterMathDisk, GigabytesAreDecimalAndWhole) {
    EXPECT_EQ(diskGigabytes(494'384'795'648), "494");
    EXPECT_EQ(diskGigabytes(1'500'000'000), "2");
    EXPECT_EQ(diskGigabytes(1'499'999'999), "1");
    EXPECT_EQ(diskGigabytes(0), "0");
    EXPECT_EQ(diskGigabytes(most), "18446744074");
}

TEST(MeterMathText, AShareReadsAsARoundedPercentage) {
    EXPECT_EQ(percent(0.0), "0%");
    EXPECT_EQ(percent(0.234), "23%");
    EXPECT_EQ(percent(0.235), "24%");
    EXPECT_EQ(percent(1.0), "100%");
    EXPECT_EQ(percent(1.02), "102%");
    EXPECT_EQ(percent(std::nullopt), "--");
}

TEST(MeterMathText, WhatIsNoShareIsNoFigure) {
    EXPECT_EQ(percent(-0.5), "--");
    EXPECT_EQ(percent(1e300), "--");
    EXPECT_EQ(percent(std::numeric_limits<double>::infinity()), "--");
    EXPECT_EQ(percent(std::nan("")), "--");
}

TEST(MeterMathText, TheProcessorsDetailHasBothShares) {
    EXPECT_EQ(cpuDetail(CPUUsage{0.15, 0.084}), "USER 15% · SYS 8%");
    EXPECT_EQ(cpuDetail(std::nullopt), "USER -- · SYS --");
}

TEST(MeterMathText, ABatteryTellsWhatItDoes) {
    EXPECT_EQ(batteryDetail(charging(95)), "CHARGING · 1:35 TO FULL");
    EXPECT_EQ(batteryDetail(charging(0)), "CHARGING · 0:00 TO FULL");
    EXPECT_EQ(batteryDetail(charging(605)), "CHARGING · 10:05 TO FULL");
    EXPECT_EQ(batteryDetail(charging(std::nullopt)), "CALCULATING…");
    EXPECT_EQ(batteryDetail(draining(252)), "4:12 LEFT");
    EXPECT_EQ(batteryDetail(draining(0)), "0:00 LEFT");
    EXPECT_EQ(batteryDetail(draining(std::nullopt)), "CALCULATING…");
    BatteryReading onPower = draining(10);
    onPower.onAC = true;
    EXPECT_EQ(batteryDetail(onPower), "ON POWER");
}

TEST(MeterMathText, ChargingComesBeforePowerAndEachStateHasItsOwnTime) {
    BatteryReading battery = charging(std::nullopt);
    battery.minutesToEmpty = 10;
    EXPECT_EQ(batteryDetail(battery), "CALCULATING…");
    BatteryReading other = draining(std::nullopt);
    other.minutesToFull = 10;
    EXPECT_EQ(batteryDetail(other), "CALCULATING…");
}

TEST(MeterMathText, ANegativeTimeIsNotKnown) {
    EXPECT_EQ(batteryDetail(charging(-1)), "CALCULATING…");
    EXPECT_EQ(batteryDetail(draining(std::numeric_limits<int>::min())), "CALCULATING…");
}

TEST(MeterMathReading, AFractionNeedsAWhole) {
    EXPECT_EQ(fraction(1, 4), 0.25);
    EXPECT_EQ(fraction(0, 4), 0.0);
    EXPECT_EQ(fraction(4, 0), std::nullopt);
    EXPECT_EQ(fraction(most, most), 1.0);
}

TEST(MeterMathReading, ABatteryStandsInForTheDisk) {
    EXPECT_EQ(secondReading(std::nullopt), MeterKind::disk);
    EXPECT_EQ(secondReading(BatteryReading()), MeterKind::battery);
}

TEST(MeterMathUrgent, ProcessorAndMemoryAreAboveNineTenths) {
    for (const MeterKind kind : {MeterKind::cpu, MeterKind::memory}) {
        EXPECT_FALSE(isUrgent(reading(kind, 0.9)));
        EXPECT_TRUE(isUrgent(reading(kind, 0.901)));
        EXPECT_TRUE(isUrgent(reading(kind, 0.95)));
        EXPECT_FALSE(isUrgent(reading(kind, 0)));
        EXPECT_FALSE(isUrgent(reading(kind, std::nullopt)));
        EXPECT_FALSE(isUrgent(reading(kind, std::nan(""))));
    }
}

TEST(MeterMathUrgent, ABatteryIsBelowATenthAndNotCharged) {
    EXPECT_FALSE(isUrgent(reading(MeterKind::battery, 0.1)));
    EXPECT_TRUE(isUrgent(reading(MeterKind::battery, 0.09)));
    EXPECT_FALSE(isUrgent(reading(MeterKind::battery, 0.09, true)));
    EXPECT_TRUE(isUrgent(reading(MeterKind::battery, 0)));
    EXPECT_FALSE(isUrgent(reading(MeterKind::battery, std::nullopt)));
    EXPECT_FALSE(isUrgent(reading(MeterKind::battery, 0.95)));
}

TEST(MeterMathUrgent, ADiskNeverIs) {
    EXPECT_FALSE(isUrgent(reading(MeterKind::disk, 0.99)));
    EXPECT_FALSE(isUrgent(reading(MeterKind::disk, 0.01)));
}

} // namespace
} // namespace veslora
