// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Defaults.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <span>
#include <utility>
#include <vector>

using namespace veslora;

namespace {

const std::string directory = "/home/user/.config/Veslora";
const std::string path = directory + "/settings.json";

/// A store, and how often it told of a change.
class Store {
  public:
    Store(Files& files, DirectoryWatcher& watcher, const std::string& suite = {})
        : defaults(files, watcher, directory, suite) {
        defaults.registerDefaults({{"flag", true}, {"share", 0.5}, {"count", 7}, {"word", "lime"}});
        QObject::connect(&defaults, &Defaults::changed, [this] { ++changes; });
    }

    Defaults defaults;
    int changes = 0;
};

class DefaultsTest : public testing::Test {
  protected:
    MemoryFiles memory;
    FaultInjectingFiles files{memory};
    FakeDirectoryWatcher watcher;

    /// Another program replaces the file.
    void replaceFile(const std::string& text) {
        memory.put(path, text);
        watcher.fire(directory);
    }
    /// What a program that starts now would read.
    [[nodiscard]] std::optional<std::string> freshWord() {
        return Store(files, watcher).defaults.stringValue("word");
    }
};

} // namespace

TEST_F(DefaultsTest, FreshStoreReadsItsDefaultsAndWritesNothing) {
    const Store store(files, watcher);
    EXPECT_TRUE(store.defaults.boolValue("flag"));
    EXPECT_EQ(store.defaults.doubleValue("share"), 0.5);
    EXPECT_EQ(store.defaults.integerValue("count"), 7);
    EXPECT_EQ(store.defaults.stringValue("word"), "lime");
    EXPECT_FALSE(memory.exists(path));
    EXPECT_EQ(memory.writes(), 0);
}

TEST_F(DefaultsTest, UnregisteredKeysReadAsNothing) {
    const Store store(files, watcher);
    EXPECT_FALSE(store.defaults.boolValue("other"));
    EXPECT_EQ(store.defaults.doubleValue("other"), 0);
    EXPECT_EQ(store.defaults.integerValue("other"), 0);
    EXPECT_EQ(store.defaults.stringValue("other"), std::nullopt);
}

TEST_F(DefaultsTest, MakesItsDirectoryForOurUserAlone) {
    const Store store(files, watcher);
    EXPECT_EQ(memory.stat(directory, Links::refuse)->mode, 0700U);
}

TEST_F(DefaultsTest, WrittenValuesAreReadAtOnceAndByTheNextProgram) {
    Store store(files, watcher);
    store.defaults.set("flag", false);
    store.defaults.set("share", 0.1);
    store.defaults.set("count", -3);
    store.defaults.set("word", "amber");
    const Store next(files, watcher);
    for (const Defaults* defaults : {&std::as_const(store.defaults), &next.defaults}) {
        EXPECT_FALSE(defaults->boolValue("flag"));
        EXPECT_EQ(defaults->doubleValue("share"), 0.1);
        EXPECT_EQ(defaults->integerValue("count"), -3);
        EXPECT_EQ(defaults->stringValue("word"), "amber");
    }
}

TEST_F(DefaultsTest, EveryWriteIsToldOnce) {
    Store store(files, watcher);
    store.defaults.set("flag", false);
    EXPECT_EQ(store.changes, 1);
    store.defaults.set("word", std::string("amber"));
    EXPECT_EQ(store.changes, 2);
}

TEST_F(DefaultsTest, EqualValueIsNeitherToldNorWritten) {
    Store store(files, watcher);
    store.defaults.set("flag", true);
    store.defaults.set("share", 0.5);
    store.defaults.set("count", 7);
    store.defaults.set("word", "lime");
    EXPECT_EQ(store.changes, 0);
    EXPECT_FALSE(memory.exists(path)) << "A default written out could never change again.";
    store.defaults.set("flag", false);
    store.defaults.set("flag", false);
    EXPECT_EQ(store.changes, 1);
    EXPECT_EQ(memory.writes(), 1);
}

TEST_F(DefaultsTest, UserMayGoBackToTheDefault) {
    Store store(files, watcher);
    store.defaults.set("flag", false);
    store.defaults.set("flag", true);
    EXPECT_TRUE(store.defaults.boolValue("flag"));
    EXPECT_EQ(store.changes, 2);
}

