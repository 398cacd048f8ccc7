// SPDX-License-Identifier: MIT
// Folders that are held open: what lies in them, and that no link leads out of them.
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace veslora {
namespace {

using ::testing::IsEmpty;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

class PosixFolderTests : public ::testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directory(place.path("ours"));
        std::filesystem::create_directory(place.path("theirs"));
        place.put("ours/file", "text");
        place.put("theirs/file", "foreign");
    }
    [[nodiscard]] OpenedFolder open() { return files.openFolder(place.path("ours")); }
    /// Takes the folder away and puts a link to another one in its place.
    void replaceByLink() {
        std::filesystem::rename(place.path("ours"), place.path("moved"));
        std::filesystem::create_directory_symlink("theirs", place.path("ours"));
    }

    TemporaryFolder place;
    PosixFiles files;
};

TEST_F(PosixFolderTests, ReachesWhatLiesInIt) {
    const OpenedFolder folder = open();
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->read("file", {}).bytes, "text");
    EXPECT_EQ(folder->stat("file")->size, 4);
    EXPECT_FALSE(folder->write("new", "bytes", {.mode = 0640}));
    EXPECT_EQ(place.bytesOf("ours/new"), "bytes");
    EXPECT_EQ(folder->stat("new")->mode, 0640U);
    char bytes[8] = {};
    EXPECT_EQ(folder->open("new")->read(bytes, 8, 0), 5U);
    EXPECT_THAT(*folder->list(), UnorderedElementsAre("file", "new"));
    EXPECT_THAT(*folder->list(), UnorderedElementsAre("file", "new")) << "a list begins at the beginning";
    EXPECT_EQ(folder->listSome(1)->size(), 1U);
    EXPECT_EQ(folder->listSome(3), folder->list());
    EXPECT_FALSE(folder->remove("file"));
    EXPECT_EQ(folder->remove("file"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(folder->read("file", {}).error, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(folder->open("file"));
    EXPECT_FALSE(folder->stat("file"));
}

TEST_F(PosixFolderTests, ALinkInItsPlaceIsRefused) {
    std::filesystem::create_directory_symlink("theirs", place.path("link"));
    EXPECT_EQ(files.openFolder(place.path("link")).error, std::errc::not_a_directory);
    EXPECT_FALSE(files.openFolder(place.path("link/"))) << "a slash at the end would follow it";
    EXPECT_FALSE(files.openFolder(place.path("link/.")));
    EXPECT_FALSE(files.openFolder(place.path("ours/../link/..")));
}

TEST_F(PosixFolderTests, ALinkAboveItIsFollowed) {
    std::filesystem::create_directory(place.path("theirs/inner"));
    std::filesystem::create_directory_symlink("theirs", place.path("link"));
    EXPECT_TRUE(files.openFolder(place.path("link/inner")));
}

TEST_F(PosixFolderTests, OnlyFoldersAreOpened) {
    EXPECT_EQ(files.openFolder(place.path("ours/file")).error, std::errc::not_a_directory);
    EXPECT_EQ(files.openFolder(place.path("none")).error, std::errc::no_such_file_or_directory);
}

TEST_F(PosixFolderTests, AnotherUsersFolderIsRefused) {
    if (geteuid() != 0) {
        EXPECT_EQ(files.openFolder("/etc").error, std::errc::permission_denied);
        return;
    }
    ASSERT_EQ(chown(place.path("ours").c_str(), 65534, 65534), 0);
    EXPECT_EQ(open().error, std::errc::permission_denied);
}

TEST_F(PosixFolderTests, StaysTheFolderThatWasOpenedWhenALinkTakesItsPlace) {
    const OpenedFolder folder = open();
    replaceByLink();
    EXPECT_EQ(folder->read("file", {}).bytes, "text");
    EXPECT_FALSE(folder->write("new", "bytes", {}));
    EXPECT_FALSE(folder->remove("file"));
    EXPECT_EQ(place.bytesOf("theirs/file"), "foreign");
    EXPECT_THAT(*files.list(place.path("theirs")), UnorderedElementsAre("file"));
    EXPECT_THAT(*files.list(place.path("moved")), UnorderedElementsAre("new"));
    EXPECT_FALSE(open()) << "every opener is refused now";
}

TEST_F(PosixFolderTests, NothingIsMadeInADeletedFolder) {
    const OpenedFolder folder = open();
    std::filesystem::remove_all(place.path("ours"));
    std::filesystem::create_directory(place.path("ours"));
    EXPECT_EQ(folder->write("new", "bytes", {}), std::errc::no_such_file_or_directory);
    EXPECT_THAT(*folder->list(), IsEmpty());
    EXPECT_THAT(*files.list(place.path("ours")), IsEmpty());
}

TEST_F(PosixFolderTests, NoNameLeadsOutOfIt) {
    const OpenedFolder folder = open();
    for (const std::string& name :
         {std::string("../theirs/file"), std::string("/etc/passwd"), std::string("./file"), std::string("."),
          std::string(".."), std::string(), std::string("file\0x", 6)}) {
        EXPECT_EQ(folder->read(name, {.owners = Owners::anyone}).error, std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->write(name, "x", {}), std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->remove(name), std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->makeLink("file", name), std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->makeFolder(name, 0700), std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->openFolder(name).error, std::errc::invalid_argument) << name;
        EXPECT_FALSE(folder->stat(name)) << name;
        EXPECT_FALSE(folder->open(name)) << name;
        EXPECT_FALSE(folder->linkTarget(name)) << name;
        EXPECT_FALSE(folder->isExecutable(name)) << name;
    }
    EXPECT_EQ(place.bytesOf("theirs/file"), "foreign");
}

TEST_F(PosixFolderTests, NoLinkInItIsFollowed) {
    ASSERT_EQ(chmod(place.path("theirs/file").c_str(), 0755), 0);
    std::filesystem::create_symlink("../theirs/file", place.path("ours/link"));
    std::filesystem::create_directory_symlink("../theirs", place.path("ours/folder"));
    const OpenedFolder folder = open();
    EXPECT_EQ(folder->read("link", {.links = Links::follow}).error, std::errc::too_many_symbolic_link_levels);
    EXPECT_FALSE(folder->open("link"));
    EXPECT_TRUE(folder->stat("link")->isLink);
    EXPECT_FALSE(folder->isExecutable("link"));
    EXPECT_EQ(folder->openFolder("folder").error, std::errc::not_a_directory);
    EXPECT_EQ(folder->makeFolder("folder", 0700), std::errc::not_a_directory);
    EXPECT_FALSE(folder->write("link", "bytes", {})) << "the link itself is replaced";
    EXPECT_EQ(place.bytesOf("theirs/file"), "foreign");
    EXPECT_FALSE(folder->remove("folder"));
    EXPECT_TRUE(std::filesystem::exists(place.path("theirs/file")));
}

TEST_F(PosixFolderTests, MakesFoldersWhateverTheUsersMask) {
    const OpenedFolder folder = open();
    const mode_t mask = umask(0277);
    EXPECT_FALSE(folder->makeFolder("inner", 0755));
    umask(mask);
    const OpenedFolder inner = folder->openFolder("inner");
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner->stat()->mode, 0755U);
    EXPECT_FALSE(folder->makeFolder("inner", 0700)) << "one that is there already is no error";
    EXPECT_EQ(inner->stat()->mode, 0755U);
    EXPECT_FALSE(inner->setMode(0700));
    EXPECT_EQ(inner->stat()->mode, 0700U);
    EXPECT_TRUE(folder->makeFolder("file", 0700));
}

TEST_F(PosixFolderTests, MakesAndReadsLinks) {
    const OpenedFolder folder = open();
    EXPECT_FALSE(folder->makeLink("/somewhere/else", "link"));
    EXPECT_EQ(folder->linkTarget("link"), "/somewhere/else");
    EXPECT_FALSE(folder->linkTarget("file"));
    EXPECT_FALSE(folder->makeLink("/elsewhere", "link"));
    EXPECT_EQ(folder->linkTarget("link"), "/elsewhere");
}

TEST_F(PosixFolderTests, NeitherWaitsForAPipeNorReadsIt) {
    ASSERT_EQ(mkfifo(place.path("ours/pipe").c_str(), 0600), 0);
    EXPECT_EQ(open()->read("pipe", {}).error, std::errc::not_supported);
    EXPECT_FALSE(open()->open("pipe"));
}

} // namespace
} // namespace veslora
