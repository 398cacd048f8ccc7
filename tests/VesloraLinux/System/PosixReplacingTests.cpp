// SPDX-License-Identifier: MIT
// Replacing and removing a file that another program edits at the worst of moments.
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/PosixReplacing.h"
#include "tests/VesloraLinux/Support/OrdinaryUser.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>
#include <tuple>

namespace veslora {
namespace {

using PosixReplacing::Step;
using testing::AsOrdinaryUser;
using ::testing::Contains;
using ::testing::ElementsAre;
using testing::nobody;
using testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

constexpr std::array allSteps{Step::looking,  Step::exchanging, Step::comparing,
                              Step::removing, Step::givingBack, Step::checking};

/// A file, and another program that edits it.
class PosixReplacingTests : public ::testing::Test {
  protected:
    [[nodiscard]] std::string path() const { return place.path("settings"); }

    /// The ways in which programs change a file.
    void renameOver(const std::string& text) const {
        std::filesystem::rename(elsewhere.put("new", text), path());
    }
    void writeInPlace(const std::string& text) const { place.put("settings", text); }
    void removeAndMake(const std::string& text) const {
        unlink(path().c_str());
        place.put("settings", text);
    }
    using Edit = void (PosixReplacingTests::*)(const std::string&) const;
    static constexpr std::array edits{&PosixReplacingTests::renameOver, &PosixReplacingTests::writeInPlace,
                                      &PosixReplacingTests::removeAndMake};

    [[nodiscard]] std::vector<std::string> names() { return *files.list(place.path()); }
    /// What lies in the folder, under whatever name.
    [[nodiscard]] std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (const std::string& name : names()) {
            found.push_back(place.bytesOf(name));
        }
        return found;
    }
    [[nodiscard]] bool hasLeftovers() {
        return std::ranges::any_of(names(),
                                   [](const std::string& name) { return name.starts_with(".veslora-tmp."); });
    }