TEST_F(DefaultsTest, FileIsReadableByPeopleAndByOurUserAlone) {
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    store.defaults.set("share", 0.1);
    EXPECT_EQ(memory.text(path), "{\n  \"share\" : 0.1,\n  \"word\" : \"amber\"\n}\n");
    EXPECT_EQ(memory.stat(path, Links::refuse)->mode, 0600U);
    EXPECT_EQ(memory.syncedWrites(), 2);
}

TEST_F(DefaultsTest, OpenFileIsClosedToOthersByTheNextWrite) {
    memory.put(path, "{}", 0644);
    Store store(files, watcher);
    store.defaults.set("flag", false);
    EXPECT_EQ(memory.stat(path, Links::refuse)->mode, 0600U);
}

TEST_F(DefaultsTest, ValueOfAnotherTypeFallsBackAndIsNotRewritten) {
    memory.put(path, R"({"flag": "yes", "share": true, "count": [1], "word": 5, "other": null})");
    Store store(files, watcher);
    EXPECT_TRUE(store.defaults.boolValue("flag"));
    EXPECT_EQ(store.defaults.doubleValue("share"), 0.5);
    EXPECT_EQ(store.defaults.integerValue("count"), 7);
    EXPECT_EQ(store.defaults.stringValue("word"), "lime");
    store.defaults.set("extra", 1);
    const auto written = Json::parse(*memory.text(path));
    EXPECT_EQ(*written->stringAt("flag"), "yes");
    EXPECT_EQ(written->find("word")->integer(), 5);
}

TEST_F(DefaultsTest, NumbersBeyondTheirTypeFallBack) {
    memory.put(path, R"({"share": 1e999, "count": 99999999999})");
    const Store store(files, watcher);
    EXPECT_EQ(store.defaults.doubleValue("share"), 0.5);
    EXPECT_EQ(store.defaults.integerValue("count"), 7);
}

TEST_F(DefaultsTest, WholeNumbersServeAsFractionsAndFractionsAreCut) {
    memory.put(path, R"({"share": 60, "count": 120.9})");
    const Store store(files, watcher);
    EXPECT_EQ(store.defaults.doubleValue("share"), 60);
    EXPECT_EQ(store.defaults.integerValue("count"), 120);
}

TEST_F(DefaultsTest, KeysThatNobodyKnowsStayAsTheyAre) {
    memory.put(path, R"({"later": {"deep": [1.0, 123456789012345678901234567890]}, "word": "amber"})");
    Store store(files, watcher);
    store.defaults.set("word", "cyan");
    const auto written = Json::parse(*memory.text(path));
    EXPECT_EQ(written->find("later")->print(Json::Layout::compact),
              R"({"deep":[1.0,123456789012345678901234567890]})");
    EXPECT_EQ(*written->stringAt("word"), "cyan");
}

TEST_F(DefaultsTest, NumberThatIsNotFiniteIsIgnored) {
    Store store(files, watcher);
    store.defaults.set("share", std::numeric_limits<double>::quiet_NaN());
    store.defaults.set("share", std::numeric_limits<double>::infinity());
    EXPECT_EQ(store.defaults.doubleValue("share"), 0.5);
    EXPECT_EQ(store.changes, 0);
    EXPECT_FALSE(memory.exists(path));
}

TEST_F(DefaultsTest, NumbersComeBackExactly) {
    Store store(files, watcher);
    for (const double number : {0.1 + 0.2, 1.0 / 3, 60.0, -0.0, 1e-300, std::numeric_limits<double>::max()}) {
        store.defaults.set("number", number);
        EXPECT_EQ(Store(files, watcher).defaults.doubleValue("number"), number);
    }
}

TEST_F(DefaultsTest, PrivateSuiteLeavesTheStandardStoreAlone) {
    Store standard(files, watcher);
    standard.defaults.set("word", "amber");
    Store preview(files, watcher, "Preview");
    EXPECT_EQ(preview.defaults.stringValue("word"), "lime");
    preview.defaults.set("word", "None");
    EXPECT_EQ(standard.defaults.stringValue("word"), "amber");
    watcher.fire(directory);
    EXPECT_EQ(standard.defaults.stringValue("word"), "amber");
    EXPECT_EQ(standard.changes, 1);
    EXPECT_TRUE(memory.exists(directory + "/settings.Preview.json"));
}

