// SPDX-License-Identifier: MIT
// The island's tab, operated by pointer, keys and accessible actions.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::Contains;
using ::testing::Optional;

class IslandSettingsTests : public ::testing::Test {
  protected:
    [[nodiscard]] std::optional<std::string> accent() const {
        return scene.settings.stringValue(SettingsKeys::accent);
    }

    SettingsScene scene{"Island"};
};

TEST_F(IslandSettingsTests, SaysWhatItIsAbout) {
    EXPECT_THAT(scene.texts(), Contains("Show on"));
    EXPECT_THAT(scene.texts(),
                Contains("Without a notched display (lid closed), the island uses the main display."));
    EXPECT_THAT(scene.texts(), Contains("Built-in display"));
    EXPECT_THAT(scene.texts(), Contains("Accent"));
}

TEST_F(IslandSettingsTests, TheScreenIsPicked) {
    scene.press("Show on");
    scene.advance(0);
    scene.key(Qt::Key_Down);
    scene.key(Qt::Key_Return);
    EXPECT_THAT(scene.settings.stringValue(SettingsKeys::displayChoice), Optional(std::string("main")));
    EXPECT_THAT(scene.texts(), Contains("Main display"));
}

TEST_F(IslandSettingsTests, AScreenIsPickedByItsNameAndKeptWhileItIsUnplugged) {
    scene.platform.displays.screens = {FakeScreens::make("eDP-1", 1440, 900, true),
                                       FakeScreens::make("HDMI-2", 1920, 1080, false)};
    emit scene.platform.displays.changed();
    scene.press("Show on");
    scene.advance(0);
    ASSERT_TRUE(scene.part("eDP-1"));
    ASSERT_TRUE(SettingsScene::act(*scene.part("HDMI-2"), QAccessibleActionInterface::pressAction()));
    scene.advance(0);
    EXPECT_THAT(scene.settings.stringValue(SettingsKeys::displayOutput), Optional(std::string("HDMI-2")));
    EXPECT_THAT(scene.texts(), Contains("HDMI-2"));
    scene.platform.displays.screens.pop_back();
    emit scene.platform.displays.changed();
    EXPECT_THAT(scene.texts(), Contains("HDMI-2 (not connected)"));
    scene.press("Show on");
    scene.advance(0);
    EXPECT_FALSE(scene.part("eDP-1")) << "a single screen needs no name";
    ASSERT_TRUE(SettingsScene::act(*scene.part("Main display"), QAccessibleActionInterface::pressAction()));
    scene.advance(0);
    EXPECT_THAT(scene.settings.stringValue(SettingsKeys::displayOutput), Optional(std::string()));
    EXPECT_THAT(scene.settings.stringValue(SettingsKeys::displayChoice), Optional(std::string("main")));
}

TEST_F(IslandSettingsTests, AnAccentIsChosenByAClick) {
    scene.click(*scene.part("Amber accent"));
    EXPECT_THAT(accent(), Optional(std::string("amber")));
    EXPECT_TRUE(scene.part("Amber accent")->state().checked);
    EXPECT_FALSE(scene.part("Lime accent")->state().checked);
    scene.click(*scene.part("Amber accent"));
    EXPECT_TRUE(scene.part("Amber accent")->state().checked) << "it is in use already";
}

TEST_F(IslandSettingsTests, AnAccentIsChosenByAnAccessibleAction) {
    EXPECT_TRUE(SettingsScene::act(*scene.part("Cyan accent"), QAccessibleActionInterface::pressAction()));
    EXPECT_THAT(accent(), Optional(std::string("cyan")));
}

TEST_F(IslandSettingsTests, ArrowsGoFromAccentToAccentAndAround) {
    scene.focus("Lime accent");
    scene.key(Qt::Key_Left);
    EXPECT_THAT(accent(), Optional(std::string("white")));
    EXPECT_EQ(scene.focused(), "White accent");
    scene.key(Qt::Key_Right);
    scene.key(Qt::Key_Right);
    EXPECT_THAT(accent(), Optional(std::string("cyan")));
    scene.key(Qt::Key_Tab);
    EXPECT_FALSE(scene.focused().endsWith("accent")) << "they are one stop";
}

TEST_F(IslandSettingsTests, TheDelayIsSetInStepsOfATwentiethOfASecond) {
    EXPECT_THAT(scene.texts(), Contains("0.10 s"));
    scene.focus("Open on hover after");
    scene.key(Qt::Key_Right);
    EXPECT_NEAR(scene.settings.doubleValue(SettingsKeys::hoverDelay), 0.15, 1e-9);
    EXPECT_THAT(scene.texts(), Contains("0.15 s"));
    for (int step = 0; step < 20; ++step) {
        scene.key(Qt::Key_Left);
    }
    EXPECT_EQ(scene.settings.doubleValue(SettingsKeys::hoverDelay), 0);
    EXPECT_THAT(scene.texts(), Contains("0.00 s"));
    scene.settings.set(SettingsKeys::hoverDelay, 7.0);
    scene.advance(0);
    EXPECT_THAT(scene.texts(), Contains("0.50 s")) << "the end of the scale";
    EXPECT_EQ(scene.settings.doubleValue(SettingsKeys::hoverDelay), 7) << "to show it is not to change it";
}

TEST_F(IslandSettingsTests, TheSpaceIsSetInStepsOfFourUnlessItIsAutomatic) {
    EXPECT_THAT(scene.texts(), Contains("60"));
    scene.focus("Space between widgets");
    scene.key(Qt::Key_Left);
    EXPECT_EQ(scene.settings.doubleValue(SettingsKeys::widgetSpacing), 56);
    EXPECT_THAT(scene.texts(), Contains("56"));
    scene.press("Automatic spacing");
    EXPECT_TRUE(scene.settings.boolValue(SettingsKeys::widgetSpacingAutomatic));
    EXPECT_FALSE(scene.isEnabled("Space between widgets"));
    scene.press("Automatic spacing");
    EXPECT_TRUE(scene.isEnabled("Space between widgets"));
}

TEST_F(IslandSettingsTests, WhatAnotherProgramStoresShows) {
    scene.settings.set(SettingsKeys::accent, "white");
    scene.settings.set(SettingsKeys::displayChoice, "main");
    scene.advance(0);
    EXPECT_TRUE(scene.part("White accent")->state().checked);
    EXPECT_THAT(scene.texts(), Contains("Main display"));
}

} // namespace
} // namespace veslora