    TemporaryFolder place;
    TemporaryFolder elsewhere;
    PosixFiles files;
};

TEST_F(PosixReplacingTests, ReplacesWhatIsAsExpectedAndKeepsItsMode) {
    for (const bool canExchange : {true, false}) {
        writeInPlace("old");
        ASSERT_EQ(chmod(path().c_str(), 0640), 0);
        EXPECT_FALSE(PosixReplacing::replace(path(), "old", "new", {.canExchange = canExchange}));
        EXPECT_EQ(place.bytesOf("settings"), "new");
        EXPECT_EQ(files.stat(path(), Links::refuse)->mode, 0640U);
        EXPECT_THAT(names(), ElementsAre("settings"));
    }
}

TEST_F(PosixReplacingTests, MakesWhatIsNotThere) {
    for (const bool canExchange : {true, false}) {
        EXPECT_FALSE(PosixReplacing::replace(path(), std::nullopt, "new", {.canExchange = canExchange}));
        EXPECT_EQ(place.bytesOf("settings"), "new");
        EXPECT_EQ(files.stat(path(), Links::refuse)->mode, 0600U);
        EXPECT_THAT(names(), ElementsAre("settings"));
        unlink(path().c_str());
    }
}

TEST_F(PosixReplacingTests, RemovesWhatIsAsExpected) {
    for (const bool canExchange : {true, false}) {
        writeInPlace("old");
        EXPECT_EQ(PosixReplacing::remove(path(), "other", {.canExchange = canExchange}),
                  FileRefusal::changed);
        EXPECT_FALSE(PosixReplacing::remove(path(), "old", {.canExchange = canExchange}));
        EXPECT_TRUE(names().empty());
    }
}

TEST_F(PosixReplacingTests, WhatIsNotAsExpectedIsLeftAlone) {
    EXPECT_EQ(files.replaceIfUnchanged(path(), "old", "new"), FileRefusal::changed);
    EXPECT_EQ(files.removeIfUnchanged(path(), "old"), FileRefusal::changed);
    writeInPlace("older");
    EXPECT_EQ(files.replaceIfUnchanged(path(), "old", "new"), FileRefusal::changed);
    EXPECT_EQ(files.replaceIfUnchanged(path(), std::nullopt, "new"), FileRefusal::changed);
    EXPECT_EQ(files.removeIfUnchanged(path(), "old"), FileRefusal::changed);
    EXPECT_EQ(place.bytesOf("settings"), "older");
    unlink(path().c_str());
    elsewhere.put("target", "old");
    std::filesystem::create_symlink(elsewhere.path("target"), path());
    EXPECT_EQ(files.replaceIfUnchanged(path(), "old", "new"), FileRefusal::changed);
    EXPECT_EQ(files.removeIfUnchanged(path(), "old"), FileRefusal::changed);
    EXPECT_EQ(elsewhere.bytesOf("target"), "old");
    EXPECT_THAT(names(), ElementsAre("settings"));
}

TEST_F(PosixReplacingTests, NoEditBetweenTwoStepsIsLost) {
    int edited = 0;
    for (int round = 0; round < 12; ++round) {
        for (const Step step : allSteps) {
            for (const Edit edit : edits) {
                writeInPlace("old");
                const std::string text = "edit " + std::to_string(++edited);
                bool happened = false;
                const auto error = PosixReplacing::replace(path(), "old", "ours", {.before = [&](Step next) {
                                                               if (next == step && !happened) {
                                                                   happened = true;
                                                                   (this->*edit)(text);
                                                               }
                                                           }});
                if (!happened) {
                    EXPECT_FALSE(error);
                    EXPECT_EQ(place.bytesOf("settings"), "ours");
                    continue;
                }
                EXPECT_EQ(place.bytesOf("settings"), text) << "step " << static_cast<int>(step);
                // An edit of the new file needs no refusal.
                EXPECT_TRUE(error == FileRefusal::changed || (!error && step >= Step::comparing));
                EXPECT_THAT(names(), ElementsAre("settings"));
            }
        }
    }
    EXPECT_GE(edited, 200);
}

TEST_F(PosixReplacingTests, NoneOfTwoEditsIsLost) {
    for (const Step second : {Step::comparing, Step::removing, Step::givingBack, Step::checking}) {
        for (const Edit first : edits) {
            for (const Edit next : edits) {
                writeInPlace("old");
                const auto error = PosixReplacing::replace(path(), "old", "ours", {.before = [&](Step step) {
                                                               if (step == Step::exchanging) {
                                                                   (this->*first)("first edit");
                                                               } else if (step == second) {
                                                                   (this->*next)("second edit");
                                                               }
                                                           }});
                EXPECT_EQ(error, FileRefusal::changed);
                // After the first edit is back in its place, the second replaces it as it would without us.
                if (second != Step::checking) {
                    EXPECT_THAT(texts(), Contains("first edit"));
                }
                EXPECT_EQ(place.bytesOf("settings"), "second edit") << static_cast<int>(second);
                EXPECT_FALSE(hasLeftovers());
                for (const std::string& name : names()) {
                    unlink(place.path(name).c_str());
                }
            }
        }
    }
}

TEST_F(PosixReplacingTests, AFileThatWasRemovedStaysRemoved) {
    for (const Step step : allSteps) {
        writeInPlace("old");
        const auto error = PosixReplacing::replace(path(), "old", "ours", {.before = [&](Step next) {
                                                       if (next == step) {
                                                           unlink(path().c_str());
                                                       }
                                                   }});
        const bool happens = step < Step::givingBack;
        EXPECT_EQ(names().empty(), happens) << static_cast<int>(step);
        EXPECT_EQ(error == FileRefusal::changed, step < Step::comparing) << static_cast<int>(step);
    }
}

TEST_F(PosixReplacingTests, AnEditComesBackAlsoWhenOursWasRemovedMeanwhile) {
    writeInPlace("old");
    const auto error = PosixReplacing::replace(path(), "old", "ours", {.before = [&](Step step) {
                                                   if (step == Step::exchanging) {
                                                       renameOver("edit");
                                                   } else if (step == Step::givingBack) {
                                                       unlink(path().c_str());
                                                   }
                                               }});
    EXPECT_EQ(error, FileRefusal::changed);
    EXPECT_EQ(place.bytesOf("settings"), "edit");
    EXPECT_THAT(names(), ElementsAre("settings"));
}

TEST_F(PosixReplacingTests, AProgramThatStillHasTheFileOpenForWritingIsWaitedFor) {
    for (const Step step : {Step::looking, Step::exchanging}) {
        writeInPlace("old");
        int writer = -1;
        const auto error = PosixReplacing::replace(path(), "old", "ours", {.before = [&](Step next) {
                                                       if (next == step) {
                                                           writer = open(path().c_str(), O_WRONLY | O_APPEND);
                                                       }
                                                   }});
        EXPECT_EQ(error, FileRefusal::changed);
        ASSERT_EQ(write(writer, " and more", 9), 9);
        close(writer);
        EXPECT_EQ(place.bytesOf("settings"), "old and more") << static_cast<int>(step);
        EXPECT_THAT(names(), ElementsAre("settings"));
    }
}

TEST_F(PosixReplacingTests, WithoutAnExchangeTheLastLookStillFindsAnEdit) {
    for (const Step step : {Step::looking, Step::exchanging}) {
        for (const Edit edit : edits) {
            writeInPlace("old");
            const auto error = PosixReplacing::replace(path(), "old", "ours",
                                                       {.before =
                                                            [&](Step next) {
                                                                if (next == step) {
                                                                    (this->*edit)("edit");
                                                                }
                                                            },
                                                        .canExchange = false});
            EXPECT_EQ(error, FileRefusal::changed);
            EXPECT_EQ(place.bytesOf("settings"), "edit");
            EXPECT_THAT(names(), ElementsAre("settings"));
        }
    }
}

TEST_F(PosixReplacingTests, AFileThatSomebodyMakesMeanwhileIsNotReplaced) {
    for (const bool canExchange : {true, false}) {
        const auto error = PosixReplacing::replace(
            path(), std::nullopt, "ours",
            {.before = [&](Step) { writeInPlace("edit"); }, .canExchange = canExchange});
        EXPECT_EQ(error, FileRefusal::changed);
        EXPECT_THAT(texts(), ElementsAre("edit"));
        unlink(path().c_str());
    }
}

TEST_F(PosixReplacingTests, NoEditIsRemoved) {
    for (const Step step : allSteps) {
        for (const Edit edit : edits) {
            writeInPlace("old");
            bool happened = false;
            const auto error = PosixReplacing::remove(path(), "old", {.before = [&](Step next) {
                                                          if (next == step) {
                                                              happened = true;
                                                              (this->*edit)("edit");
                                                          }
                                                      }});
            if (happened) {
                EXPECT_EQ(place.bytesOf("settings"), "edit") << static_cast<int>(step);
                EXPECT_TRUE(error == FileRefusal::changed || (!error && step >= Step::comparing));
                EXPECT_THAT(names(), ElementsAre("settings"));
            } else {
                EXPECT_TRUE(names().empty());
            }
            unlink(path().c_str());
        }
    }
}

TEST_F(PosixReplacingTests, NeitherOfTwoEditsIsRemoved) {
    writeInPlace("old");
    const auto error = PosixReplacing::remove(path(), "old", {.before = [&](Step step) {
                                                  if (step == Step::exchanging) {
                                                      renameOver("first edit");
                                                  } else if (step == Step::givingBack) {
                                                      writeInPlace("second edit");
                                                  }
                                              }});
    EXPECT_EQ(error, FileRefusal::changed);
    EXPECT_EQ(place.bytesOf("settings"), "second edit");
    EXPECT_THAT(texts(), UnorderedElementsAre("first edit", "second edit"));
    EXPECT_FALSE(hasLeftovers());
}

/// Two programs at once, with nothing to keep them apart.
TEST_F(PosixReplacingTests, NoEditOfAThreadThatKnowsNothingOfUsIsLost) {
    writeInPlace("edit 0");
    std::atomic<bool> stops = false;
    std::thread replacing([&] {
        while (!stops) {
            const ReadResult read = files.read(path(), {});
            if (read) {
                std::ignore = files.replaceIfUnchanged(path(), read.bytes, read.bytes + "+");
            }
        }
    });
    // Whether the text is there, with at least so many of the other thread's marks behind it.
    const auto stands = [&](const std::string& text, std::size_t marks) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (std::chrono::steady_clock::now() < deadline) {
            const std::string found = place.bytesOf("settings");
            if (found.starts_with(text) && found.size() >= text.size() + marks &&
                found.find_first_not_of('+', text.size()) == std::string::npos) {
                return true;
            }
        }
        return false;
    };
    for (int number = 1; number <= 200; ++number) {
        const std::string text = "edit " + std::to_string(number) + ".";
        (this->*edits[static_cast<std::size_t>(number) % 2])(text);
        // Now and then only after a replacement, so that some are sure to happen.
        EXPECT_TRUE(stands(text, number % 4 == 0 ? 1 : 0)) << text;
    }
    stops = true;
    replacing.join();
    EXPECT_FALSE(hasLeftovers());
}

