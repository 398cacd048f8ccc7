// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/OrdinaryUser.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace veslora {
namespace {

using testing::AsOrdinaryUser;
using testing::nobody;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

struct stat statusOf(const std::string& path) {
    struct stat status {};
    lstat(path.c_str(), &status);
    return status;
}

std::uint32_t modeOf(const std::string& path) {
    return statusOf(path).st_mode & 07777U;
}

/// Lets no file grow beyond `bytes`, which fails a write the way a full disk does.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_handler);
    }

  private:
    void (*m_handler)(int);
    rlimit m_former{};
};

class PosixFileWritingTests : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    PosixFiles files;
};

TEST_F(PosixFileWritingTests, MakesAPrivateFile) {
    const mode_t mask = umask(0);
    ASSERT_FALSE(files.write(folder.path("file"), "text", {}));
    umask(mask);
    EXPECT_EQ(folder.bytesOf("file"), "text");
    EXPECT_EQ(modeOf(folder.path("file")), 0600U);
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("file"));
}

TEST_F(PosixFileWritingTests, GivesTheModeThatIsAskedForWhateverTheUsersMask) {
    const mode_t mask = umask(0077);
    ASSERT_FALSE(files.write(folder.path("script"), "#!/bin/sh\n", {.mode = 0755, .sync = Sync::no}));
    umask(mask);
    EXPECT_EQ(modeOf(folder.path("script")), 0755U);
}

TEST_F(PosixFileWritingTests, KeepsTheModeOfTheFileThatItReplaces) {
    for (const mode_t mode : {0600U, 0644U, 0400U}) {
        const std::string path = folder.put("file" + std::to_string(mode), "old");
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        ASSERT_FALSE(files.write(path, "new", {.mode = {}, .sync = Sync::yes}));
        EXPECT_EQ(folder.bytesOf("file" + std::to_string(mode)), "new");
        EXPECT_EQ(modeOf(path), mode);
    }
}

TEST_F(PosixFileWritingTests, ReplacesAReadOnlyFileAsAnOrdinaryUser) {
    const AsOrdinaryUser user(folder.path());
    ASSERT_FALSE(files.write(folder.path("file"), "old", {.mode = 0400, .sync = Sync::no}));
    ASSERT_FALSE(files.write(folder.path("file"), "new", {}));
    EXPECT_EQ(folder.bytesOf("file"), "new");
    EXPECT_EQ(modeOf(folder.path("file")), 0400U);
}

TEST_F(PosixFileWritingTests, KeepsOwnerAndGroupWhereItMay) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root may give files away";
    }
    const std::string path = folder.put("file", "old");
    ASSERT_EQ(chown(path.c_str(), nobody, nobody), 0);
    ASSERT_EQ(chmod(path.c_str(), 0664), 0);
    ASSERT_FALSE(files.write(path, "new", {}));
    EXPECT_EQ(statusOf(path).st_uid, nobody);
    EXPECT_EQ(statusOf(path).st_gid, nobody);
    EXPECT_EQ(modeOf(path), 0664U);
}

TEST_F(PosixFileWritingTests, GivesNoRightsOfALostGroupToAnother) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of a group that the user is not in";
    }
    const std::string path = folder.put("file", "old");
    ASSERT_EQ(chown(path.c_str(), nobody, 0), 0);
    ASSERT_EQ(chmod(path.c_str(), 0664), 0);
    const AsOrdinaryUser user(folder.path());
    ASSERT_FALSE(files.write(path, "new", {}));
    EXPECT_EQ(statusOf(path).st_gid, nobody);
    EXPECT_EQ(modeOf(path), 0644U);
}

TEST_F(PosixFileWritingTests, ReplacesALinkItselfAndNotWhatItPointsTo) {
    folder.put("target", "kept");
    ASSERT_EQ(symlink("target", folder.path("link").c_str()), 0);
    ASSERT_FALSE(files.write(folder.path("link"), "new", {}));
    EXPECT_EQ(folder.bytesOf("target"), "kept");
    EXPECT_EQ(folder.bytesOf("link"), "new");
    EXPECT_TRUE(files.stat(folder.path("link"), Links::refuse)->isRegular);
}

TEST_F(PosixFileWritingTests, LeavesTheOldFileAndNothingElseWhenTheDiskIsFull) {
    const std::string path = folder.put("file", "old");
    {
        const FileSizeLimit limit(4096);
        EXPECT_TRUE(files.write(path, std::string(100000, 'x'), {}));
    }
    EXPECT_EQ(folder.bytesOf("file"), "old");
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("file"));
}

TEST_F(PosixFileWritingTests, FailsInADirectoryThatIsReadOnlyAndLeavesTheFile) {
    {
        const AsOrdinaryUser user(folder.path());
        ASSERT_FALSE(files.write(folder.path("file"), "old", {}));
        ASSERT_EQ(chmod(folder.path().c_str(), 0500), 0);
        EXPECT_EQ(files.write(folder.path("file"), "new", {}), std::errc::permission_denied);
        EXPECT_EQ(files.makeLink("target", folder.path("file")), std::errc::permission_denied);
        EXPECT_EQ(files.remove(folder.path("file")), std::errc::permission_denied);
    }
    EXPECT_EQ(folder.bytesOf("file"), "old");
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("file"));
}

TEST_F(PosixFileWritingTests, FailsOnPathsThatCanHoldNoFile) {
    EXPECT_EQ(files.write(folder.path("none/file"), "text", {}), std::errc::no_such_file_or_directory);
    EXPECT_EQ(files.write(folder.path("file/"), "text", {}), std::errc::invalid_argument);
    EXPECT_EQ(files.write("file", "text", {}), std::errc::invalid_argument);
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_EQ(files.write(folder.path("sub"), "text", {}), std::errc::is_a_directory);
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("sub"));
}

TEST_F(PosixFileWritingTests, WritesUnderTheLongestName) {
    const std::string name(255, 'n');
    ASSERT_FALSE(files.write(folder.path(name), "text", {}));
    EXPECT_EQ(folder.bytesOf(name), "text");
}

} // namespace
} // namespace veslora
