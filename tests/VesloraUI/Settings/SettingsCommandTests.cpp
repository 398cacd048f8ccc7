// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsCommand.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::HasSubstr;

class SettingsCommandTest : public testing::Test {
  protected:
    SettingsCommandTest() {
        SettingsKeys::registerDefaults(settings);
        settings.paceWrites(time);
        QObject::connect(&settings, &Defaults::changed, [this] { ++changes; });
    }
    [[nodiscard]] std::string file() const { return memory.text("/config/settings.json").value_or(""); }

    MemoryFiles memory;
    FaultInjectingFiles files{memory};
    FakeDirectoryWatcher watcher;
    ManualScheduler time;
    Defaults settings{files, watcher, "/config"};
    int changes = 0;
};

TEST_F(SettingsCommandTest, WhatIsTakenOverIsOnTheDiskAtOnce) {
    settings.set(SettingsKeys::hoverDelay, 0.2);
    const auto outcome = SettingsCommand::import(settings, R"({"accent": "cyan", "metronomeBPM": 90})");
    EXPECT_TRUE(outcome.isDone);
    EXPECT_EQ(outcome.text, "");
    EXPECT_THAT(file(), HasSubstr(R"("accent" : "cyan")")) << "also while writes are paced";
    EXPECT_EQ(changes, 2) << "one for all of it";
    EXPECT_THAT(SettingsCommand::exported(settings).text, HasSubstr(R"("metronomeBPM":90)"));
    EXPECT_EQ(SettingsCommand::exported(settings).text.find('\n'), std::string::npos);
}

TEST_F(SettingsCommandTest, NothingIsTakenOverOfATextInWhichAnythingIsWrong) {
    const std::string before = SettingsCommand::exported(settings).text;
    for (const char* text : {R"({"accent": "cyan", "hoverDelay": -1})", R"({"accent": "cyan", "x": 1})", "{",
                             R"({"accent": "cyan", "accent": "cyan"})", R"({"alertsPausedUntil": 2e9})"}) {
        const auto outcome = SettingsCommand::import(settings, text);
        EXPECT_FALSE(outcome.isDone) << text;
        EXPECT_NE(outcome.text, "");
    }
    EXPECT_EQ(SettingsCommand::exported(settings).text, before);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(file(), "");
}

TEST_F(SettingsCommandTest, AFullDiskIsToldOf) {
    files.writeError = std::errc::no_space_on_device;
    const auto outcome = SettingsCommand::import(settings, R"({"accent": "cyan"})");
    EXPECT_FALSE(outcome.isDone);
    EXPECT_EQ(outcome.text, "The settings couldn't be written: the disk is full.");
    files.writeError.reset();
    EXPECT_TRUE(SettingsCommand::import(settings, R"({"accent": "cyan"})").isDone) << "it is tried again";
    EXPECT_THAT(file(), HasSubstr("cyan"));
}

TEST_F(SettingsCommandTest, WhatAnotherProgramWroteMeanwhileStays) {
    memory.put("/config/settings.json", R"({"accent": "amber", "others": [1]})");
    EXPECT_TRUE(SettingsCommand::import(settings, R"({"hoverDelay": 0})").isDone);
    EXPECT_THAT(file(), HasSubstr("amber"));
    EXPECT_THAT(file(), HasSubstr("others"));
}

} // namespace
} // namespace veslora