TEST_F(PosixReplacingTests, AHardLinkedFileIsRefused) {
    writeInPlace("old");
    ASSERT_EQ(link(path().c_str(), place.path("other").c_str()), 0);
    EXPECT_EQ(files.replaceIfUnchanged(path(), "old", "new"), FileRefusal::hasSecondName);
    EXPECT_EQ(files.removeIfUnchanged(path(), "old"), FileRefusal::hasSecondName);
    EXPECT_EQ(place.bytesOf("other"), "old");
    EXPECT_THAT(names(), UnorderedElementsAre("settings", "other"));
}

/// As `setfacl -m u:1234:r` writes it: version 2, then owner, a user, the group, the mask and the others,
/// each with its permissions and id.
std::string accessList() {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t permissions;
        std::uint32_t id;
    };
    constexpr std::uint32_t nobodyInParticular = 0xffffffff;
    const Entry entries[] = {{0x01, 6, nobodyInParticular},
                             {0x02, 4, 1234},
                             {0x04, 0, nobodyInParticular},
                             {0x10, 4, nobodyInParticular},
                             {0x20, 0, nobodyInParticular}};
    const std::uint32_t version = 2;
    std::string bytes(reinterpret_cast<const char*>(&version), sizeof version);
    return bytes.append(reinterpret_cast<const char*>(entries), sizeof entries);
}

