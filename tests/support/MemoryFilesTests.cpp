// SPDX-License-Identifier: MIT
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace veslora;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

class MemoryFilesTest : public testing::Test {
  protected:
    MemoryFiles files;

    void SetUp() override { ASSERT_FALSE(files.makeDirectory("/home/user", 0755)); }

    std::error_code readError(const std::string& path, const ReadOptions& options = {}) {
        return files.read(path, options).error;
    }
};

} // namespace

TEST_F(MemoryFilesTest, WritesAndReadsAFile) {
    EXPECT_FALSE(files.write("/home/user/note", "text", {}));
    const ReadResult result = files.read("/home/user/note", {});
    EXPECT_TRUE(result);
    EXPECT_EQ(result.bytes, "text");
    EXPECT_EQ(files.text("/home/user/note"), "text");
}

TEST_F(MemoryFilesTest, NewFileIsPrivateAndAReplacedOneKeepsItsMode) {
    EXPECT_FALSE(files.write("/home/user/new", "", {}));
    EXPECT_EQ(files.stat("/home/user/new", Links::refuse)->mode, 0600U);
    files.put("/home/user/old", "", 0640);
    EXPECT_FALSE(files.write("/home/user/old", "x", {}));
    EXPECT_EQ(files.stat("/home/user/old", Links::refuse)->mode, 0640U);
    EXPECT_FALSE(files.write("/home/user/old", "x", {.mode = 0755}));
    EXPECT_EQ(files.stat("/home/user/old", Links::refuse)->mode, 0755U);
}

TEST_F(MemoryFilesTest, ReplacedFileIsANewOneAndARewrittenOneIsNot) {
    files.put("/home/user/note", "one");
    const auto before = files.stat("/home/user/note", Links::refuse);
    files.clock += 5;
    files.rewrite("/home/user/note", "two!");
    const auto rewritten = files.stat("/home/user/note", Links::refuse);
    EXPECT_EQ(rewritten->inode, before->inode);
    EXPECT_EQ(rewritten->size, 4);
    EXPECT_EQ(rewritten->modified, before->modified + 5);
    EXPECT_FALSE(files.write("/home/user/note", "three", {}));
    EXPECT_NE(files.stat("/home/user/note", Links::refuse)->inode, before->inode);
}

TEST_F(MemoryFilesTest, ParentMustBeADirectory) {
    EXPECT_EQ(files.write("/home/nobody/note", "", {}), std::errc::no_such_file_or_directory);
    files.put("/home/user/note", "");
    EXPECT_EQ(files.write("/home/user/note/inner", "", {}), std::errc::not_a_directory);
    EXPECT_EQ(files.write("/home/user", "", {}), std::errc::is_a_directory);
}