TEST_F(DefaultsTest, TakesOverWhatAnotherProgramWrites) {
    Store store(files, watcher);
    replaceFile(R"({"word": "cyan"})");
    EXPECT_EQ(store.changes, 1);
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan");
}

TEST_F(DefaultsTest, OwnWriteDoesNotEcho) {
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    watcher.fire(directory);
    watcher.fire(directory, DirectoryChanges::any);
    EXPECT_EQ(store.changes, 1);
}

TEST_F(DefaultsTest, FileWrittenAgainWithTheSameValuesIsNoChange) {
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    replaceFile(R"({"word":"amber"})");
    EXPECT_EQ(store.changes, 1);
}

TEST_F(DefaultsTest, RemovedFileBringsTheDefaultsBack) {
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    memory.remove(path);
    watcher.fire(directory, DirectoryChanges::any);
    EXPECT_EQ(store.changes, 2);
    EXPECT_EQ(store.defaults.stringValue("word"), "lime");
}

TEST_F(DefaultsTest, WriteKeepsWhatAnotherProgramWroteUnnoticed) {
    Store store(files, watcher);
    memory.put(path, R"({"word": "cyan"})");
    store.defaults.set("flag", false);
    EXPECT_EQ(store.changes, 1);
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan");
    EXPECT_EQ(freshWord(), "cyan");
}

TEST_F(DefaultsTest, EqualWriteStillTellsWhatAnotherProgramWroteUnnoticed) {
    Store store(files, watcher);
    memory.put(path, R"({"word": "cyan"})");
    store.defaults.set("word", "cyan");
    EXPECT_EQ(store.changes, 1);
    EXPECT_EQ(memory.writes(), 0);
}

TEST_F(DefaultsTest, DamagedFileIsKeptBeforeTheFirstWrite) {
    memory.put(path, "{\"word\": \"amber\",");
    Store store(files, watcher);
    EXPECT_EQ(store.defaults.stringValue("word"), "lime");
    EXPECT_FALSE(memory.exists(path + ".damaged")) << "Reading writes nothing.";
    store.defaults.set("flag", false);
    EXPECT_EQ(memory.text(path + ".damaged"), "{\"word\": \"amber\",");
    EXPECT_EQ(memory.stat(path + ".damaged", Links::refuse)->mode, 0600U);
    EXPECT_EQ(memory.text(path), "{\n  \"flag\" : false\n}\n");
    store.defaults.set("flag", true);
    EXPECT_EQ(memory.text(path + ".damaged"), "{\"word\": \"amber\",") << "Only what was damaged is kept.";
}

TEST_F(DefaultsTest, FileThatDamagesLaterLeavesTheLastGoodValues) {
    memory.put(path, R"({"word": "amber"})");
    Store store(files, watcher);
    for (const char* damaged : {"", "{\"word\":", "[1, 2]", "42", "\xff\xfe"}) {
        replaceFile(damaged);
        EXPECT_EQ(store.defaults.stringValue("word"), "amber") << damaged;
    }
    EXPECT_EQ(store.changes, 0);
    replaceFile(R"({"word": "cyan"})");
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan");
    EXPECT_FALSE(memory.exists(path + ".damaged"));
}

TEST_F(DefaultsTest, WriteAfterDamageKeepsTheLastGoodValues) {
    memory.put(path, R"({"word": "amber"})");
    Store store(files, watcher);
    replaceFile("{\"word\":");
    store.defaults.set("flag", false);
    EXPECT_EQ(freshWord(), "amber");
    EXPECT_EQ(memory.text(path + ".damaged"), "{\"word\":");
}

TEST_F(DefaultsTest, EmptiedFileDoesNotPushOutADamagedOneThatWasKept) {
    memory.put(path, "{oops");
    Store store(files, watcher);
    store.defaults.set("flag", false);
    replaceFile("");
    store.defaults.set("flag", true);
    EXPECT_EQ(memory.text(path + ".damaged"), "{oops");
    EXPECT_TRUE(Store(files, watcher).defaults.boolValue("flag"));
}

