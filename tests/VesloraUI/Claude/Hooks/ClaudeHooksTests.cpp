// SPDX-License-Identifier: MIT
// Putting our hooks and status line into Claude Code's settings, and taking them out again, on files in
// memory.
#include "VesloraCore/Agents/Hooks/HookScripts.h"
#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ClaudeHooksInstaller::InstallError;
using testing::HasSubstr;

constexpr auto settingsPath = "/home/me/.claude/settings.json";
constexpr auto backupPath = "/home/me/.claude/settings.json.veslora-backup";

class ClaudeHooksTest : public testing::Test {
  protected:
    ClaudeHooksTest() {
        platform.disk.put("/opt/veslora/json-value",
                          "\x7f"
                          "ELF",
                          0755);
    }

    [[nodiscard]] std::string supportPath(std::string_view name) const { return support.pathOf(name); }
    [[nodiscard]] std::optional<std::string> text(std::string_view name) const {
        return platform.disk.text(supportPath(name));
    }
    [[nodiscard]] Json settings() const {
        return Json::parse(platform.disk.text(settingsPath).value_or("")).value_or(Json());
    }

    FakePlatform platform;
    SupportDirectory support{platform.disk, platform.paths.support, platform.paths.runtime};
    ClaudeHooks hooks{platform.disk, support, settingsPath, platform.paths.executables};
};

TEST_F(ClaudeHooksTest, InstallsWhereThereIsNothingYet) {
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    EXPECT_FALSE(hooks.state().areOutdated);
    EXPECT_FALSE(platform.disk.exists(backupPath)) << "there was nothing to keep";
    for (const auto name :
         {SupportNames::claudeHook, SupportNames::claudePermission, SupportNames::claudeStatusLine}) {
        EXPECT_EQ(text(name), HookScripts::text(name)) << name;
        EXPECT_EQ(platform.disk.stat(supportPath(name), Links::refuse)->mode, 0755u) << name;
    }
    EXPECT_EQ(text(SupportNames::jsonValue), "\x7f"
                                             "ELF");
    EXPECT_TRUE(platform.disk.isExecutable(supportPath(SupportNames::jsonValue)));
}

TEST_F(ClaudeHooksTest, KeepsEverythingElseAndABackup) {
    const std::string before = R"({"model":"opus","big":123456789012345678901234567890,"n":1.0,"e":1e400,)"
                               R"("hooks":{"Stop":[{"hooks":[{"type":"command","command":"mine"}]}]}})";
    platform.disk.put(settingsPath, before, 0600);
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), before);
    EXPECT_EQ(platform.disk.stat(backupPath, Links::refuse)->mode, 0600u);
    EXPECT_EQ(platform.disk.stat(settingsPath, Links::refuse)->mode, 0600u);
    const std::string after = *platform.disk.text(settingsPath);
    for (const char* kept :
         {R"("model" : "opus")", "123456789012345678901234567890", R"("n" : 1.0)", "1e400", "mine"}) {
        EXPECT_THAT(after, HasSubstr(kept));
    }
    hooks.remove();
    EXPECT_EQ(settings(), Json::parse(before));
}

TEST_F(ClaudeHooksTest, FollowsALinkAndLeavesItALink) {
    platform.disk.put("/home/me/dotfiles/settings.json", R"({"a":1})", 0640);
    platform.disk.makeDirectory("/home/me/.claude", 0755);
    platform.disk.makeLink("/home/me/dotfiles/settings.json", settingsPath);
    hooks.install();
    EXPECT_TRUE(platform.disk.stat(settingsPath, Links::refuse)->isLink);
    EXPECT_THAT(*platform.disk.text("/home/me/dotfiles/settings.json"), HasSubstr("claude-hook.sh"));
    EXPECT_EQ(platform.disk.stat("/home/me/dotfiles/settings.json", Links::refuse)->mode, 0640u);
    EXPECT_TRUE(platform.disk.exists("/home/me/dotfiles/settings.json.veslora-backup"));
    EXPECT_TRUE(hooks.state().areInstalled);
}

TEST_F(ClaudeHooksTest, ReplacesAReadOnlyFileAndKeepsItReadOnly) {
    platform.disk.put(settingsPath, "{}", 0444);
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    EXPECT_EQ(platform.disk.stat(settingsPath, Links::refuse)->mode, 0444u);
}

TEST_F(ClaudeHooksTest, RefusesWhatItCannotUnderstandAndTouchesNothing) {
    for (const char* bad : {"[]", "{", "not json", R"({"a":1,"a":2})", "\xff\xfe", R"("text")"}) {
        platform.disk.put(settingsPath, bad);
        const int before = platform.disk.writes();
        EXPECT_THROW(hooks.install(), InstallError) << bad;
        EXPECT_THROW(hooks.remove(), InstallError) << bad;
        EXPECT_EQ(platform.disk.text(settingsPath), bad);
        EXPECT_EQ(platform.disk.writes(), before) << bad;
    }
    EXPECT_FALSE(platform.disk.exists(backupPath));
}

