// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/LoginItemManager.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(LoginItemManagerTests, BeginsWithWhatIs) {
    FakeLoginItem item;
    item.isOn = true;
    const LoginItemManager manager(item);
    EXPECT_TRUE(manager.isEnabled());
    EXPECT_EQ(manager.errorMessage(), "");
}

TEST(LoginItemManagerTests, AFailureIsToldAndLeavesItAsItIs) {
    FakeLoginItem item;
    LoginItemManager manager(item);
    item.failure = std::make_error_code(std::errc::no_space_on_device);
    manager.setEnabled(true);
    EXPECT_FALSE(manager.isEnabled());
    EXPECT_EQ(manager.errorMessage(), "Couldn't write ~/.config/autostart/entry: the disk is full.");
    item.failure = {};
    manager.setEnabled(true);
    EXPECT_TRUE(manager.isEnabled());
    EXPECT_EQ(manager.errorMessage(), "");
}

TEST(LoginItemManagerTests, SeesWhatAnotherToolHasChanged) {
    FakeLoginItem item;
    LoginItemManager manager(item);
    item.isOn = true;
    EXPECT_FALSE(manager.isEnabled());
    manager.refresh();
    EXPECT_TRUE(manager.isEnabled());
}

TEST(LoginItemSettings, ASwitchThatFailedGoesBackAndSaysWhy) {
    SettingsScene scene("General");
    const QString failure = "Couldn't write ~/.config/autostart/entry: the disk is read-only.";
    scene.platform.login.failure = std::make_error_code(std::errc::read_only_file_system);
    scene.press("Launch at login");
    scene.advance(0);
    EXPECT_FALSE(scene.part("Launch at login")->state().checked);
    ASSERT_TRUE(scene.part(failure));
    EXPECT_EQ(scene.part(failure)->role(), QAccessible::Notification);
    scene.platform.login.failure = {};
    scene.press("Launch at login");
    scene.advance(0);
    EXPECT_TRUE(scene.part("Launch at login")->state().checked);
    EXPECT_FALSE(scene.part(failure));
}

TEST(LoginItemSettings, TheTabLooksAnewWhenItAppears) {
    SettingsScene scene("Timer");
    scene.platform.login.isOn = true;
    scene.press("General");
    scene.advance(0);
    EXPECT_TRUE(scene.part("Launch at login")->state().checked);
}

TEST(UpdateSettings, CheckNowWaitsUntilACheckCanBeMade) {
    SettingsScene scene("General");
    scene.platform.updates.setCanCheck(false);
    scene.press("Check Now");
    EXPECT_EQ(scene.platform.updates.checks, 0);
    EXPECT_FALSE(scene.isEnabled("Check Now"));
    scene.platform.updates.setCanCheck(true);
    scene.press("Check Now");
    EXPECT_EQ(scene.platform.updates.checks, 1);
}

} // namespace
} // namespace veslora
