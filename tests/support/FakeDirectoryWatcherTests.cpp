// SPDX-License-Identifier: MIT
#include "tests/support/FakeDirectoryWatcher.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

class FakeDirectoryWatcherTest : public testing::Test {
  protected:
    FakeDirectoryWatcher watcher;
    int moves = 0;
    int anything = 0;

    std::unique_ptr<DirectoryWatch> watchMoves(const std::string& directory) {
        return watcher.watch(directory, DirectoryChanges::movedInto, [this] { ++moves; });
    }
    std::unique_ptr<DirectoryWatch> watchAll(const std::string& directory) {
        return watcher.watch(directory, DirectoryChanges::any, [this] { ++anything; });
    }
};

} // namespace

TEST_F(FakeDirectoryWatcherTest, TellsEachWatchOfTheDirectoryWhatItAskedFor) {
    const auto first = watchMoves("/spool");
    const auto second = watchAll("/spool");
    watcher.fire("/spool");
    EXPECT_EQ(moves, 1);
    EXPECT_EQ(anything, 1);
    watcher.fire("/spool", DirectoryChanges::any);
    EXPECT_EQ(moves, 1) << "Only renames were asked for.";
    EXPECT_EQ(anything, 2);
    watcher.fire("/elsewhere");
    EXPECT_EQ(anything, 2);
}

TEST_F(FakeDirectoryWatcherTest, DestroyedWatchIsNeverCalledAgain) {
    auto watch = watchAll("/spool");
    EXPECT_EQ(watcher.count("/spool"), 1U);
    watch.reset();
    watcher.fire("/spool");
    EXPECT_EQ(anything, 0);
    EXPECT_EQ(watcher.count("/spool"), 0U);
}

TEST_F(FakeDirectoryWatcherTest, CallbackMayEndItsOwnWatchAndAnother) {
    std::unique_ptr<DirectoryWatch> first;
    std::unique_ptr<DirectoryWatch> second;
    int calls = 0;
    first = watcher.watch("/spool", DirectoryChanges::any, [&] {
        ++calls;
        first.reset();
        second.reset();
    });
    second = watchAll("/spool");
    watcher.fire("/spool");
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(anything, 0);
}

TEST_F(FakeDirectoryWatcherTest, RefusedDirectoryGivesNoWatch) {
    watcher.refused.insert("/missing");
    EXPECT_EQ(watchAll("/missing"), nullptr);
    EXPECT_NE(watchAll("/there"), nullptr);
}

TEST_F(FakeDirectoryWatcherTest, EndedWatchIsToldOnceAndInactive) {
    const auto watch = watchAll("/spool");
    EXPECT_TRUE(watch->isActive());
    watcher.end("/spool");
    EXPECT_FALSE(watch->isActive());
    EXPECT_EQ(anything, 1);
    watcher.fire("/spool");
    watcher.end("/spool");
    EXPECT_EQ(anything, 1);
}

TEST_F(FakeDirectoryWatcherTest, TellsNamesOnlyToThoseWhoFollowTheFiles) {
    std::vector<std::string> names;
    bool isComplete = true;
    const auto watch = watcher.watchFiles("/spool", [&](const DirectoryNews& news) {
        names.insert(names.end(), news.names.begin(), news.names.end());
        isComplete = news.isComplete;
    });
    const auto other = watchAll("/spool");
    watcher.tell("/spool", {.names = {"a", "b"}});
    EXPECT_EQ(names, (std::vector<std::string>{"a", "b"}));
    EXPECT_TRUE(isComplete);
    EXPECT_EQ(anything, 0);
    watcher.fire("/spool");
    EXPECT_EQ(names.size(), 2U);
    EXPECT_EQ(watcher.watched(), std::vector<std::string>{"/spool"});
    watcher.end("/spool");
    EXPECT_FALSE(isComplete);
    EXPECT_TRUE(watcher.watched().empty());
}
