// SPDX-License-Identifier: MIT
// The desktop's look as its configuration files tell it, while they come, change and go.
#include "VesloraLinux/System/AppearanceFiles.h"
#include "tests/support/AppearancePrinting.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace veslora {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

class AppearanceFilesTest : public ::testing::Test {
  protected:
    AppearanceFilesTest() { disk.makeDirectory(home, 0700); }

    void follow() {
        files.follow([this](const DesktopAppearance& appearance) { told.push_back(appearance); });
    }
    /// Another program replaces a file in that folder.
    void put(const std::string& folder, const std::string& name, const std::string& text) {
        disk.put(folder + "/" + name, text);
        watches.fire(folder);
    }

    const std::string home = "/home/me/.config";
    const std::string gtk4 = home + "/gtk-4.0";
    const std::string gtk3 = home + "/gtk-3.0";
    MemoryFiles disk;
    FakeDirectoryWatcher watches;
    std::vector<DesktopAppearance> told;
    AppearanceFiles files{disk, watches, home};
};

TEST_F(AppearanceFilesTest, WithoutFilesNothingIsTold) {
    EXPECT_THAT(watches.watched(), IsEmpty());
    follow();
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told.back(), DesktopAppearance());
}

TEST_F(AppearanceFilesTest, AFileThatPrefersNothingIsHeardAllTheSame) {
    disk.put(gtk4 + "/settings.ini", "[Settings]\n");
    follow();
    EXPECT_TRUE(told.back().isTold);
    EXPECT_EQ(told.back().colorScheme, ColorScheme::none);
}

TEST_F(AppearanceFilesTest, TheNewerToolkitIsHeardFirst) {
    disk.put(gtk4 + "/settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=1\n");
    disk.put(gtk3 + "/settings.ini", "[Settings]\ngtk-theme-name=HighContrast\n");
    disk.put(home + "/kdeglobals", "[General]\nColorScheme=BreezeLight\n[KDE]\nAnimationDurationFactor=0\n");
    follow();
    EXPECT_EQ(
        told.back(),
        (DesktopAppearance{
            .isTold = true, .colorScheme = ColorScheme::dark, .highContrast = true, .reducedMotion = true}));
}

TEST_F(AppearanceFilesTest, FollowsChanges) {
    disk.put(home + "/kdeglobals", "[General]\nColorScheme=BreezeLight\n");
    follow();
    EXPECT_EQ(told.back().colorScheme, ColorScheme::light);
    put(home, "kdeglobals", "[General]\nColorScheme=BreezeDark\n");
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told.back().colorScheme, ColorScheme::dark);
    disk.remove(home + "/kdeglobals");
    watches.fire(home, DirectoryChanges::any);
    EXPECT_EQ(told.back(), DesktopAppearance());
}

TEST_F(AppearanceFilesTest, AFolderThatComesLaterIsFollowed) {
    watches.refused = {gtk4, gtk3};
    follow();
    EXPECT_THAT(watches.watched(), UnorderedElementsAre(home));
    watches.refused.erase(gtk4);
    disk.makeDirectory(gtk4, 0700);
    watches.fire(home, DirectoryChanges::any);
    EXPECT_THAT(watches.watched(), UnorderedElementsAre(home, gtk4));
    put(gtk4, "settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=1\n");
    EXPECT_EQ(told.back().colorScheme, ColorScheme::dark);
}

TEST_F(AppearanceFilesTest, AFolderThatGoesAndComesBackIsFollowed) {
    disk.makeDirectory(gtk4, 0700);
    follow();
    watches.refused = {gtk4};
    watches.end(gtk4);
    watches.refused.clear();
    watches.fire(home, DirectoryChanges::any);
    put(gtk4, "settings.ini", "[Settings]\ngtk-enable-animations=0\n");
    EXPECT_TRUE(told.back().reducedMotion);
}

TEST_F(AppearanceFilesTest, WhatChangesWhileTheWatchIsMadeIsNotMissed) {
    watches.beforeWatch = [this](const std::string& directory) {
        if (directory == home) {
            disk.put(home + "/kdeglobals", "[General]\nColorScheme=BreezeDark\n");
        }
    };
    follow();
    EXPECT_EQ(told.back().colorScheme, ColorScheme::dark);
}

TEST_F(AppearanceFilesTest, OnceStoppedItWatchesNothing) {
    disk.put(home + "/kdeglobals", "[General]\nColorScheme=BreezeDark\n");
    follow();
    files.stop();
    EXPECT_THAT(watches.watched(), IsEmpty());
    put(home, "kdeglobals", "");
    EXPECT_THAT(told, SizeIs(1));
}

TEST_F(AppearanceFilesTest, OnlyOrdinaryFilesOfReasonableSizeAreRead) {
    const std::string path = home + "/kdeglobals";
    const std::string text = "[General]\nColorScheme=BreezeDark\n";
    disk.put(path, text + std::string(std::size_t{1} << 20, '#'));
    follow();
    EXPECT_EQ(told.back(), DesktopAppearance()) << "too large";
    disk.remove(path);
    disk.putSpecial(path);
    watches.fire(home);
    EXPECT_EQ(told.back(), DesktopAppearance()) << "a pipe";
    disk.remove(path);
    disk.put(path, text);
    disk.giveAway(path);
    watches.fire(home);
    EXPECT_EQ(told.back(), DesktopAppearance()) << "another user's";
}

TEST_F(AppearanceFilesTest, ALinkIsFollowed) {
    disk.put("/home/me/dotfiles/kdeglobals", "[General]\nColorScheme=BreezeDark\n");
    disk.makeLink("/home/me/dotfiles/kdeglobals", home + "/kdeglobals");
    follow();
    EXPECT_EQ(told.back().colorScheme, ColorScheme::dark);
}

} // namespace
} // namespace veslora
