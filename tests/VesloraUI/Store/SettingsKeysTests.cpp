// SPDX-License-Identifier: MIT
#include "VesloraCore/Sound/AlertSounds.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>

using namespace veslora;
using Value = Defaults::Value;

namespace {

class SettingsKeysTest : public testing::Test {
  protected:
    MemoryFiles files;
    FakeDirectoryWatcher watcher;
    Defaults settings{files, watcher, "/config"};

    void SetUp() override { SettingsKeys::registerDefaults(settings); }

    void expectDefault(std::string_view key, const Value& expected) const {
        if (const bool* flag = std::get_if<bool>(&expected)) {
            EXPECT_EQ(settings.boolValue(key), *flag) << key;
        } else if (const int* integer = std::get_if<int>(&expected)) {
            EXPECT_EQ(settings.integerValue(key), *integer) << key;
        } else if (const double* number = std::get_if<double>(&expected)) {
            EXPECT_EQ(settings.doubleValue(key), *number) << key;
        } else {
            EXPECT_EQ(settings.stringValue(key), std::get<std::string>(expected)) << key;
        }
    }
};

} // namespace

TEST_F(SettingsKeysTest, FreshStoreReadsTheDefaultOfAllKeysWithoutAFile) {
    const std::pair<const char*, Value> defaults[] = {
        {"hideInFullscreen", true},
        {"hoverDelay", 0.1},
        {"checkForUpdates", true},
        {"updateCheckedAt", 0.0},
        {"updateSkipped", ""},
        {"updateShown", ""},
        {"updateShownAt", 0.0},
        {"settingsTab", ""},
        {"settingsPlace", ""},
        {"displayChoice", "builtIn"},
        {"displayOutput", ""},
        {"accent", "lime"},
        {"timerSound", "Glass"},
        {"timerNotifications", true},
        {"widgetLayout", "timer,music,metronome:2,claude:2,claudeUsage,meters,keepAwake"},
        {"widgetSpacingAutomatic", false},
        {"widgetSpacing", 60.0},
        {"liveActivityPriority", "music"},
        {"musicShowOtherApps", true},
        {"musicLiveActivity", true},
        {"metronomeBPM", 120},
        {"metronomeSignature", "4/4"},
        {"metronomeSound", "click"},
        {"metronomeVolume", 0.8},
        {"metronomeAccent", true},
        {"claudeApprovalAlerts", true},
        {"claudeApprovalSound", false},
        {"claudeFinishedActivity", true},
        {"claudeWorkingActivity", true},
        {"claudeAnswerFromIsland", true},
        {"alertsPausedUntil", 0.0},
        {"followDoNotDisturb", true},
        {"keepAwakeDisplay", false},
        {"keepAwakeWhileClaude", true},
        {"keepAwakeLiveActivity", true},
    };
    EXPECT_EQ(std::size(defaults), 35U);
    for (const auto& [key, value] : defaults) {
        expectDefault(key, value);
    }
    EXPECT_EQ(files.writes(), 0);
}

TEST(SettingsKeys, OffersFiveSoundsTheLastOfThemNone) {
    ASSERT_EQ(SettingsKeys::timerSounds.size(), 5U);
    EXPECT_EQ(SettingsKeys::timerSounds.front(), "Glass");
    EXPECT_EQ(SettingsKeys::timerSounds.back(), "None");
}

TEST(SettingsKeys, OffersOnlySoundsThatThereAre) {
    for (const std::string_view name : SettingsKeys::timerSounds) {
        EXPECT_EQ(AlertSounds::named(name).has_value(), name != "None") << name;
    }
}

TEST(SettingsKeys, SpacingIsHeldToItsRange) {
    EXPECT_EQ(SettingsKeys::widgetSpacingRange.clamped(3), 8);
    EXPECT_EQ(SettingsKeys::widgetSpacingRange.clamped(60), 60);
    EXPECT_EQ(SettingsKeys::widgetSpacingRange.clamped(200), 80);
}

TEST(DisplayChoice, ReadsItsRawValuesAndTakesAllElseForTheBuiltInDisplay) {
    EXPECT_EQ(displayChoiceFrom("builtIn"), DisplayChoice::builtIn);
    EXPECT_EQ(displayChoiceFrom("main"), DisplayChoice::main);
    for (const char* text : {"Main", "", "eDP-1", "builtin"}) {
        EXPECT_EQ(displayChoiceFrom(text), DisplayChoice::builtIn) << text;
    }
    EXPECT_EQ(displayChoiceFrom(std::nullopt), DisplayChoice::builtIn);
}

TEST(DisplayChoice, HasANameForPeople) {
    EXPECT_EQ(rawValue(DisplayChoice::builtIn), "builtIn");
    EXPECT_EQ(rawValue(DisplayChoice::main), "main");
    EXPECT_EQ(displayName(DisplayChoice::builtIn), "Built-in display");
    EXPECT_EQ(displayName(DisplayChoice::main), "Main display");
}
