// SPDX-License-Identifier: MIT
// The folder in which the program and the hook scripts meet, above all where somebody has put a link or a
// folder of another user in the place of one of ours.
#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Monitors/ClaudeStatusDirectory.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr Timestamp now = 1'800'000'000;
constexpr auto supportPath = "/home/me/.local/share/Veslora";
constexpr auto runtimePath = "/run/user/1000/veslora";
constexpr auto elsewhere = "/home/me/elsewhere";

class SupportDirectoryTest : public testing::Test {
  protected:
    void SetUp() override { disk.put(std::string(elsewhere) + "/note", "the user's"); }
    /// Puts a link to another folder of the user's in the place of one of ours.
    void linkAway(const std::string& path) {
        ASSERT_FALSE(disk.makeDirectory(path.substr(0, path.rfind('/')), 0700));
        ASSERT_FALSE(disk.makeLink(elsewhere, path));
    }
    [[nodiscard]] std::vector<std::string> namesElsewhere() { return *disk.list(elsewhere); }

    MemoryFiles disk;
    FakeProcesses processes;
    SupportDirectory support{disk, supportPath, runtimePath};
};

TEST_F(SupportDirectoryTest, MakesFoldersForOurUserAlone) {
    const OpenedFolder inner = support.createFolder("inner");
    ASSERT_TRUE(inner);
    EXPECT_EQ(inner->stat()->mode, 0700u);
    EXPECT_EQ(support.open()->stat()->mode, 0700u);
    EXPECT_TRUE(support.openFolder("inner"));
    EXPECT_EQ(support.openFolder("none").error, std::errc::no_such_file_or_directory);
}

TEST_F(SupportDirectoryTest, ALinkedSupportFolderIsLeftAlone) {
    linkAway(supportPath);
    EXPECT_EQ(support.create(), std::errc::not_a_directory);
    EXPECT_FALSE(support.open());
    EXPECT_FALSE(support.openFolder("inner"));
    EXPECT_FALSE(support.createFolder("inner"));
    support.show(processes, now).reset();
    EXPECT_THAT(namesElsewhere(), UnorderedElementsAre("note"));
    EXPECT_EQ(disk.stat(elsewhere, Links::refuse)->mode, 0755u);
}

TEST_F(SupportDirectoryTest, NoScriptIsInstalledThroughALink) {
    linkAway(supportPath);
    ClaudeHooks hooks(disk, support, "/home/me/.claude/settings.json", "/opt/veslora");
    EXPECT_THROW(hooks.install(), std::system_error);
    EXPECT_THAT(namesElsewhere(), UnorderedElementsAre("note"));
    EXPECT_FALSE(disk.exists("/home/me/.claude/settings.json"));
}

TEST_F(SupportDirectoryTest, AFolderOfAnotherUsersIsLeftAlone) {
    ASSERT_FALSE(disk.makeDirectory(supportPath, 0777));
    disk.giveAway(supportPath);
    EXPECT_EQ(support.create(), std::errc::permission_denied);
    support.show(processes, now).reset();
    EXPECT_THAT(*disk.list(supportPath), IsEmpty());
}

TEST_F(SupportDirectoryTest, ALinkedRuntimeFolderGetsNoHeartbeat) {
    linkAway(runtimePath);
    disk.put(std::string(elsewhere) + "/heartbeat", "the user's");
    support.show(processes, now).reset();
    EXPECT_EQ(disk.text(std::string(elsewhere) + "/heartbeat"), "the user's");
    EXPECT_FALSE(disk.exists(support.pathOf(SupportNames::heartbeat)));
}

TEST_F(SupportDirectoryTest, AHeartbeatThatLeadsElsewhereIsPutRight) {
    const auto presence = support.show(processes, now);
    ASSERT_FALSE(disk.makeLink("/home/me/elsewhere/note", support.pathOf(SupportNames::heartbeat)));
    support.writeHeartbeat(now + 2);
    EXPECT_EQ(disk.text(support.pathOf(SupportNames::heartbeat)), "1800000002");
    EXPECT_EQ(disk.text(std::string(elsewhere) + "/note"), "the user's");
}

TEST_F(SupportDirectoryTest, FilesBehindALinkedStatusFolderAreNeitherReadNorDeleted) {
    ASSERT_FALSE(support.create());
    disk.put(std::string(elsewhere) + "/gone.json", R"({"session_id":"gone"})");
    linkAway(support.pathOf(SupportNames::statusLineSnapshots));
    ClaudeStatusDirectory statuses(support);
    EXPECT_THAT(statuses.read(now + 3600, std::set<std::string>()), IsEmpty());
    EXPECT_THAT(namesElsewhere(), UnorderedElementsAre("note", "gone.json"));
}

TEST_F(SupportDirectoryTest, TheSignsOfLifeGoWithAProgramThatIsEndedFromOutside) {
    const auto presence = support.show(processes, now);
    support.writeHeartbeat(now + 2);
    EXPECT_EQ(disk.text(support.pathOf(SupportNames::processId)), "4711\npid:[4026531836]\n");
    disk.endProgram();
    EXPECT_FALSE(disk.exists(std::string(runtimePath) + "/heartbeat"));
    EXPECT_FALSE(disk.exists(support.pathOf(SupportNames::heartbeat)));
    EXPECT_FALSE(disk.exists(support.pathOf(SupportNames::processId)));
}

TEST_F(SupportDirectoryTest, AProgramThatHasStoppedRemovesNoSignsOfItsSuccessor) {
    support.show(processes, now).reset();
    disk.put(support.pathOf(SupportNames::processId), "4712\n");
    disk.endProgram();
    EXPECT_EQ(disk.text(support.pathOf(SupportNames::processId)), "4712\n");
}

TEST_F(SupportDirectoryTest, AProcessIdThatCannotBeWrittenLeavesNoneOfLongAgo) {
    ASSERT_FALSE(support.create());
    disk.put(support.pathOf(SupportNames::processId), "1234\npid:[4026531836]\n");
    FaultInjectingFiles files(disk);
    files.writeError = std::errc::no_space_on_device;
    SupportDirectory full(files, supportPath, runtimePath);
    const auto presence = full.show(processes, now);
    EXPECT_FALSE(disk.exists(support.pathOf(SupportNames::processId)));
}

} // namespace
} // namespace veslora