std::string attributeOf(const std::string& path, const char* name) {
    char value[256];
    const ssize_t length = getxattr(path.c_str(), name, value, sizeof value);
    return length < 0 ? "none" : std::string(value, static_cast<std::size_t>(length));
}

bool setAttribute(const std::string& path, const char* name, const std::string& value) {
    return setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

TEST_F(PosixReplacingTests, KeepsTheUsersAttributesAndTheAccessList) {
    writeInPlace("old");
    if (!setAttribute(path(), "user.note", "mine") ||
        !setAttribute(path(), "system.posix_acl_access", accessList())) {
        GTEST_SKIP() << "this file system keeps none";
    }
    ASSERT_TRUE(setAttribute(path(), "user.empty", ""));
    const auto before = files.stat(path(), Links::refuse);
    ASSERT_FALSE(files.replaceIfUnchanged(path(), "old", "new"));
    EXPECT_EQ(attributeOf(path(), "user.note"), "mine");
    EXPECT_EQ(attributeOf(path(), "user.empty"), "");
    EXPECT_EQ(attributeOf(path(), "system.posix_acl_access"), accessList());
    EXPECT_EQ(files.stat(path(), Links::refuse)->mode, before->mode);
}

TEST_F(PosixReplacingTests, TheFoldersOwnAccessListGivesNobodyANewRight) {
    writeInPlace("old");
    if (!setAttribute(place.path(), "system.posix_acl_default", accessList())) {
        GTEST_SKIP() << "this file system keeps none";
    }
    ASSERT_FALSE(files.replaceIfUnchanged(path(), "old", "new"));
    EXPECT_EQ(attributeOf(path(), "system.posix_acl_access"), "none");
}

TEST_F(PosixReplacingTests, AnAccessListThatWouldServeAnotherGroupIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "needs a file of a group that the user is not in";
    }
    writeInPlace("old");
    ASSERT_EQ(chown(path().c_str(), nobody, 0), 0);
    if (!setAttribute(path(), "system.posix_acl_access", accessList())) {
        GTEST_SKIP() << "this file system keeps none";
    }
    {
        const AsOrdinaryUser user(place.path());
        EXPECT_EQ(files.replaceIfUnchanged(path(), "old", "new"), FileRefusal::losesAttributes);
    }
    EXPECT_THAT(texts(), ElementsAre("old"));
}

