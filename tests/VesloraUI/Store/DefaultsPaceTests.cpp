// SPDX-License-Identifier: MIT
// When the settings store writes: at once, and then not again so soon, whatever a dragged slider asks for.
#include "VesloraUI/Store/Defaults.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>

#include <memory>

namespace veslora {
namespace {

const std::string directory = "/home/user/.config/Veslora";
const std::string path = directory + "/settings.json";

class DefaultsPaceTests : public testing::Test {
  protected:
    DefaultsPaceTests() { store->paceWrites(scheduler); }

    /// As a slider does.
    void drag() {
        for (int step = 1; step <= 100; ++step) {
            store->set("volume", step);
            scheduler.advance(0.004);
        }
    }
    /// What a program that starts now would read.
    [[nodiscard]] int freshVolume() { return Defaults(files, watcher, directory).integerValue("volume"); }

    MemoryFiles memory;
    FaultInjectingFiles files{memory};
    FakeDirectoryWatcher watcher;
    ManualScheduler scheduler;
    std::unique_ptr<Defaults> store = std::make_unique<Defaults>(files, watcher, directory);
};

TEST_F(DefaultsPaceTests, ASingleChangeIsWrittenAtOnce) {
    store->set("volume", 5);
    EXPECT_EQ(freshVolume(), 5);
    scheduler.advance(10);
    EXPECT_EQ(memory.writes(), 1);
    store->set("volume", 6);
    EXPECT_EQ(freshVolume(), 6) << "the last one was long ago";
}

TEST_F(DefaultsPaceTests, ADraggedSliderCostsTwoWritesAndIsReadAndToldAtOnce) {
    int changes = 0;
    QObject::connect(store.get(), &Defaults::changed, [&] { ++changes; });
    drag();
    EXPECT_EQ(store->integerValue("volume"), 100);
    EXPECT_EQ(changes, 100);
    EXPECT_EQ(memory.writes(), 1);
    scheduler.advance(Defaults::pace);
    EXPECT_EQ(freshVolume(), 100);
    EXPECT_EQ(memory.writes(), 2);
    scheduler.advance(10);
    EXPECT_EQ(memory.writes(), 2) << "nothing waits any more";
    EXPECT_EQ(changes, 100);
}

TEST_F(DefaultsPaceTests, WhatWaitsIsWrittenAtTheEnd) {
    drag();
    store.reset();
    EXPECT_EQ(freshVolume(), 100);
}

TEST_F(DefaultsPaceTests, WhatAnotherProgramWritesMeanwhileIsKeptAndTold) {
    drag();
    memory.put(path, R"({"volume": 3, "word": "amber"})");
    int changes = 0;
    QObject::connect(store.get(), &Defaults::changed, [&] { ++changes; });
    scheduler.advance(Defaults::pace);
    EXPECT_EQ(store->stringValue("word"), "amber");
    EXPECT_EQ(changes, 1);
    const Defaults fresh(files, watcher, directory);
    EXPECT_EQ(fresh.stringValue("word"), "amber");
    EXPECT_EQ(fresh.integerValue("volume"), 100);
}

TEST_F(DefaultsPaceTests, WhatAnotherProgramWritesBeforeTheEndIsKept) {
    drag();
    memory.put(path, R"({"word": "amber"})");
    store.reset();
    EXPECT_EQ(Defaults(files, watcher, directory).stringValue("word"), "amber");
    EXPECT_EQ(freshVolume(), 100);
}

TEST_F(DefaultsPaceTests, ADiskThatRefusesIsAskedOnceAndByTheNextChange) {
    drag();
    files.writeError = std::errc::no_space_on_device;
    scheduler.advance(10);
    EXPECT_EQ(store->integerValue("volume"), 100);
    files.writeError.reset();
    scheduler.advance(10);
    EXPECT_EQ(freshVolume(), 1);
    store->set("word", "lime");
    EXPECT_EQ(freshVolume(), 100);
}

} // namespace
} // namespace veslora
