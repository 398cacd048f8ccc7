// SPDX-License-Identifier: MIT
#include "MediaAdapter/ChosenPlayerFile.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace veslora {
namespace {

namespace fs = std::filesystem;

const std::string player = "org.mpris.MediaPlayer2.vlc";

class ChosenPlayerFileTests : public ::testing::Test {
  protected:
    testing::TemporaryFolder folder;
    ChosenPlayerFile file{folder.path()};
};

TEST_F(ChosenPlayerFileTests, GivesBackWhatWasStoredLast) {
    EXPECT_EQ(file.name(), std::nullopt);
    EXPECT_TRUE(file.store("")) << "as it should be";
    EXPECT_TRUE(file.store("org.mpris.MediaPlayer2.mpv"));
    EXPECT_TRUE(file.store(player));
    EXPECT_EQ(file.name(), player);
    EXPECT_TRUE(file.store(""));
    EXPECT_EQ(file.name(), std::nullopt);
}

TEST_F(ChosenPlayerFileTests, IsClosedToOthersAndLeavesNothingElseBehind) {
    ASSERT_TRUE(file.store(player));
    EXPECT_EQ(fs::status(folder.path("veslora")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder.path("veslora/media-player")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path("veslora")), {}), 1);
}

TEST_F(ChosenPlayerFileTests, FollowsNoLinkToAFolder) {
    fs::create_directory(folder.path("elsewhere"));
    fs::permissions(folder.path("elsewhere"), fs::perms::owner_all);
    fs::create_directory_symlink(folder.path("elsewhere"), folder.path("veslora"));
    EXPECT_FALSE(file.store(player));
    EXPECT_TRUE(fs::is_empty(folder.path("elsewhere")));
}

TEST_F(ChosenPlayerFileTests, ReplacesALinkAndReadsNone) {
    ASSERT_TRUE(file.store(player));
    folder.put("other", player);
    fs::permissions(folder.path("other"), fs::perms::owner_read | fs::perms::owner_write);
    fs::remove(folder.path("veslora/media-player"));
    fs::create_symlink(folder.path("other"), folder.path("veslora/media-player"));
    EXPECT_EQ(file.name(), std::nullopt);
    EXPECT_TRUE(file.store("org.mpris.MediaPlayer2.mpv"));
    EXPECT_EQ(folder.bytesOf("other"), player);
    EXPECT_EQ(file.name(), "org.mpris.MediaPlayer2.mpv");
}

TEST_F(ChosenPlayerFileTests, UsesNoFolderThatOthersMayUse) {
    ASSERT_TRUE(file.store(player));
    fs::permissions(folder.path("veslora"), fs::perms::owner_all | fs::perms::group_read);
    EXPECT_FALSE(file.store(player));
    EXPECT_EQ(file.name(), std::nullopt);
}

TEST_F(ChosenPlayerFileTests, LeavesAnotherUsersRuntimeDirectoryAlone) {
    if (geteuid() != 0) {
        EXPECT_FALSE(ChosenPlayerFile("/").store(player));
        return;
    }
    ASSERT_EQ(chown(folder.path().c_str(), 65534, 65534), 0);
    EXPECT_FALSE(file.store(player));
    EXPECT_FALSE(fs::exists(folder.path("veslora")));
}

TEST_F(ChosenPlayerFileTests, ReadsNothingButAPlayersName) {
    ASSERT_TRUE(file.store(player));
    for (const std::string& text :
         {std::string(), std::string("org.freedesktop.DBus"),
          std::string("org.mpris.MediaPlayer2.playerctld"), player + std::string(300, 'x')}) {
        folder.put("veslora/media-player", text);
        EXPECT_EQ(file.name(), std::nullopt) << text;
    }
}

TEST_F(ChosenPlayerFileTests, WithoutARuntimeDirectoryNothingIsStored) {
    EXPECT_FALSE(ChosenPlayerFile("").store(player));
    EXPECT_FALSE(ChosenPlayerFile("relative").store(player));
    EXPECT_FALSE(ChosenPlayerFile(folder.path("missing")).store(player));
}

} // namespace
} // namespace veslora