TEST_F(PosixReplacingTests, SweepsWhatAKilledProgramLeftAndNothingElse) {
    const std::vector<std::string> others{"tmp.0123456789ab",          ".veslora-tmp.",
                                          ".veslora-tmp.0123456789a",  ".veslora-tmp.0123456789abc",
                                          ".veslora-tmp.0123456789xy", ".veslora-tmp.notes"};
    for (const std::string& name : others) {
        place.put(name, "the user's");
    }
    place.put(".veslora-tmp.0123456789ab", "a copy");
    place.put(".veslora-tmp.ffffffffffff", "a copy");
    std::filesystem::create_symlink("tmp.0123456789ab", place.path(".veslora-tmp.00000000000a"));
    std::filesystem::create_directory(place.path(".veslora-tmp.00000000000b"));
    files.sweepLeftovers(path());
    std::vector<std::string> expected = others;
    expected.insert(expected.end(), {".veslora-tmp.00000000000a", ".veslora-tmp.00000000000b"});
    EXPECT_THAT(names(), ::testing::UnorderedElementsAreArray(expected));
}

TEST_F(PosixReplacingTests, WhatAnotherProgramOfOursIsAtWorkWithIsNotSwept) {
    for (const std::optional<std::string>& expected :
         {std::optional<std::string>("old"), std::optional<std::string>()}) {
        if (expected) {
            writeInPlace(*expected);
        }
        int sweeps = 0;
        EXPECT_FALSE(PosixReplacing::replace(path(), expected, "new", {.before = [&](Step) {
                                                 files.sweepLeftovers(path());
                                                 EXPECT_TRUE(hasLeftovers());
                                                 ++sweeps;
                                             }}));
        EXPECT_GT(sweeps, 0);
        EXPECT_EQ(place.bytesOf("settings"), "new");
        unlink(path().c_str());
    }
}

TEST_F(PosixReplacingTests, AFailureLeavesTheOldFileAndNothingElse) {
    {
        const AsOrdinaryUser user(place.path());
        ASSERT_FALSE(files.write(path(), "old", {}));
        ASSERT_EQ(chmod(place.path().c_str(), 0500), 0);
        EXPECT_EQ(files.replaceIfUnchanged(path(), "old", "new"), std::errc::permission_denied);
        EXPECT_EQ(files.removeIfUnchanged(path(), "old"), std::errc::permission_denied);
    }
    EXPECT_THAT(texts(), ElementsAre("old"));
}

} // namespace
} // namespace veslora