TEST_F(MemoryFilesTest, ReadRefusesWhatIsNoPlainFileOfOurs) {
    EXPECT_EQ(readError("/home/user/nothing"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(readError("/home/user"), std::errc::is_a_directory);
    files.putSpecial("/home/user/pipe");
    EXPECT_EQ(readError("/home/user/pipe"), std::errc::not_supported);
    files.put("/home/user/theirs", "secret");
    files.giveAway("/home/user/theirs");
    EXPECT_EQ(readError("/home/user/theirs"), std::errc::permission_denied);
    EXPECT_FALSE(readError("/home/user/theirs", {.owners = Owners::anyone}));
    files.put("/home/user/closed", "", 0200);
    EXPECT_EQ(readError("/home/user/closed"), std::errc::permission_denied);
}

TEST_F(MemoryFilesTest, ReadRefusesLongerFilesThanItsCap) {
    files.put("/home/user/note", "12345");
    EXPECT_FALSE(readError("/home/user/note", {.cap = 5}));
    EXPECT_EQ(readError("/home/user/note", {.cap = 4}), std::errc::file_too_large);
}

TEST_F(MemoryFilesTest, LinksAreFollowedOnlyOnDemand) {
    files.put("/home/user/real", "text");
    EXPECT_FALSE(files.makeLink("real", "/home/user/link"));
    EXPECT_EQ(readError("/home/user/link"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(files.read("/home/user/link", {.links = Links::follow}).bytes, "text");
    EXPECT_TRUE(files.stat("/home/user/link", Links::refuse)->isLink);
    EXPECT_TRUE(files.stat("/home/user/link", Links::follow)->isRegular);
    EXPECT_EQ(files.resolve("/home/user/link"), "/home/user/real");
}

TEST_F(MemoryFilesTest, WriteReplacesALinkItself) {
    files.put("/home/user/real", "old");
    EXPECT_FALSE(files.makeLink("/home/user/real", "/home/user/link"));
    EXPECT_FALSE(files.write("/home/user/link", "new", {}));
    EXPECT_EQ(files.text("/home/user/real"), "old");
    EXPECT_EQ(files.text("/home/user/link"), "new");
}

TEST_F(MemoryFilesTest, LinkedDirectoriesLeadTheirWay) {
    EXPECT_FALSE(files.makeDirectory("/data/store", 0700));
    EXPECT_FALSE(files.makeLink("../../data", "/home/user/data"));
    EXPECT_FALSE(files.write("/home/user/data/store/note", "text", {}));
    EXPECT_EQ(files.text("/data/store/note"), "text");
    EXPECT_THAT(*files.list("/home/user/data"), UnorderedElementsAre("store"));
}

TEST_F(MemoryFilesTest, ResolvesWhatIsNotThereYetAndGivesUpOnCircles) {
    EXPECT_FALSE(files.makeLink("later/file", "/home/user/link"));
    EXPECT_EQ(files.resolve("/home/user/link"), "/home/user/later/file");
    EXPECT_FALSE(files.makeLink("b", "/home/user/a"));
    EXPECT_FALSE(files.makeLink("a", "/home/user/b"));
    EXPECT_EQ(files.resolve("/home/user/a"), "/home/user/a");
    EXPECT_EQ(files.stat("/home/user/a", Links::follow), std::nullopt);
}

TEST_F(MemoryFilesTest, ListsTheNamesInADirectory) {
    files.put("/home/user/one", "");
    files.put("/home/user/folder/two", "");
    EXPECT_THAT(*files.list("/home/user"), UnorderedElementsAre("one", "folder"));
    EXPECT_THAT(*files.list("/"), UnorderedElementsAre("home"));
    EXPECT_EQ(files.list("/home/user/one"), std::nullopt);
    EXPECT_EQ(files.list("/nowhere"), std::nullopt);
}

TEST_F(MemoryFilesTest, RemovesFilesAndLinksAlone) {
    files.put("/home/user/real", "");
    EXPECT_FALSE(files.makeLink("real", "/home/user/link"));
    EXPECT_FALSE(files.remove("/home/user/link"));
    EXPECT_TRUE(files.exists("/home/user/real"));
    EXPECT_FALSE(files.remove("/home/user/real"));
    EXPECT_EQ(files.remove("/home/user/real"), std::errc::no_such_file_or_directory);
    EXPECT_EQ(files.remove("/home/user"), std::errc::is_a_directory);
    EXPECT_THAT(*files.list("/home/user"), IsEmpty());
}

TEST_F(MemoryFilesTest, MakesMissingParentsAndLeavesTheRest) {
    EXPECT_FALSE(files.makeDirectory("/home/user/a/b", 0700));
    EXPECT_EQ(files.stat("/home/user/a", Links::refuse)->mode, 0700U);
    EXPECT_FALSE(files.makeDirectory("/home/user", 0700));
    EXPECT_EQ(files.stat("/home/user", Links::refuse)->mode, 0755U);
    files.put("/home/user/note", "");
    EXPECT_EQ(files.makeDirectory("/home/user/note/x", 0700), std::errc::not_a_directory);
}

TEST_F(MemoryFilesTest, ChangesModesAndKnowsWhatCanBeRun) {
    files.put("/home/user/script", "", 0644);
    EXPECT_FALSE(files.isExecutable("/home/user/script"));
    EXPECT_FALSE(files.setMode("/home/user/script", 0755));
    EXPECT_TRUE(files.isExecutable("/home/user/script"));
    EXPECT_FALSE(files.isExecutable("/home/user")) << "A directory can't be run.";
    EXPECT_EQ(files.setMode("/nowhere", 0755), std::errc::no_such_file_or_directory);
}

TEST_F(MemoryFilesTest, CountsWhatGoesThroughTheSeam) {
    files.put("/home/user/theirs", "");
    EXPECT_EQ(files.writes(), 0);
    EXPECT_FALSE(files.write("/home/user/note", "", {}));
    EXPECT_FALSE(files.write("/home/user/note", "", {.sync = Sync::yes}));
    EXPECT_TRUE(files.write("/nowhere/note", "", {}));
    EXPECT_EQ(files.writes(), 2);
    EXPECT_EQ(files.syncedWrites(), 1);
}

TEST_F(MemoryFilesTest, AnAppendedFileStaysTheSame) {
    files.append("/home/user/log", "one\n");
    const auto before = files.stat("/home/user/log", Links::refuse);
    files.append("/home/user/log", "two\n");
    EXPECT_EQ(files.text("/home/user/log"), "one\ntwo\n");
    EXPECT_EQ(files.stat("/home/user/log", Links::refuse)->inode, before->inode);
}

TEST_F(MemoryFilesTest, MovesFilesAndWholeDirectories) {
    files.put("/home/user/a/log", "text");
    files.put("/home/user/ab", "other");
    const auto before = files.stat("/home/user/a/log", Links::refuse);
    files.move("/home/user/a", "/home/user/b");
    EXPECT_FALSE(files.exists("/home/user/a"));
    EXPECT_EQ(files.text("/home/user/ab"), "other");
    EXPECT_EQ(files.text("/home/user/b/log"), "text");
    EXPECT_EQ(files.stat("/home/user/b/log", Links::refuse)->inode, before->inode);
    files.removeTree("/home/user/b");
    EXPECT_FALSE(files.exists("/home/user/b/log"));
    EXPECT_TRUE(files.exists("/home/user/ab"));
}

TEST_F(MemoryFilesTest, ReadsPiecesOfAnOpenFile) {
    files.put("/home/user/log", "0123456789");
    const auto reader = files.open("/home/user/log");
    ASSERT_TRUE(reader);
    char bytes[4] = {};
    EXPECT_EQ(reader->read(bytes, 4, 8), 2U);
    EXPECT_EQ(std::string(bytes, 2), "89");
    EXPECT_EQ(reader->read(bytes, 4, 10), 0U);
    EXPECT_EQ(reader->stat()->size, 10);
    EXPECT_FALSE(files.open("/home/user"));
    files.giveAway("/home/user/log");
    EXPECT_FALSE(files.open("/home/user/log"));
}

TEST_F(MemoryFilesTest, AnOpenedFolderReachesWhatLiesInIt) {
    files.put("/home/user/box/file", "text");
    const OpenedFolder folder = files.openFolder("/home/user/box");
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->read("file", {}).bytes, "text");
    EXPECT_FALSE(folder->write("new", "bytes", {.mode = 0755}));
    EXPECT_TRUE(folder->isExecutable("new"));
    EXPECT_EQ(files.text("/home/user/box/new"), "bytes");
    EXPECT_TRUE(folder->open("new"));
    EXPECT_THAT(*folder->list(), UnorderedElementsAre("file", "new"));
    EXPECT_EQ(folder->listSome(1)->size(), 1U);
    EXPECT_EQ(folder->listSome(3), folder->list());
    EXPECT_FALSE(folder->remove("file"));
    EXPECT_FALSE(folder->stat("file"));
    EXPECT_FALSE(folder->makeFolder("inner", 0700));
    EXPECT_FALSE(folder->makeFolder("inner", 0755)) << "one that is there already is no error";
    EXPECT_EQ(folder->openFolder("inner")->stat()->mode, 0700U);
    EXPECT_FALSE(folder->setMode(0700));
    EXPECT_EQ(folder->stat()->mode, 0700U);
    EXPECT_FALSE(folder->makeLink("/target", "link"));
    EXPECT_EQ(folder->linkTarget("link"), "/target");
}

TEST_F(MemoryFilesTest, OnlyOurOwnFoldersAreOpened) {
    files.put("/home/user/box/file", "text");
    EXPECT_FALSE(files.makeLink("/home/user/box", "/home/user/link"));
    EXPECT_EQ(files.openFolder("/home/user/link").error, std::errc::not_a_directory);
    EXPECT_FALSE(files.openFolder("/home/user/link/"));
    EXPECT_FALSE(files.makeDirectory("/home/user/box/inner", 0700));
    EXPECT_TRUE(files.openFolder("/home/user/link/inner")) << "a link above it is followed";
    EXPECT_EQ(files.openFolder("/home/user/box/file").error, std::errc::not_a_directory);
    EXPECT_EQ(files.openFolder("/home/user/none").error, std::errc::no_such_file_or_directory);
    files.giveAway("/home/user/box");
    EXPECT_EQ(files.openFolder("/home/user/box").error, std::errc::permission_denied);
}

TEST_F(MemoryFilesTest, AnOpenedFolderStaysTheSameWhenALinkTakesItsPlace) {
    files.put("/home/user/box/file", "ours");
    files.put("/home/user/other/file", "theirs");
    const OpenedFolder folder = files.openFolder("/home/user/box");
    files.move("/home/user/box", "/home/user/moved");
    EXPECT_FALSE(files.makeLink("/home/user/other", "/home/user/box"));
    EXPECT_EQ(folder->read("file", {}).bytes, "ours");
    EXPECT_FALSE(folder->remove("file"));
    EXPECT_EQ(files.text("/home/user/other/file"), "theirs");
    files.removeTree("/home/user/moved");
    EXPECT_EQ(folder->write("file", "", {}), std::errc::no_such_file_or_directory);
    EXPECT_THAT(*folder->list(), IsEmpty());
}

TEST_F(MemoryFilesTest, NoNameOrLinkLeadsOutOfAnOpenedFolder) {
    files.put("/home/user/box/file", "ours");
    files.put("/home/user/secret", "theirs");
    EXPECT_FALSE(files.makeLink("/home/user/secret", "/home/user/box/link"));
    const OpenedFolder folder = files.openFolder("/home/user/box");
    for (const char* name : {"../secret", "/home/user/secret", ".", "..", "./file", ""}) {
        EXPECT_EQ(folder->read(name, {}).error, std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->write(name, "", {}), std::errc::invalid_argument) << name;
        EXPECT_EQ(folder->remove(name), std::errc::invalid_argument) << name;
        EXPECT_FALSE(folder->stat(name)) << name;
        EXPECT_FALSE(folder->open(name)) << name;
    }
    EXPECT_EQ(folder->read("link", {.links = Links::follow}).error, std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(folder->openFolder("link").error, std::errc::not_a_directory);
}
