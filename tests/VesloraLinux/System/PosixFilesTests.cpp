// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

namespace veslora {
namespace {

using ::testing::IsEmpty;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

std::uint32_t modeOf(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

const ReadOptions following{.links = Links::follow, .owners = Owners::ours};

class PosixFilesTests : public ::testing::Test {
  protected:
    TemporaryFolder folder;
    PosixFiles files;
};

TEST_F(PosixFilesTests, ReadsAFileWhole) {
    const std::string bytes("a\0b\xff\n", 5);
    const ReadResult result = files.read(folder.put("file", bytes), {});
    EXPECT_FALSE(result.error);
    EXPECT_EQ(result.bytes, bytes);
}

TEST_F(PosixFilesTests, ReadsAnEmptyFileAsEmpty) {
    const ReadResult result = files.read(folder.put("file", ""), {});
    EXPECT_TRUE(result);
    EXPECT_EQ(result.bytes, "");
}

TEST_F(PosixFilesTests, SaysThatAMissingFileIsMissing) {
    EXPECT_EQ(files.read(folder.path("none"), {}).error, std::errc::no_such_file_or_directory);
}

TEST_F(PosixFilesTests, ReadsAFileOfExactlyTheCapAndRefusesALongerOne) {
    const std::string path = folder.put("file", "12345");
    EXPECT_EQ(files.read(path, ReadOptions{.links = Links::refuse, .owners = Owners::ours, .cap = 5}).bytes,
              "12345");
    const ReadResult refused =
        files.read(path, ReadOptions{.links = Links::refuse, .owners = Owners::ours, .cap = 4});
    EXPECT_EQ(refused.error, std::errc::file_too_large);
    EXPECT_EQ(refused.bytes, "");
}

TEST_F(PosixFilesTests, ReadsFilesThatDoNotTellTheirLength) {
    // Files of /proc say that they are empty; so does one that grows between the look and the read.
    const ReadResult result = files.read("/proc/self/status", {});
    EXPECT_FALSE(result.error);
    EXPECT_THAT(result.bytes, ::testing::HasSubstr("Pid:"));
    EXPECT_EQ(
        files
            .read("/proc/self/status", ReadOptions{.links = Links::refuse, .owners = Owners::ours, .cap = 10})
            .error,
        std::errc::file_too_large);
}

TEST_F(PosixFilesTests, ReadsAFileThatGrowsMeanwhileWithoutTearingOrHanging) {
    const std::string path = folder.put("file", "");
    std::atomic<bool> stops = false;
    std::thread writer([&] {
        const int descriptor = open(path.c_str(), O_WRONLY | O_APPEND);
        for (int line = 0; line < 20000 && !stops; ++line) {
            if (write(descriptor, "0123456789abcde\n", 16) != 16) {
                break;
            }
        }
        close(descriptor);
    });
    for (int round = 0; round < 50; ++round) {
        const ReadResult result = files.read(path, {});
        ASSERT_FALSE(result.error);
        for (std::size_t at = 0; at + 16 <= result.bytes.size(); at += 16) {
            ASSERT_EQ(result.bytes.compare(at, 16, "0123456789abcde\n"), 0);
        }
    }
    stops = true;
    writer.join();
}

TEST_F(PosixFilesTests, NeitherWaitsForAPipeNorReadsIt) {
    const std::string path = folder.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(files.read(path, {}).error, std::errc::not_supported);
}

TEST_F(PosixFilesTests, RefusesDevicesDirectoriesAndSockets) {
    EXPECT_EQ(files.read("/dev/zero", {}).error, std::errc::not_supported);
    EXPECT_EQ(files.read(folder.path(), {}).error, std::errc::is_a_directory);
}

TEST_F(PosixFilesTests, RefusesOrFollowsALinkAsAsked) {
    folder.put("file", "text");
    ASSERT_EQ(symlink("file", folder.path("link").c_str()), 0);
    EXPECT_EQ(files.read(folder.path("link"), {}).error, std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(files.read(folder.path("link"), following).bytes, "text");
}

TEST_F(PosixFilesTests, RefusesALinkToAPipeEvenWhenItFollows) {
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    ASSERT_EQ(symlink("pipe", folder.path("link").c_str()), 0);
    EXPECT_EQ(files.read(folder.path("link"), following).error, std::errc::not_supported);
}

/// A file that everybody may read but that belongs to somebody else.
std::string filesOfAnotherUser(const TemporaryFolder& folder) {
    if (geteuid() != 0) {
        return "/etc/passwd";
    }
    const std::string path = folder.put("foreign", "text");
    return chown(path.c_str(), 65534, 65534) == 0 ? path : std::string();
}

TEST_F(PosixFilesTests, RefusesAnotherUsersFileUnlessAnyoneMayOwnIt) {
    const std::string path = filesOfAnotherUser(folder);
    ASSERT_EQ(access(path.c_str(), R_OK), 0);
    EXPECT_EQ(files.read(path, {}).error, std::errc::permission_denied);
    EXPECT_NE(files.read(path, {.links = Links::refuse, .owners = Owners::anyone}).bytes, "");
    EXPECT_FALSE(files.stat(path, Links::follow)->isOurs);
}

TEST_F(PosixFilesTests, TellsWhatAFileIs) {
    const std::string path = folder.put("file", "12345");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    const timespec times[2] = {{0, 0}, {1700000000, 123456789}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    const auto stat = files.stat(path, Links::refuse);
    ASSERT_TRUE(stat);
    EXPECT_EQ(stat->size, 5);
    EXPECT_EQ(stat->mode, 0640U);
    EXPECT_EQ(stat->modifiedNanoseconds, 1700000000123456789);
    EXPECT_NEAR(stat->modified, 1700000000.123456789, 1e-6);
    EXPECT_TRUE(stat->isRegular && stat->isOurs);
    EXPECT_FALSE(stat->isDirectory || stat->isLink);
    EXPECT_NE(stat->inode, 0U);
}

TEST_F(PosixFilesTests, TellsALinkFromWhatItPointsTo) {
    ASSERT_EQ(symlink(folder.path().c_str(), folder.path("link").c_str()), 0);
    EXPECT_TRUE(files.stat(folder.path("link"), Links::refuse)->isLink);
    EXPECT_TRUE(files.stat(folder.path("link"), Links::follow)->isDirectory);
    ASSERT_EQ(symlink("nowhere", folder.path("dangling").c_str()), 0);
    EXPECT_TRUE(files.stat(folder.path("dangling"), Links::refuse));
    EXPECT_FALSE(files.stat(folder.path("dangling"), Links::follow));
}

TEST_F(PosixFilesTests, TellsANewInodeAfterAReplacement) {
    const std::string path = folder.put("file", "old");
    const auto before = files.stat(path, Links::refuse);
    ASSERT_FALSE(files.write(path, "new", {}));
    EXPECT_NE(files.stat(path, Links::refuse)->inode, before->inode);
}

TEST_F(PosixFilesTests, ListsNames) {
    folder.put("a", "");
    folder.put(".hidden", "");
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("a", ".hidden", "sub"));
    EXPECT_THAT(*files.list(folder.path("sub")), IsEmpty());
    EXPECT_FALSE(files.list(folder.path("a")));
    EXPECT_FALSE(files.list(folder.path("none")));
}

TEST_F(PosixFilesTests, FollowsLinksOfFoldersAndFiles) {
    std::filesystem::create_directory(folder.path("real"));
    folder.put("real/file", "");
    ASSERT_EQ(symlink("real", folder.path("alias").c_str()), 0);
    ASSERT_EQ(symlink("alias/file", folder.path("link").c_str()), 0);
    EXPECT_EQ(files.resolve(folder.path("link")), folder.path("real/file"));
}

TEST_F(PosixFilesTests, FollowsLinksToAFileThatIsYetToBeMade) {
    std::filesystem::create_directory(folder.path("real"));
    ASSERT_EQ(symlink("real", folder.path("alias").c_str()), 0);
    ASSERT_EQ(symlink("alias/settings.json", folder.path("link").c_str()), 0);
    EXPECT_EQ(files.resolve(folder.path("link")), folder.path("real/settings.json"));
    EXPECT_EQ(files.resolve(folder.path("alias/none/deep.json")), folder.path("real/none/deep.json"));
}

TEST_F(PosixFilesTests, GivesThePathBackWhenItsLinksGoRoundInACircle) {
    ASSERT_EQ(symlink("two", folder.path("one").c_str()), 0);
    ASSERT_EQ(symlink("one", folder.path("two").c_str()), 0);
    EXPECT_EQ(files.resolve(folder.path("one")), folder.path("one"));
    EXPECT_EQ(files.resolve(folder.path("one/file")), folder.path("one/file"));
    EXPECT_EQ(files.read(folder.path("one"), following).error, std::errc::too_many_symbolic_link_levels);
}

TEST_F(PosixFilesTests, CallsOnlyARegularFileExecutable) {
    const std::string path = folder.put("script", "#!/bin/sh\n");
    EXPECT_FALSE(files.isExecutable(path));
    ASSERT_FALSE(files.setMode(path, 0700));
    EXPECT_TRUE(files.isExecutable(path));
    EXPECT_FALSE(files.isExecutable(folder.path()));
    EXPECT_FALSE(files.isExecutable(folder.path("none")));
}

TEST_F(PosixFilesTests, RemovesFilesAndLinksButNoDirectory) {
    const std::string path = folder.put("file", "");
    ASSERT_EQ(symlink("file", folder.path("link").c_str()), 0);
    EXPECT_FALSE(files.remove(folder.path("link")));
    EXPECT_TRUE(files.stat(path, Links::refuse));
    EXPECT_FALSE(files.remove(path));
    EXPECT_EQ(files.remove(path), std::errc::no_such_file_or_directory);
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_TRUE(files.remove(folder.path("sub")));
    EXPECT_TRUE(files.stat(folder.path("sub"), Links::refuse));
}

TEST_F(PosixFilesTests, MakesDirectoriesWithTheirParentsWhateverTheUsersMask) {
    const mode_t mask = umask(0077);
    EXPECT_FALSE(files.makeDirectory(folder.path("one/two"), 0755));
    umask(mask);
    EXPECT_EQ(modeOf(folder.path("one")), 0755U);
    EXPECT_EQ(modeOf(folder.path("one/two")), 0755U);
}

TEST_F(PosixFilesTests, LeavesADirectoryThatIsThereAlreadyAsItIs) {
    ASSERT_FALSE(files.makeDirectory(folder.path("one"), 0755));
    EXPECT_FALSE(files.makeDirectory(folder.path("one"), 0700));
    EXPECT_EQ(modeOf(folder.path("one")), 0755U);
    folder.put("file", "");
    EXPECT_EQ(files.makeDirectory(folder.path("file"), 0700), std::errc::not_a_directory);
    EXPECT_TRUE(files.makeDirectory(folder.path("file/below"), 0700));
}

TEST_F(PosixFilesTests, MakesAndReplacesALinkInOneStep) {
    ASSERT_FALSE(files.makeLink("first", folder.path("link")));
    EXPECT_EQ(std::filesystem::read_symlink(folder.path("link")), "first");
    ASSERT_FALSE(files.makeLink("second", folder.path("link")));
    EXPECT_EQ(std::filesystem::read_symlink(folder.path("link")), "second");
    folder.put("file", "text");
    ASSERT_FALSE(files.makeLink("third", folder.path("file")));
    EXPECT_EQ(std::filesystem::read_symlink(folder.path("file")), "third");
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("link", "file"));
}

TEST_F(PosixFilesTests, LeavesNothingOverWhenALinkCannotTakeItsPlace) {
    std::filesystem::create_directory(folder.path("sub"));
    EXPECT_TRUE(files.makeLink("target", folder.path("sub")));
    EXPECT_THAT(*files.list(folder.path()), UnorderedElementsAre("sub"));
}

TEST_F(PosixFilesTests, ReadsPiecesOfAnOpenFile) {
    const std::string path = folder.put("file", "0123456789");
    const auto reader = files.open(path);
    ASSERT_TRUE(reader);
    char bytes[4] = {};
    EXPECT_EQ(reader->read(bytes, 4, 3), 4U);
    EXPECT_EQ(std::string(bytes, 4), "3456");
    EXPECT_EQ(reader->read(bytes, 4, 8), 2U);
    EXPECT_EQ(reader->read(bytes, 4, 10), 0U);
    EXPECT_EQ(reader->read(bytes, 4, 1'000), 0U);
    EXPECT_EQ(reader->stat()->size, 10);
    EXPECT_EQ(reader->stat()->inode, files.stat(path, Links::refuse)->inode);
}

TEST_F(PosixFilesTests, AnOpenFileIsTheOneThatWasOpened) {
    const std::string path = folder.put("file", "old");
    const auto reader = files.open(path);
    std::filesystem::rename(folder.put("new", "newer"), path);
    char bytes[8] = {};
    EXPECT_EQ(reader->read(bytes, 8, 0), 3U);
    EXPECT_NE(reader->stat()->inode, files.stat(path, Links::refuse)->inode);
}

TEST_F(PosixFilesTests, OpensNothingButRegularFiles) {
    EXPECT_FALSE(files.open(folder.path("none")));
    EXPECT_FALSE(files.open(folder.path()));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files.open(folder.path("pipe")));
    std::filesystem::create_symlink(folder.put("file", "text"), folder.path("link"));
    EXPECT_FALSE(files.open(folder.path("link")));
    EXPECT_FALSE(files.open("/dev/zero"));
}

} // namespace
} // namespace veslora