TEST_F(ClaudeHooksTest, RefusesAFileThatItCannotRead) {
    platform.disk.put(settingsPath, "{}");
    platform.disk.giveAway(settingsPath);
    EXPECT_THROW(hooks.install(), std::system_error);
    EXPECT_EQ(platform.disk.text(settingsPath), "{}");
}

TEST_F(ClaudeHooksTest, AnEmptyFileCountsAsAbsentButIsBackedUp) {
    platform.disk.put(settingsPath, " \n");
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    EXPECT_EQ(platform.disk.text(backupPath), " \n");
}

TEST_F(ClaudeHooksTest, SavesTheUsersStatusLineAndPutsItBack) {
    const std::string before =
        R"({"statusLine":{"type":"command","command":"~/line.sh 'x'","padding":2,"own":1.0}})";
    platform.disk.put(settingsPath, before);
    hooks.install();
    EXPECT_EQ(text(SupportNames::statusLineWrapped), "~/line.sh 'x'");
    EXPECT_EQ(platform.disk.stat(supportPath(SupportNames::statusLineWrapped), Links::refuse)->mode, 0600u);
    hooks.install();
    EXPECT_EQ(text(SupportNames::statusLineWrapped), "~/line.sh 'x'")
        << "a second install keeps what the first saved";
    hooks.remove();
    EXPECT_EQ(settings(), Json::parse(before));
    EXPECT_FALSE(text(SupportNames::statusLineWrapped));
    EXPECT_FALSE(text(SupportNames::statusLineOriginal));
    EXPECT_TRUE(text(SupportNames::claudeHook)) << "the scripts stay: a running session may still call them";
}

TEST_F(ClaudeHooksTest, NothingStaleIsWrapped) {
    platform.disk.put(supportPath(SupportNames::statusLineWrapped), "old");
    platform.disk.put(supportPath(SupportNames::statusLineOriginal), "{}");
    hooks.install();
    EXPECT_FALSE(text(SupportNames::statusLineWrapped));
    EXPECT_FALSE(text(SupportNames::statusLineOriginal));
}

TEST_F(ClaudeHooksTest, AStatusLineWithoutACommandIsKeptButNotWrapped) {
    platform.disk.put(supportPath(SupportNames::statusLineWrapped), "old");
    platform.disk.put(settingsPath, R"({"statusLine":"odd"})");
    hooks.install();
    EXPECT_EQ(text(SupportNames::statusLineOriginal), R"("odd")");
    EXPECT_FALSE(text(SupportNames::statusLineWrapped));
    hooks.remove();
    EXPECT_EQ(settings(), Json::parse(R"({"statusLine":"odd"})"));
}

TEST_F(ClaudeHooksTest, TellsWhatIsMissing) {
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_FALSE(hooks.state().areOutdated);
    hooks.install();
    platform.disk.setMode(supportPath(SupportNames::claudePermission), 0644);
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_TRUE(hooks.state().areOutdated) << "a script that can't be run";
    platform.disk.setMode(supportPath(SupportNames::claudePermission), 0755);
    Json changed = settings();
    changed.remove("statusLine");
    platform.disk.put(settingsPath, changed.print(Json::Layout::pretty));
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_TRUE(hooks.state().areOutdated) << "no status line";
}

TEST_F(ClaudeHooksTest, ReadsTheSettingsOnlyWhenTheyChanged) {
    FaultInjectingFiles files(platform.disk);
    SupportDirectory folder(files, platform.paths.support, platform.paths.runtime);
    ClaudeHooks counted(files, folder, settingsPath, platform.paths.executables);
    EXPECT_FALSE(counted.state().areInstalled);
    int before = files.operations();
    EXPECT_FALSE(counted.state().areInstalled);
    EXPECT_EQ(files.operations() - before, 1) << "one look for the settings, which are not there";
    counted.install();
    EXPECT_TRUE(counted.state().areInstalled);
    before = files.operations();
    EXPECT_TRUE(counted.state().areInstalled);
    EXPECT_EQ(files.operations() - before, 5)
        << "one look at the settings, one at the folder and each script";
}

TEST_F(ClaudeHooksTest, RemoveWithoutSettingsDoesNothing) {
    EXPECT_FALSE(hooks.remove());
    EXPECT_EQ(platform.disk.writes(), 0);
}

TEST_F(ClaudeHooksTest, AMissingHelperDoesNotKeepTheHooksOut) {
    platform.disk.remove("/opt/veslora/json-value");
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    EXPECT_FALSE(text(SupportNames::jsonValue));
}

