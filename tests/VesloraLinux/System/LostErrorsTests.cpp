// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LostErrors.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "tests/VesloraLinux/Support/FewDescriptors.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/support/OneLine.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace veslora {
namespace {

using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::oneLine;

class LostErrorsTests : public ::testing::Test {
  protected:
    /// A link that leads to itself.
    [[nodiscard]] std::string makeLoop(const std::string& name) const {
        std::filesystem::create_symlink(folder.path(name), folder.path(name));
        return folder.path(name);
    }

    testing::TemporaryFolder folder;
    PosixFiles files;
};

TEST_F(LostErrorsTests, AFolderThatCannotBeListedIsToldOfOnceUntilItCan) {
    const LogRecorder recorder;
    const std::string path = makeLoop("loop");
    for (int look = 0; look < 3; ++look) {
        EXPECT_FALSE(files.list(path));
    }
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", path, ELOOP));
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_TRUE(files.list(path));
    std::filesystem::remove(path);
    EXPECT_FALSE(files.list(makeLoop("loop")));
    EXPECT_EQ(recorder.warnings().size(), 2U);
}

TEST_F(LostErrorsTests, ALinkInTheWayOfAFileIsToldOf) {
    const LogRecorder recorder;
    const std::string path = folder.path("link");
    std::filesystem::create_symlink(folder.put("file", "text"), path);
    EXPECT_EQ(files.open(path), nullptr);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", path, ELOOP));
}

TEST_F(LostErrorsTests, AFolderInThePlaceOfAFileIsToldOf) {
    const LogRecorder recorder;
    EXPECT_EQ(files.open(folder.path()), nullptr);
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", folder.path(), EISDIR));
}

TEST_F(LostErrorsTests, ALookThatFailsIsToldOf) {
    const LogRecorder recorder;
    const std::string path = folder.path(std::string(300, 'n'));
    EXPECT_FALSE(files.stat(path, Links::refuse));
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", path, ENAMETOOLONG));
}

TEST_F(LostErrorsTests, AFolderThatIsHeldOpenIsNamedByItsPath) {
    const LogRecorder recorder;
    const OpenedFolder opened = files.openFolder(folder.path());
    ASSERT_TRUE(opened);
    const testing::FewDescriptors few;
    EXPECT_FALSE(opened->list());
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", folder.path(), EMFILE));
}

TEST_F(LostErrorsTests, WhatIsNotThereIsNoFailure) {
    const LogRecorder recorder;
    EXPECT_FALSE(files.stat(folder.path("none"), Links::refuse));
    EXPECT_FALSE(files.list(folder.path("none")));
    EXPECT_EQ(files.open(folder.path("none")), nullptr);
    EXPECT_THAT(recorder.lines(), IsEmpty());
}

TEST_F(LostErrorsTests, ATranscriptsFolderIsNotNamed) {
    const LogRecorder recorder;
    std::filesystem::create_directory(folder.path("projects"));
    EXPECT_FALSE(files.list(makeLoop("projects/-home-user-secret")));
    EXPECT_THAT(recorder.warnings(), oneLine("veslora.system", folder.path("projects/..."), ELOOP));
}

TEST_F(LostErrorsTests, NothingIsSaidUnaskedNorLeftUnsaidLater) {
    const std::string path = makeLoop("loop");
    {
        const LogRecorder silent(LogRecorder::Categories::byDefault);
        EXPECT_FALSE(files.list(path));
        EXPECT_THAT(silent.lines(), IsEmpty());
    }
    const LogRecorder recorder;
    EXPECT_FALSE(files.list(path));
    EXPECT_EQ(recorder.warnings().size(), 1U);
}

} // namespace
} // namespace veslora
