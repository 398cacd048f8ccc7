// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>

namespace veslora {
namespace {

using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

class ExitRemovalsTests : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"pid", "heartbeat", "other"}) {
            place.put(name, "");
        }
    }
    /// In a process of its own, which `work` must end.
    static void inAnotherProcess(const std::function<void()>& work) {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(42);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
    }

    TemporaryFolder place;
    PosixFiles files;
};

TEST_F(ExitRemovalsTests, FilesGoWhenALibraryEndsTheProgram) {
    inAnotherProcess([this] {
        const auto one = files.openFolder(place.path())->removeAtExit("pid");
        const auto two = files.openFolder(place.path())->removeAtExit("heartbeat");
        std::quick_exit(0);
    });
    EXPECT_EQ(files.list(place.path())->size(), 3U) << "only `exit` itself runs the handlers";
    inAnotherProcess([this] {
        const auto one = files.openFolder(place.path())->removeAtExit("pid");
        const auto two = files.openFolder(place.path())->removeAtExit("heartbeat");
        std::exit(1);
    });
    EXPECT_THAT(*files.list(place.path()), UnorderedElementsAre("other"));
}

TEST_F(ExitRemovalsTests, WhatWasLetGoOfStays) {
    inAnotherProcess([this] {
        files.openFolder(place.path())->removeAtExit("pid").reset();
        std::exit(0);
    });
    EXPECT_EQ(files.list(place.path())->size(), 3U);
}

TEST_F(ExitRemovalsTests, ItIsTheFolderThatWasOpened) {
    std::filesystem::create_directory(place.path("inner"));
    place.put("inner/pid", "");
    inAnotherProcess([this] {
        const auto one = files.openFolder(place.path("inner"))->removeAtExit("pid");
        std::filesystem::rename(place.path("inner"), place.path("moved"));
        std::filesystem::create_directory_symlink(place.path(), place.path("inner"));
        std::exit(0);
    });
    EXPECT_TRUE(std::filesystem::exists(place.path("pid")));
    EXPECT_FALSE(std::filesystem::exists(place.path("moved/pid")));
}

TEST_F(ExitRemovalsTests, ThereIsRoomForAHandfulAtATime) {
    const OpenedFolder folder = files.openFolder(place.path());
    for (int round = 0; round < 100; ++round) {
        EXPECT_TRUE(folder->removeAtExit("pid")) << "what is let go of makes room";
    }
    std::vector<std::unique_ptr<RemovalAtExit>> held;
    for (int number = 0; number < 16; ++number) {
        held.push_back(folder->removeAtExit("none"));
        EXPECT_TRUE(held.back());
    }
    EXPECT_FALSE(folder->removeAtExit("none"));
    held.pop_back();
    EXPECT_TRUE(folder->removeAtExit("none"));
    EXPECT_FALSE(folder->removeAtExit("../pid"));
    EXPECT_FALSE(folder->removeAtExit(std::string(64, 'n')));
}

} // namespace
} // namespace veslora
