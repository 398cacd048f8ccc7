// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

class InotifyDirectoryWatcherTests : public ::testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<DirectoryWatch> count(int& calls, DirectoryChanges changes,
                                                        const std::string& name = ".") {
        return watcher.watch(folder.path(name), changes, [&calls] { ++calls; });
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    testing::TemporaryFolder elsewhere;
    InotifyDirectoryWatcher watcher;
};

TEST_F(InotifyDirectoryWatcherTests, TellsOfFilesThatArriveByRenameAndOfNothingElse) {
    int calls = 0;
    const auto watch = count(calls, DirectoryChanges::movedInto);
    ASSERT_TRUE(watch && watch->isActive());
    folder.put("tmp.1", "text");
    std::filesystem::remove(folder.put("other", ""));
    handleEventsFor(30);
    EXPECT_EQ(calls, 0);
    std::filesystem::rename(folder.path("tmp.1"), folder.path("file.json"));
    EXPECT_TRUE(waitUntil([&] { return calls == 1; }));
}

TEST_F(InotifyDirectoryWatcherTests, TellsOfEveryKindOfChange) {
    int calls = 0;
    const auto watch = count(calls, DirectoryChanges::any);
    const auto told = [&](int expected) { return waitUntil([&] { return calls == expected; }); };
    folder.put("file", "one");
    EXPECT_TRUE(told(1));
    folder.put("file", "two");
    EXPECT_TRUE(told(2));
    std::filesystem::rename(folder.path("file"), elsewhere.path("file"));
    EXPECT_TRUE(told(3));
    std::filesystem::rename(elsewhere.path("file"), folder.path("back"));
    EXPECT_TRUE(told(4));
    std::filesystem::remove(folder.path("back"));
    EXPECT_TRUE(told(5));
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_TRUE(told(6));
    folder.put("sub/deep", "text");
    handleEventsFor(30);
    EXPECT_EQ(calls, 6);
}

TEST_F(InotifyDirectoryWatcherTests, MakesOneCallOfAllThatHappenedMeanwhile) {
    int calls = 0;
    const auto watch = count(calls, DirectoryChanges::any);
    for (int file = 0; file < 2000; ++file) {
        folder.put("file" + std::to_string(file), "text");
    }
    ASSERT_TRUE(waitUntil([&] { return calls > 0; }));
    handleEventsFor(30);
    EXPECT_EQ(calls, 1);
}

TEST_F(InotifyDirectoryWatcherTests, MakesOneCallAfterAnOverflow) {
    std::ifstream limit("/proc/sys/fs/inotify/max_queued_events");
    long most = 0;
    ASSERT_TRUE(limit >> most);
    if (most > 200000) {
        GTEST_SKIP() << "the system's queue is too long to fill";
    }
    int calls = 0;
    int otherCalls = 0;
    const auto watch = count(calls, DirectoryChanges::any);
    const auto other = watcher.watch(elsewhere.path(), DirectoryChanges::movedInto, [&] { ++otherCalls; });
    for (long file = 0; file <= most / 2; ++file) {
        // Two different names by turns, since the system merges equal neighbours.
        folder.put("a", "");
        folder.put("b", "");
    }
    ASSERT_TRUE(waitUntil([&] { return calls > 0 && otherCalls > 0; }));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(otherCalls, 1);
}

TEST_F(InotifyDirectoryWatcherTests, GivesNullForWhatIsNoDirectory) {
    int calls = 0;
    EXPECT_FALSE(count(calls, DirectoryChanges::any, "none"));
    folder.put("file", "");
    EXPECT_FALSE(count(calls, DirectoryChanges::any, "file"));
}

TEST_F(InotifyDirectoryWatcherTests, EndsWithOneLastCallWhenTheDirectoryIsRemoved) {
    int calls = 0;
    std::filesystem::create_directory(folder.path("sub"));
    const auto watch = count(calls, DirectoryChanges::movedInto, "sub");
    std::filesystem::remove(folder.path("sub"));
    EXPECT_TRUE(waitUntil([&] { return !watch->isActive(); }));
    handleEventsFor(20);
    EXPECT_EQ(calls, 1);
}

TEST_F(InotifyDirectoryWatcherTests, EndsWhenTheDirectoryMovesAwayAndWatchesTheNextOneOfThatName) {
    int calls = 0;
    std::filesystem::create_directory(folder.path("sub"));
    auto watch = count(calls, DirectoryChanges::any, "sub");
    std::filesystem::rename(folder.path("sub"), folder.path("moved"));
    EXPECT_TRUE(waitUntil([&] { return !watch->isActive(); }));
    EXPECT_EQ(calls, 1);
    folder.put("moved/file", "");
    std::filesystem::create_directory(folder.path("sub"));
    watch = count(calls, DirectoryChanges::any, "sub");
    ASSERT_TRUE(watch && watch->isActive());
    folder.put("sub/file", "");
    EXPECT_TRUE(waitUntil([&] { return calls == 2; }));
}