TEST_F(ClaudeHooksTest, AFullDiskAtAnyMomentLosesNothing) {
    const std::string before = R"({"a":1,"statusLine":{"type":"command","command":"mine"}})";
    for (int step = 1; step < 40; ++step) {
        FakePlatform machine;
        machine.disk.put("/opt/veslora/json-value", "ELF", 0755);
        machine.disk.put(settingsPath, before);
        FaultInjectingFiles files(machine.disk);
        SupportDirectory folder(files, machine.paths.support, machine.paths.runtime);
        ClaudeHooks faulty(files, folder, settingsPath, machine.paths.executables);
        files.failOperation(step, std::errc::no_space_on_device);
        try {
            faulty.install();
        } catch (const std::exception&) {
            EXPECT_EQ(machine.disk.text(settingsPath), before) << "failed at operation " << step;
            continue;
        }
        const auto after = Json::parse(*machine.disk.text(settingsPath));
        ASSERT_TRUE(after) << step;
        EXPECT_TRUE(after->find("a")) << step;
        EXPECT_EQ(machine.disk.text(machine.paths.support + "/statusline-wrapped"), "mine") << step;
    }
}

TEST_F(ClaudeHooksTest, SettingsThatChangeMeanwhileAreNotOverwritten) {
    for (const auto& [before, meanwhile] :
         {std::pair(R"({"a":1})", R"({"a":2})"), std::pair("", R"({"a":2})")}) {
        FakePlatform machine;
        if (*before != '\0') {
            machine.disk.put(settingsPath, before);
        }
        ConfigurationFile file(machine.disk, settingsPath);
        file.read();
        machine.disk.put(settingsPath, meanwhile);
        try {
            file.write("{}");
            FAIL() << "written over an edit";
        } catch (const FileError& error) {
            EXPECT_EQ(error.code(), FileRefusal::changed);
            EXPECT_EQ(error.path(), settingsPath);
        }
        EXPECT_EQ(machine.disk.text(settingsPath), meanwhile);
    }
}

TEST_F(ClaudeHooksTest, AFileThatCannotBeKeptAsItIsIsNotTouched) {
    const std::string before = R"({"a":1})";
    for (const FileRefusal refusal : {FileRefusal::hasSecondName, FileRefusal::losesAttributes}) {
        platform.disk.put(settingsPath, before);
        platform.disk.refusal = refusal;
        try {
            hooks.install();
            FAIL() << "installed";
        } catch (const FileError& error) {
            EXPECT_EQ(error.code(), refusal);
        }
        EXPECT_EQ(platform.disk.text(settingsPath), before);
    }
}

TEST_F(ClaudeHooksTest, NeitherAReinstallNorARemoveOverwritesTheUsersBackup) {
    const std::string before = R"({"model":"opus","hooks":{}})";
    platform.disk.put(settingsPath, before);
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), before);
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), before) << "after a reinstall";
    Json changed = settings();
    changed.remove("statusLine");
    platform.disk.put(settingsPath, changed.print(Json::Layout::pretty));
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), before) << "after an update";
    hooks.remove();
    EXPECT_EQ(platform.disk.text(backupPath), before) << "after a remove";
    platform.disk.put(settingsPath, R"({"model":"sonnet"})");
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), R"({"model":"sonnet"})") << "nothing of ours was in it";
}

TEST_F(ClaudeHooksTest, HooksOfAnEarlierVersionAreOursToo) {
    platform.disk.put(backupPath, "the user's");
    platform.disk.put(settingsPath, R"({"hooks":{"Stop":[{"hooks":[{"type":"command","command":")" +
                                        supportPath(SupportNames::claudeHook) + R"("}]}]}})");
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), "the user's");
}

TEST_F(ClaudeHooksTest, TheBackupIsForTheUserAlone) {
    platform.disk.put(settingsPath, R"({"token":1})", 0664);
    hooks.install();
    EXPECT_EQ(platform.disk.stat(backupPath, Links::refuse)->mode, 0600u);
}

TEST_F(ClaudeHooksTest, AFileThatWeMadeGoesWithTheHooks) {
    hooks.install();
    EXPECT_TRUE(hooks.remove());
    EXPECT_FALSE(platform.disk.exists(settingsPath));
    EXPECT_FALSE(text(SupportNames::claudeSettingsMade));
    EXPECT_FALSE(platform.disk.exists(backupPath));
}

TEST_F(ClaudeHooksTest, AFileThatWeMadeStaysOnceTheUserHasPutSomethingInIt) {
    hooks.install();
    Json changed = settings();
    changed.set("model", Json::makeString("opus"));
    platform.disk.put(settingsPath, changed.print(Json::Layout::pretty));
    hooks.install();
    hooks.remove();
    EXPECT_EQ(settings(), Json::parse(R"({"model":"opus"})"));
}

