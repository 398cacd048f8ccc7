// SPDX-License-Identifier: MIT
#include "VesloraCore/System/ProcText.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

#include <string>

namespace veslora {
namespace {

using namespace ProcText;

constexpr std::uint64_t kibibyte = 1024;

std::optional<std::uint64_t> usedKibibytes(const std::string& meminfo) {
    const auto pages = memoryPages(meminfo);
    const auto bytes =
        pages ? MeterMath::memoryUsedBytes(pages->internalPages, pages->purgeablePages, pages->wiredPages,
                                           pages->compressedPages, pages->pageSize)
              : std::nullopt;
    return bytes ? std::optional(*bytes / kibibyte) : std::nullopt;
}

TEST(ProcTextCpu, WaitingIsIdleAndInterruptsAndStolenTimeAreTheSystems) {
    EXPECT_EQ(cpuTicks("cpu  1 20 300 4000 50000 600000 7000000 80000000 9 9\ncpu0 1 1\n"),
              (CPUTicks{1, 87600300, 54000, 20}));
}

TEST(ProcTextCpu, GuestsAreNotCountedTwice) {
    // The kernel has counted them as user and nice time already.
    EXPECT_EQ(cpuTicks("cpu  500 40 0 100 0 0 0 0 500 40\n"), (CPUTicks{500, 0, 100, 40}));
}

TEST(ProcTextCpu, OldKernelsTellLess) {
    EXPECT_EQ(cpuTicks("cpu  1 2 3 4\n"), (CPUTicks{1, 3, 4, 2}));
    EXPECT_EQ(cpuTicks("cpu  1 2 3 4 5\n"), (CPUTicks{1, 3, 9, 2}));
}

TEST(ProcTextCpu, ReadsWhatAKernelWrote) {
    const auto ticks = cpuTicks(test::dataFile("system/stat"));
    ASSERT_TRUE(ticks);
    EXPECT_GT(ticks->idle, ticks->system);
    EXPECT_GT(ticks->user, 0U);
}

TEST(ProcTextCpu, OtherTextGivesNothing) {
    for (const char* text :
         {"", "\n", "cpu", "cpu\n", "cpu  1 2 3\n", "cpu0 1 2 3 4 5 6 7 8\n", "intr 1 2 3 4\n",
          "cpu  1 2 3 4 5 6 7", "cpu  1 2 3 x\n", "cpu  1 2 3 4x 5\n", "cpu  -1 2 3 4 5\n",
          "cpu  1 2 3 18446744073709551616 5 6 7 8\n", "\ncpu  1 2 3 4\n"}) {
        EXPECT_EQ(cpuTicks(text), std::nullopt) << text;
    }
}

TEST(ProcTextCpu, SumsBeyondSixtyFourBitsGiveNothing) {
    EXPECT_EQ(cpuTicks("cpu  1 2 3 18446744073709551615 1\n"), std::nullopt);
    EXPECT_EQ(cpuTicks("cpu  1 2 18446744073709551615 4 5 1 0 0\n"), std::nullopt);
    EXPECT_TRUE(cpuTicks("cpu  18446744073709551615 2 3 18446744073709551615\n"));
}

// Beside each captured file lies what free(1) called used at that moment.
TEST(ProcTextMemory, AgreesWithFree) {
    for (const std::string name : {"system/idle", "system/busy"}) {
        const double expected = std::stod(test::dataFile(name + ".free"));
        const auto used = usedKibibytes(test::dataFile(name + ".meminfo"));
        ASSERT_TRUE(used) << name;
        EXPECT_NEAR(static_cast<double>(*used), expected, expected * 0.01) << name;
    }
}

TEST(ProcTextMemory, EveryPartHasItsPlace) {
    const auto pages = memoryPages("MemTotal: 1000 kB\nMemFree: 200 kB\nMemAvailable: 500 kB\n"
                                   "Zswap: 40 kB\nSUnreclaim: 10 kB\nKernelStack: 20 kB\nPageTables: 30 kB\n"
                                   "Percpu: 5 kB\nHugetlb: 100 kB\n");
    EXPECT_EQ(pages, (MemoryPages{800 - 165 - 40, 300, 165, 40, kibibyte}));
}

TEST(ProcTextMemory, WhatTheKernelKeepsFreeForItselfIsTaken) {
    EXPECT_EQ(usedKibibytes("MemTotal: 1000 kB\nMemFree: 900 kB\nMemAvailable: 850 kB\n"), 150U);
}

TEST(ProcTextMemory, WithoutAnAvailableFigureTheCacheIsCounted) {
    const std::string cache =
        "Buffers: 50 kB\nCached: 300 kB\nSwapCached: 7 kB\nSReclaimable: 30 kB\nShmem: 80 kB\n";
    EXPECT_EQ(usedKibibytes("MemTotal: 1000 kB\nMemFree: 200 kB\n" + cache), 500U);
    // A figure beyond all memory is another machine's.
    EXPECT_EQ(usedKibibytes("MemTotal: 1000 kB\nMemFree: 200 kB\nMemAvailable: 1001 kB\n" + cache), 500U);
    EXPECT_EQ(usedKibibytes("MemTotal: 1000 kB\nMemFree: 200 kB\nShmem: 80 kB\n"), 800U);
}

TEST(ProcTextMemory, PartsAreHeldToTheWhole) {
    EXPECT_EQ(usedKibibytes("MemTotal: 1000 kB\nMemFree: 200 kB\nMemAvailable: 200 kB\n"
                            "SUnreclaim: 18446744073709551615 kB\nPageTables: 18446744073709551615 kB\n"
                            "Zswap: 18446744073709551615 kB\n"),
              800U);
}

TEST(ProcTextMemory, TheTotalIsInBytes) {
    EXPECT_EQ(memoryTotal("MemTotal:       24684084 kB\n"), 24684084U * kibibyte);
    EXPECT_EQ(memoryTotal(test::dataFile("system/idle.meminfo")), 24684084U * kibibyte);
}

TEST(ProcTextMemory, OtherTextGivesNothing) {
    for (const char* text :
         {"", "\n", "MemTotal:", "MemTotal:\n", "MemTotal: 1000\nMemFree: 1\n",
          "MemTotal: 10 MB\nMemFree: 1 MB\n", "MemTotal: x kB\nMemFree: 1 kB\n",
          "MemTotal: -5 kB\nMemFree: -6 kB\n", "MemTotal: 18446744073709551616 kB\nMemFree: 1 kB\n"}) {
        EXPECT_EQ(memoryPages(text), std::nullopt) << text;
        EXPECT_EQ(memoryTotal(text), std::nullopt) << text;
    }
    EXPECT_EQ(memoryTotal("MemTotal: 18446744073709551615 kB\n"), std::nullopt);
    EXPECT_EQ(memoryPages("MemTotal: 1000 kB\n"), std::nullopt);
    EXPECT_EQ(memoryPages("MemTotal: 1000 kB\nMemFree: 100 kB"), std::nullopt) << "half-written";
    EXPECT_EQ(memoryPages("MemTotal: 1000 kB\nMemFree: 1001 kB\n"), std::nullopt);
}

TEST(ProcTextMemory, AHugeMachineHasNoFigureRatherThanAWrongOne) {
    EXPECT_EQ(usedKibibytes("MemTotal: 18446744073709551615 kB\nMemFree: 0 kB\n"), std::nullopt);
}

} // namespace
} // namespace veslora