TEST_F(InotifyDirectoryWatcherTests, LetsTwoWatchesOfOneDirectoryLiveApart) {
    int renames = 0;
    int changes = 0;
    std::filesystem::create_directory_symlink(".", folder.path("alias"));
    auto narrow = count(renames, DirectoryChanges::movedInto);
    auto wide = count(changes, DirectoryChanges::any, "alias");
    folder.put("file", "");
    EXPECT_TRUE(waitUntil([&] { return changes == 1; }));
    EXPECT_EQ(renames, 0);
    wide.reset();
    folder.put("file", "");
    std::filesystem::rename(folder.path("file"), folder.path("renamed"));
    EXPECT_TRUE(waitUntil([&] { return renames == 1; }));
    EXPECT_EQ(changes, 1);
    narrow.reset();
    folder.put("file", "");
    handleEventsFor(30);
    EXPECT_EQ(renames + changes, 2);
}

TEST_F(InotifyDirectoryWatcherTests, LetsACallbackEndItsOwnWatchAndOthers) {
    std::unique_ptr<DirectoryWatch> first;
    std::unique_ptr<DirectoryWatch> second;
    int calls = 0;
    const auto endBoth = [&] {
        ++calls;
        first.reset();
        second.reset();
    };
    first = watcher.watch(folder.path(), DirectoryChanges::any, endBoth);
    second = watcher.watch(folder.path(), DirectoryChanges::any, endBoth);
    folder.put("file", "");
    EXPECT_TRUE(waitUntil([&] { return calls == 1; }));
    folder.put("file", "");
    handleEventsFor(30);
    EXPECT_EQ(calls, 1);
}

TEST_F(InotifyDirectoryWatcherTests, LeavesItsWatchesDeadButSafeWhenItEnds) {
    auto ended = std::make_unique<InotifyDirectoryWatcher>();
    const auto watch = ended->watch(folder.path(), DirectoryChanges::any, [] { FAIL(); });
    ended.reset();
    EXPECT_FALSE(watch->isActive());
    folder.put("file", "");
    handleEventsFor(20);
}

TEST_F(InotifyDirectoryWatcherTests, NamesTheFilesWhileTheyAreWritten) {
    std::vector<std::string> names;
    bool isComplete = true;
    const auto watch = watcher.watchFiles(folder.path("."), [&](const DirectoryNews& news) {
        names.insert(names.end(), news.names.begin(), news.names.end());
        isComplete = isComplete && news.isComplete;
    });
    const auto told = [&](const std::string& name) {
        return waitUntil([&] { return std::ranges::find(names, name) != names.end(); });
    };
    std::ofstream file(folder.path("log"), std::ios::binary);
    EXPECT_TRUE(told("log"));
    names.clear();
    file << "a line\n" << std::flush;
    EXPECT_TRUE(told("log"));
    names.clear();
    std::filesystem::permissions(folder.path("log"), std::filesystem::perms::owner_read);
    EXPECT_TRUE(told("log"));
    std::filesystem::rename(folder.path("log"), folder.path("other"));
    EXPECT_TRUE(told("other"));
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_TRUE(told("sub"));
    EXPECT_TRUE(isComplete);
}

TEST_F(InotifyDirectoryWatcherTests, SaysWhenItCannotNameAll) {
    bool isComplete = true;
    const auto watch = watcher.watchFiles(folder.path("."),
                                          [&](const DirectoryNews& news) { isComplete &= news.isComplete; });
    for (int index = 0; index < 1000; ++index) {
        folder.put(std::to_string(index), "");
    }
    EXPECT_TRUE(waitUntil([&] { return !isComplete; }));
}

TEST_F(InotifyDirectoryWatcherTests, SaysThatAFollowedDirectoryIsGone) {
    std::filesystem::create_directory(folder.path("sub"));
    bool isComplete = true;
    const auto watch = watcher.watchFiles(folder.path("sub"),
                                          [&](const DirectoryNews& news) { isComplete &= news.isComplete; });
    ASSERT_TRUE(watch);
    std::filesystem::remove(folder.path("sub"));
    EXPECT_TRUE(waitUntil([&] { return !isComplete; }));
    EXPECT_FALSE(watch->isActive());
}

} // namespace
} // namespace veslora
