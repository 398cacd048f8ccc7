// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace veslora {
namespace {

using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

/// The work that ends by `exit` is done in a process that begins again, as a fork of this one would wait for
/// threads that other tests left and that it does not have. It finds the folder by the environment.
class ExitRemovalsTests : public ::testing::Test {
  protected:
    static constexpr auto variable = "VESLORA_EXIT_REMOVALS";

    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        if (const char* path = std::getenv(variable)) {
            folder = path;
            return;
        }
        place.emplace();
        folder = place->path();
        setenv(variable, folder.c_str(), 1);
        for (const char* name : {"pid", "heartbeat", "other"}) {
            place->put(name, "");
        }
    }
    void TearDown() override { unsetenv(variable); }

    [[nodiscard]] std::string path(const std::string& name) const { return folder + "/" + name; }

    std::optional<TemporaryFolder> place;
    std::string folder;
    PosixFiles files;
};

using ::testing::ExitedWithCode;

TEST_F(ExitRemovalsTests, FilesGoWhenALibraryEndsTheProgram) {
    EXPECT_EXIT(
        {
            const auto one = files.openFolder(folder)->removeAtExit("pid");
            const auto two = files.openFolder(folder)->removeAtExit("heartbeat");
            std::exit(7);
        },
        ExitedWithCode(7), "");
    EXPECT_THAT(*files.list(folder), UnorderedElementsAre("other"));
}

TEST_F(ExitRemovalsTests, WhatWasLetGoOfStays) {
    EXPECT_EXIT(
        {
            files.openFolder(folder)->removeAtExit("pid").reset();
            std::exit(7);
        },
        ExitedWithCode(7), "");
    EXPECT_EQ(files.list(folder)->size(), 3U);
}

TEST_F(ExitRemovalsTests, ItIsTheFolderThatWasOpened) {
    EXPECT_EXIT(
        {
            std::filesystem::create_directory(path("inner"));
            std::ignore = files.write(path("inner/pid"), "", {});
            const auto one = files.openFolder(path("inner"))->removeAtExit("pid");
            std::filesystem::rename(path("inner"), path("moved"));
            std::filesystem::create_directory_symlink(folder, path("inner"));
            std::exit(7);
        },
        ExitedWithCode(7), "");
    EXPECT_TRUE(std::filesystem::exists(path("pid")));
    EXPECT_TRUE(std::filesystem::exists(path("moved")));
    EXPECT_FALSE(std::filesystem::exists(path("moved/pid")));
}

TEST_F(ExitRemovalsTests, ThereIsRoomForAHandfulAtATime) {
    const OpenedFolder opened = files.openFolder(folder);
    for (int round = 0; round < 100; ++round) {
        EXPECT_TRUE(opened->removeAtExit("pid")) << "what is let go of makes room";
    }
    std::vector<std::unique_ptr<RemovalAtExit>> held;
    for (int number = 0; number < 16; ++number) {
        held.push_back(opened->removeAtExit("none"));
        EXPECT_TRUE(held.back());
    }
    EXPECT_FALSE(opened->removeAtExit("none"));
    held.pop_back();
    EXPECT_TRUE(opened->removeAtExit("none"));
    EXPECT_FALSE(opened->removeAtExit("../pid"));
    EXPECT_FALSE(opened->removeAtExit(std::string(64, 'n')));
}

} // namespace
} // namespace veslora