TEST_F(DefaultsTest, DamagedFileThatCannotBeKeptIsNotReplaced) {
    memory.put(path, "{oops");
    ASSERT_FALSE(memory.makeDirectory(path + ".damaged", 0700));
    Store store(files, watcher);
    store.defaults.set("flag", false);
    EXPECT_EQ(memory.text(path), "{oops");
    EXPECT_FALSE(store.defaults.boolValue("flag"));
    EXPECT_EQ(store.changes, 1);
}

TEST_F(DefaultsTest, FullDiskLeavesTheFileAndHoldsTheValue) {
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    files.writeError = std::errc::no_space_on_device;
    store.defaults.set("word", "cyan");
    EXPECT_EQ(store.changes, 2);
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan");
    EXPECT_EQ(freshWord(), "amber");
    watcher.fire(directory);
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan") << "The old file says nothing new.";
    files.writeError.reset();
    store.defaults.set("flag", false);
    EXPECT_EQ(freshWord(), "cyan");
}

TEST_F(DefaultsTest, ValueThatCouldNotBeWrittenOutlivesWhatAnotherProgramWrites) {
    Store store(files, watcher);
    files.writeError = std::errc::io_error;
    store.defaults.set("word", "amber");
    replaceFile(R"({"word": "cyan", "count": 9})");
    EXPECT_EQ(store.defaults.stringValue("word"), "amber");
    EXPECT_EQ(store.defaults.integerValue("count"), 9);
    files.writeError.reset();
    store.defaults.set("flag", false);
    EXPECT_EQ(freshWord(), "amber");
    replaceFile(R"({"word": "cyan"})");
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan") << "Once written, it is a value like any other.";
}

TEST_F(DefaultsTest, FileThatCannotBeReadIsNotReplaced) {
    memory.put(path, R"({"word": "amber"})");
    files.readError = std::errc::io_error;
    Store store(files, watcher);
    store.defaults.set("flag", false);
    EXPECT_FALSE(store.defaults.boolValue("flag"));
    EXPECT_EQ(memory.text(path), R"({"word": "amber"})");
    files.readError.reset();
    store.defaults.set("share", 0.75);
    EXPECT_EQ(freshWord(), "amber") << "Once it can be read, its values count.";
    EXPECT_EQ(Store(files, watcher).defaults.doubleValue("share"), 0.75);
    EXPECT_FALSE(Store(files, watcher).defaults.boolValue("flag"))
        << "What could not be written then is not lost.";
}

TEST_F(DefaultsTest, HalfReadFileLeavesTheLastGoodValues) {
    memory.put(path, R"({"word": "amber"})");
    Store store(files, watcher);
    memory.put(path, R"({"word": "cyan!"})");
    files.readLimit = 10;
    watcher.fire(directory);
    EXPECT_EQ(store.defaults.stringValue("word"), "amber");
    files.readLimit.reset();
    watcher.fire(directory);
    EXPECT_EQ(store.defaults.stringValue("word"), "cyan!");
}

TEST_F(DefaultsTest, EveryFailingStepLeavesAReadableFile) {
    for (int step = 1; step <= 12; ++step) {
        MemoryFiles fresh;
        fresh.put(path, R"({"word": "amber"})");
        FaultInjectingFiles faulty(fresh);
        faulty.failOperation(step, std::errc::io_error);
        Store store(faulty, watcher);
        store.defaults.set("flag", false);
        store.defaults.set("share", 0.75);
        EXPECT_EQ(store.defaults.doubleValue("share"), 0.75) << step;
        EXPECT_EQ(Store(fresh, watcher).defaults.stringValue("word"), "amber") << step;
    }
}

