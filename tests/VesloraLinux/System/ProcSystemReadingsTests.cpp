// SPDX-License-Identifier: MIT
// The machine's counters: of a machine laid out by hand, and of the one that the tests run on.
#include "VesloraLinux/System/FileBeginning.h"
#include "VesloraLinux/System/ProcSystemReadings.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace veslora {
namespace {

using testing::TemporaryFolder;

class LaidOutMachine : public ::testing::Test {
  protected:
    LaidOutMachine() {
        std::filesystem::create_directories(root.path("proc"));
        std::filesystem::create_directories(root.path("sys/class/power_supply"));
    }
    /// A supply with files of that content.
    void putSupply(const std::string& name, const std::vector<std::pair<std::string, std::string>>& files) {
        const std::string folder = "sys/class/power_supply/" + name;
        std::filesystem::create_directories(root.path(folder));
        for (const auto& [file, content] : files) {
            root.put(folder + "/" + file, content);
        }
    }
    void putMemory(const std::string& meminfo) { root.put("proc/meminfo", meminfo); }

    TemporaryFolder root;
    ProcSystemReadings readings{root.path()};
};

TEST_F(LaidOutMachine, CountsTicks) {
    root.put("proc/stat", "cpu  1 2 3 4 5 6 7 8 0 0\ncpu0 1 2 3 4 5 6 7 8 0 0\n" + std::string(100'000, 'x'));
    EXPECT_EQ(readings.ticks(), (CPUTicks{1, 24, 9, 2}));
}

TEST_F(LaidOutMachine, KnowsItsMemory) {
    putMemory("MemTotal: 1000 kB\nMemFree: 200 kB\nMemAvailable: 500 kB\n");
    EXPECT_EQ(readings.physicalMemory(), 1'024'000U);
    EXPECT_EQ(readings.memoryPages(), (MemoryPages{800, 300, 0, 0, 1024}));
}

TEST_F(LaidOutMachine, SumsItsBatteriesAndPassesOverAMouse) {
    putSupply("AC", {{"type", "Mains\n"}, {"online", "0\n"}});
    putSupply("BAT0", {{"type", "Battery\n"},
                       {"status", "Discharging\n"},
                       {"energy_now", "10000000\n"},
                       {"energy_full", "40000000\n"},
                       {"power_now", "5000000\n"}});
    putSupply("BAT1", {{"type", "Battery\n"},
                       {"status", "Unknown\n"},
                       {"energy_now", "20000000\n"},
                       {"energy_full", "20000000\n"},
                       {"power_now", "0\n"}});
    putSupply("hidpp_battery_0",
              {{"type", "Battery\n"}, {"scope", "Device\n"}, {"status", "Full\n"}, {"capacity", "5\n"}});
    EXPECT_EQ(readings.battery(), (BatteryReading{0.5, false, false, std::nullopt, 360}));
}

TEST_F(LaidOutMachine, LooksAtASupplyThroughALinkAsTheKernelMakesThem) {
    std::filesystem::create_directories(root.path("sys/devices/BAT0"));
    root.put("sys/devices/BAT0/type", "Battery\n");
    root.put("sys/devices/BAT0/capacity", "42\n");
    std::filesystem::create_symlink("../../devices/BAT0", root.path("sys/class/power_supply/BAT0"));
    EXPECT_EQ(readings.battery()->percent, 0.42);
}

TEST_F(LaidOutMachine, ABatteryThatIsTakenOutIsGone) {
    putSupply("BAT0", {{"type", "Battery\n"}, {"capacity", "42\n"}});
    EXPECT_TRUE(readings.battery());
    std::filesystem::remove_all(root.path("sys/class/power_supply/BAT0"));
    EXPECT_EQ(readings.battery(), std::nullopt);
}

TEST_F(LaidOutMachine, WhatIsMissingGivesNothing) {
    std::filesystem::remove_all(root.path("proc"));
    std::filesystem::remove_all(root.path("sys"));
    EXPECT_EQ(readings.ticks(), std::nullopt);
    EXPECT_EQ(readings.physicalMemory(), std::nullopt);
    EXPECT_EQ(readings.memoryPages(), std::nullopt);
    EXPECT_EQ(readings.battery(), std::nullopt);
    std::filesystem::remove_all(root.path());
    EXPECT_EQ(readings.disk(), std::nullopt);
}

TEST_F(LaidOutMachine, HalfWrittenHugeAndSenselessFilesGiveNothing) {
    for (const std::string& content :
         {std::string(), std::string("cpu  1 2 3 4 5"), std::string("MemTotal: 100 kB\nMemFree: 5"),
          std::string(5'000'000, '7'), std::string("\0\xff\xfe", 3), std::string("Battery")}) {
        root.put("proc/stat", content);
        putMemory(content);
        putSupply("BAT0", {{"type", content}, {"capacity", content}});
        EXPECT_EQ(readings.ticks(), std::nullopt);
        EXPECT_EQ(readings.memoryPages(), std::nullopt);
        EXPECT_EQ(readings.battery(), std::nullopt);
    }
    putSupply("BAT0", {{"type", "Battery\n"}, {"capacity", std::string(5'000'000, '1') + "\n"}});
    EXPECT_EQ(readings.battery(), std::nullopt);
}

TEST_F(LaidOutMachine, NeverWaitsForAPipeAndReadsNoFolder) {
    ASSERT_EQ(mkfifo(root.path("proc/stat").c_str(), 0600), 0);
    std::filesystem::create_directories(root.path("proc/meminfo"));
    EXPECT_EQ(readings.ticks(), std::nullopt);
    EXPECT_EQ(readings.memoryPages(), std::nullopt);
}

TEST_F(LaidOutMachine, OfVeryManySuppliesSomeAreLookedAt) {
    for (int i = 0; i < 200; ++i) {
        putSupply("BAT" + std::to_string(i), {{"type", "Battery\n"}, {"capacity", "42\n"}});
    }
    EXPECT_NEAR(readings.battery()->percent, 0.42, 1e-9);
}

TEST(ProcSystemReadingsTests, ReadThisMachine) {
    ProcSystemReadings machine;
    const auto ticks = machine.ticks();
    ASSERT_TRUE(ticks);
    EXPECT_GT(ticks->idle + ticks->user, 0U);
    const auto total = machine.physicalMemory();
    ASSERT_TRUE(total);
    EXPECT_EQ(*total, static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
                          static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE)));
    const auto pages = machine.memoryPages();
    ASSERT_TRUE(pages);
    const auto used = MeterMath::memoryUsedBytes(pages->internalPages, pages->purgeablePages,
                                                 pages->wiredPages, pages->compressedPages, pages->pageSize);
    ASSERT_TRUE(used);
    EXPECT_GT(*used, 0U);
    EXPECT_LT(*used, *total);
    const auto disk = machine.disk();
    ASSERT_TRUE(disk);
    EXPECT_GT(disk->total, 0U);
    EXPECT_LE(disk->available, disk->total);
}

TEST(FileBeginningTests, ReadsUpToItsCap) {
    const TemporaryFolder folder;
    folder.put("long", std::string(10'000, 'a') + "end");
    EXPECT_EQ(fileBeginning(folder.path("long"), 3), "aaa");
    EXPECT_EQ(fileBeginning(folder.path("long"), 5'000).size(), 5'000U);
    EXPECT_TRUE(fileBeginning(folder.path("long"), 1 << 20).ends_with("aend"));
    EXPECT_EQ(fileBeginning(folder.path("none"), 10), "");
    EXPECT_EQ(fileBeginning(folder.path(), 10), "");
}

} // namespace
} // namespace veslora