TEST_F(ClaudeHooksTest, AnEmptyFileOfTheUsersStays) {
    // A marker of a file that is gone since.
    hooks.install();
    platform.disk.put(settingsPath, "{}");
    hooks.install();
    hooks.remove();
    EXPECT_EQ(platform.disk.text(settingsPath), "{}\n");
    platform.disk.put(supportPath(SupportNames::claudeSettingsMade), "/somewhere/else/settings.json");
    hooks.install();
    platform.disk.put(supportPath(SupportNames::claudeSettingsMade), "/somewhere/else/settings.json");
    hooks.remove();
    EXPECT_EQ(platform.disk.text(settingsPath), "{}\n");
}

TEST_F(ClaudeHooksTest, RemoveTouchesNoFileThatHoldsNothingOfOurs) {
    for (const char* foreign : {R"({"a":1})", "{\n}\n"}) {
        platform.disk.put(settingsPath, foreign);
        hooks.remove();
        EXPECT_EQ(platform.disk.text(settingsPath), foreign);
        EXPECT_FALSE(platform.disk.exists(backupPath));
    }
}

TEST_F(ClaudeHooksTest, WhatTheUserSetBesideTheStatusLinesCommandGoesOnHolding) {
    platform.disk.put(settingsPath,
                      R"({"statusLine":{"type":"command","command":"mine","padding":3,"refreshInterval":10,)"
                      R"("hideVimModeIndicator":true,"later":{"x":1.50}}})");
    const Json before = settings();
    hooks.install();
    const Json installed = settings();
    const Json* line = installed.objectAt("statusLine");
    ASSERT_TRUE(line);
    EXPECT_THAT(line->textAt("command"), HasSubstr("claude-statusline.sh"));
    for (const char* key : {"padding", "refreshInterval", "hideVimModeIndicator", "later", "type"}) {
        EXPECT_EQ(*line->find(key), *before.objectAt("statusLine")->find(key)) << key;
    }
    hooks.install();
    EXPECT_EQ(settings(), installed);
    hooks.remove();
    EXPECT_EQ(settings(), before);
    EXPECT_THAT(*platform.disk.text(settingsPath), HasSubstr("1.50"));
}

TEST_F(ClaudeHooksTest, ASavedStatusLineThatCannotBeReadIsNotLost) {
    platform.disk.put(settingsPath, R"({"statusLine":{"type":"command","command":"mine"}})");
    hooks.install();
    const auto installed = platform.disk.text(settingsPath);
    platform.disk.setMode(supportPath(SupportNames::statusLineOriginal), 0);
    EXPECT_THROW(hooks.remove(), FileError);
    EXPECT_EQ(platform.disk.text(settingsPath), installed);
    platform.disk.setMode(supportPath(SupportNames::statusLineOriginal), 0600);
    hooks.remove();
    EXPECT_EQ(settings(), Json::parse(R"({"statusLine":{"type":"command","command":"mine"}})"));
}

TEST_F(ClaudeHooksTest, WhatAKilledInstallLeftIsSweptAndNothingElse) {
    const std::string folder = "/home/me/.claude/";
    platform.disk.put(settingsPath, "{}");
    platform.disk.put(folder + ".veslora-tmp.0123456789ab", "a copy");
    platform.disk.put(folder + "tmp.0123456789ab", "the user's");
    hooks.install();
    EXPECT_FALSE(platform.disk.exists(folder + ".veslora-tmp.0123456789ab"));
    EXPECT_TRUE(platform.disk.exists(folder + "tmp.0123456789ab"));
}

TEST_F(ClaudeHooksTest, WhatAKilledInstallLeftIsSweptWhereNothingElseIsToDo) {
    const std::string left = "/home/me/.claude/.veslora-tmp.0123456789ab";
    platform.disk.put(settingsPath, "{}");
    hooks.install();
    platform.disk.put(left, "a copy");
    hooks.install();
    EXPECT_FALSE(platform.disk.exists(left));
    hooks.remove();
    platform.disk.put(left, "a copy");
    hooks.remove();
    EXPECT_FALSE(platform.disk.exists(left));
}

TEST_F(ClaudeHooksTest, BringsOldScriptsNothingNewerButMakesNone) {
    hooks.updateScripts();
    EXPECT_FALSE(text(SupportNames::claudeHook));
    hooks.install();
    platform.disk.put(supportPath(SupportNames::claudeHook), "#!/bin/sh\nexit 0\n", 0755);
    hooks.updateScripts();
    EXPECT_EQ(text(SupportNames::claudeHook), HookScripts::text(SupportNames::claudeHook));
}

} // namespace
} // namespace veslora
