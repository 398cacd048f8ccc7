// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/ArtworkFile.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

namespace veslora {
namespace {

class ArtworkFileTests : public ::testing::Test {
  protected:
    testing::TemporaryFolder folder;
};

TEST_F(ArtworkFileTests, ReadsAFileOfOurs) {
    EXPECT_EQ(ArtworkFile::read(folder.put("cover", "bytes")), "bytes");
}

TEST_F(ArtworkFileTests, FollowsNoLink) {
    std::filesystem::create_symlink(folder.put("cover", "bytes"), folder.path("link"));
    EXPECT_EQ(ArtworkFile::read(folder.path("link")), "");
}

TEST_F(ArtworkFileTests, WaitsForNoPipe) {
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(ArtworkFile::read(folder.path("pipe")), "");
}

TEST_F(ArtworkFileTests, ReadsNeitherDevicesNorFolders) {
    EXPECT_EQ(ArtworkFile::read("/dev/zero"), "");
    EXPECT_EQ(ArtworkFile::read(folder.path()), "");
    EXPECT_EQ(ArtworkFile::read(folder.path("missing")), "");
}

TEST_F(ArtworkFileTests, ReadsNothingThatIsTooLong) {
    const std::string path = folder.put("cover", "bytes");
    std::filesystem::resize_file(path, ArtworkFile::largest);
    EXPECT_EQ(ArtworkFile::read(path).size(), ArtworkFile::largest);
    std::filesystem::resize_file(path, ArtworkFile::largest + 1);
    EXPECT_EQ(ArtworkFile::read(path), "");
}

TEST_F(ArtworkFileTests, ReadsNoOtherUsersFile) {
    if (geteuid() != 0) {
        EXPECT_EQ(ArtworkFile::read("/etc/passwd"), "");
        return;
    }
    const std::string path = folder.put("cover", "bytes");
    ASSERT_EQ(chown(path.c_str(), 65534, 65534), 0);
    EXPECT_EQ(ArtworkFile::read(path), "");
}

} // namespace
} // namespace veslora
