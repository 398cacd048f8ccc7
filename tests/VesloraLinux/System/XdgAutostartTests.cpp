// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/XdgAutostart.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace veslora {
namespace {

const std::string entryName = "autostart/org.veslora.Veslora.desktop";

/// A home with a program, and a system beside it.
class XdgAutostartTests : public ::testing::Test {
  protected:
    XdgAutostartTests() {
        for (const char* folder : {"bin", "etc/autostart", "config"}) {
            std::filesystem::create_directories(home.path(folder));
        }
        home.put("bin/veslora", "ELF");
        std::filesystem::permissions(home.path("bin/veslora"), std::filesystem::perms::owner_all);
    }

    void putUsers(const std::string& text) const {
        std::filesystem::create_directories(home.path("config/autostart"));
        home.put("config/" + entryName, text);
    }
    void putSystems(const std::string& text) const { home.put("etc/" + entryName, text); }
    [[nodiscard]] bool hasUsers() const { return std::filesystem::exists(place()); }
    [[nodiscard]] std::string place() const { return home.path("config/" + entryName); }

    testing::TemporaryFolder home;
    PosixFiles files;
    XdgAutostart item{files,
                      {.configuration = home.path("config"),
                       .systemWide = {home.path("gone"), home.path("etc")},
                       .desktops = {"GNOME"},
                       .executables = {"/gone", home.path("bin")},
                       .executable = home.path("bin/veslora")}};
    const std::string entry =
        "[Desktop Entry]\nType=Application\nExec=" + home.path("bin/veslora") + " --quiet\n";
};

TEST_F(XdgAutostartTests, OnAndOffLeavesNothingBehind) {
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(item.enable());
    EXPECT_TRUE(item.isEnabled());
    EXPECT_TRUE(hasUsers());
    EXPECT_FALSE(item.disable());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(hasUsers());
    EXPECT_EQ(item.place(), place());
}

TEST_F(XdgAutostartTests, AnEntryThatAToolSwitchedOffIsOffAndComesOnAgain) {
    putUsers(entry + "Hidden=true\nX-GNOME-Autostart-Delay=5\n");
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(item.enable());
    EXPECT_TRUE(item.isEnabled());
    EXPECT_NE(home.bytesOf("config/" + entryName).find("Delay=5"), std::string::npos);
}

TEST_F(XdgAutostartTests, AnEntryOfTheUsersOwnIsHiddenAndNotRemoved) {
    putUsers(entry);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_FALSE(item.disable());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_NE(home.bytesOf("config/" + entryName).find("--quiet"), std::string::npos);
}

TEST_F(XdgAutostartTests, AnEntryOfTheSystemsIsHiddenByOneOfTheUsers) {
    putSystems(entry);
    EXPECT_TRUE(item.isEnabled());
    EXPECT_FALSE(item.enable());
    EXPECT_FALSE(hasUsers()) << "nothing was to do";
    EXPECT_FALSE(item.disable());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(home.bytesOf("etc/" + entryName), entry);
    EXPECT_FALSE(item.enable());
    EXPECT_TRUE(item.isEnabled());
}

TEST_F(XdgAutostartTests, AProgramThatIsGoneIsNotStarted) {
    putUsers("[Desktop Entry]\nType=Application\nExec=/gone/veslora\n");
    EXPECT_FALSE(item.isEnabled());
    EXPECT_FALSE(item.enable());
    EXPECT_TRUE(item.isEnabled());
    putUsers("[Desktop Entry]\nType=Application\nExec=veslora\n");
    EXPECT_TRUE(item.isEnabled()) << "found along the path";
    putUsers("[Desktop Entry]\nType=Application\nExec=veslora-of-old\n");
    EXPECT_FALSE(item.isEnabled());
}

TEST_F(XdgAutostartTests, ALinkToTheEntryStays) {
    std::filesystem::create_directories(home.path("config/autostart"));
    home.put("dotfiles.desktop", entry + "Hidden=true\n");
    std::filesystem::create_symlink(home.path("dotfiles.desktop"), place());
    EXPECT_FALSE(item.enable());
    EXPECT_TRUE(item.isEnabled());
    EXPECT_TRUE(std::filesystem::is_symlink(place()));
    EXPECT_EQ(home.bytesOf("dotfiles.desktop").find("Hidden"), std::string::npos);
}

TEST_F(XdgAutostartTests, StartsTheProgramByTheNameThatAShellFinds) {
    std::filesystem::create_directories(home.path("lib"));
    std::filesystem::rename(home.path("bin/veslora"), home.path("lib/veslora"));
    std::filesystem::create_symlink(home.path("lib/veslora"), home.path("bin/veslora"));
    XdgAutostart installed(files, {.configuration = home.path("config"),
                                   .systemWide = {},
                                   .desktops = {},
                                   .executables = {"/gone", home.path("bin")},
                                   .executable = home.path("lib/veslora")});
    EXPECT_FALSE(installed.enable());
    EXPECT_NE(home.bytesOf("config/" + entryName).find("Exec=" + home.path("bin/veslora") + "\n"),
              std::string::npos);
    EXPECT_TRUE(installed.isEnabled());
    EXPECT_FALSE(installed.disable());
    EXPECT_FALSE(hasUsers());
}

TEST_F(XdgAutostartTests, WhatCannotBeWrittenIsToldAndChangesNothing) {
    home.put("config/autostart", "in the way");
    EXPECT_EQ(item.enable(), std::errc::not_a_directory);
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(home.bytesOf("config/autostart"), "in the way");
}

TEST_F(XdgAutostartTests, AnEntryThatIsNoFileOrHugeIsLeftAlone) {
    std::filesystem::create_directories(place());
    EXPECT_FALSE(item.isEnabled());
    EXPECT_TRUE(item.enable());
    EXPECT_TRUE(item.disable());
    EXPECT_TRUE(std::filesystem::is_directory(place()));
    std::filesystem::remove(place());
    putUsers(entry + std::string(100000, '#'));
    EXPECT_FALSE(item.isEnabled());
    EXPECT_EQ(item.enable(), std::errc::file_too_large);
}

} // namespace
} // namespace veslora
