// SPDX-License-Identifier: MIT
// Putting our hooks and status line into Claude Code's settings, and taking them out again, on files in
// memory.
#include "VesloraCore/HookScripts.h"
#include "VesloraCore/Json.h"
#include "VesloraCore/SupportNames.h"
#include "VesloraUI/Claude/ClaudeHooks.h"
#include "VesloraUI/Claude/ConfigurationFile.h"
#include "VesloraUI/Claude/SupportDirectory.h"
#include "tests/VesloraUI/FakePlatform.h"
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
    platform.disk.put(settingsPath, R"({"a":1})");
    ConfigurationFile file(platform.disk, settingsPath);
    const auto old = file.read();
    platform.disk.put(settingsPath, R"({"a":2})");
    EXPECT_THROW(file.write("{}", old), std::system_error);
    EXPECT_EQ(platform.disk.text(settingsPath), R"({"a":2})");
    EXPECT_FALSE(platform.disk.exists(backupPath));
}

TEST_F(ClaudeHooksTest, BringsOldScriptsUpToDateButMakesNone) {
    hooks.updateScripts();
    EXPECT_FALSE(text(SupportNames::claudeHook));
    hooks.install();
    platform.disk.put(supportPath(SupportNames::claudeHook), "#!/bin/sh\nexit 0\n", 0755);
    hooks.updateScripts();
    EXPECT_EQ(text(SupportNames::claudeHook), HookScripts::text(SupportNames::claudeHook));
}

} // namespace
} // namespace veslora
