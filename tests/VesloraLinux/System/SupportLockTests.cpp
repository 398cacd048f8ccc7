// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/SupportLock.h"
#include "tests/VesloraLinux/Support/OrdinaryUser.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>

namespace veslora {
namespace {

using ::testing::UnorderedElementsAre;

class SupportLockTests : public ::testing::Test {
  protected:
    /// Why it is unusable; absent where it is not.
    [[nodiscard]] std::optional<std::string> refusal(const std::string& directory) {
        const auto attempt = SupportLock::take(faulty, directory);
        const auto* unusable = std::get_if<SupportLock::Unusable>(&attempt);
        return unusable ? std::optional(unusable->reason) : std::nullopt;
    }
    [[nodiscard]] bool isTaken(const SupportLock::Attempt& attempt) const {
        return std::holds_alternative<SupportLock>(attempt);
    }

    testing::TemporaryFolder folder;
    PosixFiles files;
    FaultInjectingFiles faulty{files};
    std::string support = folder.path("data/Veslora");
};

TEST_F(SupportLockTests, MakesItsFolderPrivateAndLeavesNothingButTheLock) {
    const auto attempt = SupportLock::take(files, support);
    ASSERT_TRUE(isTaken(attempt));
    EXPECT_EQ(files.stat(support, Links::refuse)->mode, 0700U);
    EXPECT_EQ(files.stat(support + "/lock", Links::refuse)->mode, 0600U);
    EXPECT_THAT(*files.list(support), UnorderedElementsAre("lock"));
}

TEST_F(SupportLockTests, IsHeldUntilItIsDestroyed) {
    {
        const auto first = SupportLock::take(files, support);
        ASSERT_TRUE(isTaken(first));
        EXPECT_TRUE(std::holds_alternative<SupportLock::Held>(SupportLock::take(files, support)));
    }
    EXPECT_TRUE(isTaken(SupportLock::take(files, support)));
}

TEST_F(SupportLockTests, ClosesAFolderThatWasOpenToOthersAndOpensOneThatWasClosedToOurselves) {
    const testing::AsOrdinaryUser ordinary(folder.path());
    for (const mode_t mode : {0777U, 0500U}) {
        ASSERT_FALSE(files.makeDirectory(support, mode));
        ASSERT_FALSE(files.setMode(support, mode));
        EXPECT_TRUE(isTaken(SupportLock::take(files, support)));
        EXPECT_EQ(files.stat(support, Links::refuse)->mode, 0700U);
    }
}

TEST_F(SupportLockTests, RefusesWhatIsNoFolder) {
    folder.put("file", "");
    EXPECT_EQ(refusal(folder.path("file")), "it is not a folder");
    EXPECT_EQ(refusal(folder.path("file/Veslora")), "Not a directory");
    EXPECT_EQ(refusal("/dev/null/.local/share/Veslora"), "Not a directory");
}

TEST_F(SupportLockTests, RefusesALinkAndLeavesWhereItLeads) {
    ASSERT_FALSE(files.makeDirectory(folder.path("target"), 0755));
    ASSERT_FALSE(files.makeLink(folder.path("target"), folder.path("link")));
    ASSERT_FALSE(files.makeLink(folder.path("loop"), folder.path("loop")));
    ASSERT_FALSE(files.makeLink(folder.path("nowhere"), folder.path("dangling")));
    for (const char* name : {"link", "loop", "dangling"}) {
        EXPECT_EQ(refusal(folder.path(name)), "it is a link") << name;
    }
    EXPECT_THAT(*files.list(folder.path("target")), UnorderedElementsAre());
    EXPECT_EQ(files.stat(folder.path("target"), Links::refuse)->mode, 0755U);
    EXPECT_FALSE(files.stat(folder.path("nowhere"), Links::refuse));
    EXPECT_EQ(refusal(folder.path("loop/Veslora")), "Too many levels of symbolic links");
}

TEST_F(SupportLockTests, RefusesAnotherUsersFolder) {
    if (geteuid() != 0) {
        EXPECT_EQ(refusal("/"), "it belongs to another user");
        return;
    }
    ASSERT_FALSE(files.makeDirectory(support, 0777));
    ASSERT_EQ(chown(support.c_str(), testing::nobody, testing::nobody), 0);
    EXPECT_EQ(refusal(support), "it belongs to another user");
    EXPECT_THAT(*files.list(support), UnorderedElementsAre());
}

TEST_F(SupportLockTests, RefusesAHomeInWhichNothingCanBeMade) {
    const testing::AsOrdinaryUser ordinary(folder.path());
    ASSERT_FALSE(files.setMode(folder.path(), 0500));
    EXPECT_EQ(refusal(support), "Permission denied");
    ASSERT_FALSE(files.setMode(folder.path(), 0700));
}

TEST_F(SupportLockTests, FollowsNoLinkInPlaceOfTheLock) {
    ASSERT_FALSE(files.makeDirectory(support, 0700));
    ASSERT_FALSE(files.makeLink(folder.path("target"), support + "/lock"));
    EXPECT_EQ(refusal(support), "Too many levels of symbolic links");
    EXPECT_FALSE(files.stat(folder.path("target"), Links::refuse));
}

TEST_F(SupportLockTests, RefusesAFullDiskAndLetsGoOfTheLock) {
    ASSERT_FALSE(refusal(support));
    // The folder is made, opened, looked at and opened once more; then a file is written and removed.
    ASSERT_EQ(faulty.operations(), 6);
    constexpr int write = 5;
    faulty.failOperation(write, std::errc::no_space_on_device);
    EXPECT_EQ(refusal(support), "No space left on device");
    EXPECT_TRUE(isTaken(SupportLock::take(files, support)));
}

} // namespace
} // namespace veslora