TEST_F(DefaultsTest, LinkedFileStaysALink) {
    memory.put("/home/user/dotfiles/veslora.json", R"({"word": "amber"})");
    ASSERT_FALSE(memory.makeDirectory(directory, 0700));
    ASSERT_FALSE(memory.makeLink("/home/user/dotfiles/veslora.json", path));
    Store store(files, watcher);
    EXPECT_EQ(store.defaults.stringValue("word"), "amber");
    store.defaults.set("word", "cyan");
    EXPECT_TRUE(memory.stat(path, Links::refuse)->isLink);
    EXPECT_EQ(memory.text("/home/user/dotfiles/veslora.json"), "{\n  \"word\" : \"cyan\"\n}\n");
}

TEST_F(DefaultsTest, DirectoryThatVanishedIsMadeAndWatchedAgain) {
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    memory = MemoryFiles();
    watcher.end(directory);
    EXPECT_EQ(store.defaults.stringValue("word"), "lime");
    EXPECT_EQ(watcher.count(directory), 0U);
    store.defaults.set("word", "cyan");
    EXPECT_EQ(freshWord(), "cyan");
    replaceFile(R"({"word": "white"})");
    EXPECT_EQ(store.defaults.stringValue("word"), "white");
}

TEST_F(DefaultsTest, WorksWithoutAnyWatch) {
    watcher.refused.insert(directory);
    Store store(files, watcher);
    store.defaults.set("word", "amber");
    EXPECT_EQ(freshWord(), "amber");
}

TEST_F(DefaultsTest, ObserverMayWriteInItsTurn) {
    Store store(files, watcher);
    QObject::connect(&store.defaults, &Defaults::changed, [&] { store.defaults.set("count", 8); });
    store.defaults.set("word", "amber");
    EXPECT_EQ(store.defaults.integerValue("count"), 8);
    EXPECT_EQ(store.changes, 2);
    EXPECT_EQ(Store(files, watcher).defaults.integerValue("count"), 8);
}

TEST_F(DefaultsTest, ManyChangesAreOneWriteAndOneSignal) {
    Store store(files, watcher);
    const int before = memory.writes();
    store.defaults.set(std::vector<Defaults::Change>{{"flag", false}, {"share", 0.25}, {"word", "cyan"}});
    EXPECT_EQ(memory.writes(), before + 1);
    EXPECT_EQ(store.changes, 1);
    EXPECT_FALSE(store.defaults.boolValue("flag"));
    EXPECT_EQ(freshWord(), "cyan");
    store.defaults.set(std::vector<Defaults::Change>{{"flag", false}, {"word", "cyan"}});
    store.defaults.set(std::span<const Defaults::Change>());
    EXPECT_EQ(memory.writes(), before + 1) << "all of it is so already";
    EXPECT_EQ(store.changes, 1);
}

TEST_F(DefaultsTest, WhatIsNotOnTheDiskIsTold) {
    Store store(files, watcher);
    EXPECT_FALSE(store.defaults.writeNow());
    files.writeError = std::errc::no_space_on_device;
    store.defaults.set("word", "cyan");
    EXPECT_EQ(store.defaults.writeNow(), std::errc::no_space_on_device);
    files.writeError.reset();
    EXPECT_FALSE(store.defaults.writeNow());
    EXPECT_EQ(freshWord(), "cyan");
    files.readError = std::errc::io_error;
    store.defaults.set("word", "amber");
    EXPECT_EQ(store.defaults.writeNow(), std::errc::io_error) << "what can't be read is not replaced";
    files.readError.reset();
    EXPECT_EQ(freshWord(), "cyan");
}

TEST_F(DefaultsTest, OneForALookMakesNothingAndFollowsNothing) {
    {
        Defaults look(files, directory);
        look.registerDefaults({{"word", "lime"}});
        EXPECT_EQ(std::get<std::string>(look.value("word")), "lime");
    }
    EXPECT_FALSE(memory.exists(directory));
    memory.put(path, R"({"word": "cyan", "other": 1})");
    Defaults look(files, directory);
    look.registerDefaults({{"word", "lime"}});
    EXPECT_EQ(std::get<std::string>(look.value("word")), "cyan");
    EXPECT_TRUE(watcher.watched().empty());
    look.set("word", "amber");
    EXPECT_FALSE(look.writeNow());
    EXPECT_EQ(freshWord(), "amber");
    EXPECT_NE(memory.text(path)->find("other"), std::string::npos) << "keys of others stay";
}
