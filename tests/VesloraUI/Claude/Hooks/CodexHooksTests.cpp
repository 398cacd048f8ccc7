// SPDX-License-Identifier: MIT
// Putting our hooks into Codex's configuration, and taking them out again, on files in memory.
#include "VesloraCore/Agents/Hooks/HookScripts.h"
#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraUI/Claude/Hooks/CodexHooks.h"
#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/FixedCalendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ClaudeHooksInstaller::InstallError;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr auto hooksPath = "/home/me/.codex/hooks.json";
constexpr auto backupPath = "/home/me/.codex/hooks.json.veslora-backup";

class CodexHooksTest : public testing::Test {
  protected:
    [[nodiscard]] std::string supportPath(std::string_view name) const { return support.pathOf(name); }
    [[nodiscard]] std::optional<std::string> text(std::string_view name) const {
        return platform.disk.text(supportPath(name));
    }
    [[nodiscard]] Json file() const {
        return Json::parse(platform.disk.text(hooksPath).value_or("")).value_or(Json());
    }
    /// The commands registered for an event, in their order.
    [[nodiscard]] std::vector<std::string> commands(std::string_view event) const {
        std::vector<std::string> found;
        const Json root = file();
        const Json* all = root.objectAt("hooks");
        const Json* groups = all ? all->find(event) : nullptr;
        for (const Json& group : groups ? groups->items() : Json::Array()) {
            for (const Json& entry : group.find("hooks")->items()) {
                found.push_back(entry.textAt("command"));
            }
        }
        return found;
    }

    FakePlatform platform;
    SupportDirectory support{platform.disk, platform.paths.support, platform.paths.runtime};
    CodexHooks hooks{platform.disk, support, hooksPath};
};

TEST_F(CodexHooksTest, InstallsWhereThereIsNothingYet) {
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    EXPECT_FALSE(hooks.state().areOutdated);
    EXPECT_FALSE(platform.disk.exists(backupPath)) << "there was nothing to keep";
    EXPECT_EQ(file().objectAt("hooks")->members().size(), 8u);
    for (const auto name : {SupportNames::codexHook, SupportNames::codexPermission}) {
        EXPECT_EQ(text(name), HookScripts::text(name)) << name;
        EXPECT_EQ(platform.disk.stat(supportPath(name), Links::refuse)->mode, 0755u) << name;
    }
    EXPECT_FALSE(text(SupportNames::claudeHook));
}

TEST_F(CodexHooksTest, OursComeBehindTheUsersSoThatTheirsKeepTheirPlaces) {
    const std::string before =
        R"({"hooks":{"PermissionRequest":[{"hooks":[{"type":"command","command":"mine"}]}],)"
        R"("Stop":[{"hooks":[{"type":"command","command":"first"}]},{"hooks":[{"type":"command","command":"second"}]}]},"x":1.0})";
    platform.disk.put(hooksPath, before, 0600);
    hooks.install();
    EXPECT_THAT(commands("Stop"), ElementsAre("first", "second", HasSubstr("codex-hook.sh")));
    EXPECT_THAT(commands("PermissionRequest"), ElementsAre("mine", HasSubstr("codex-permission.sh")));
    EXPECT_EQ(platform.disk.text(backupPath), before);
    EXPECT_EQ(platform.disk.stat(backupPath, Links::refuse)->mode, 0600u);
    EXPECT_EQ(platform.disk.stat(hooksPath, Links::refuse)->mode, 0600u);
    const std::string once = *platform.disk.text(hooksPath);
    hooks.install();
    EXPECT_EQ(platform.disk.text(hooksPath), once);
    EXPECT_TRUE(hooks.remove());
    EXPECT_EQ(file(), Json::parse(before));
}

TEST_F(CodexHooksTest, AFileOfOursAloneIsDeletedAndLeavesNoBackup) {
    hooks.install();
    EXPECT_TRUE(hooks.remove());
    EXPECT_FALSE(platform.disk.exists(hooksPath));
    EXPECT_FALSE(platform.disk.exists(backupPath));
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_FALSE(hooks.state().areOutdated);
    EXPECT_TRUE(text(SupportNames::codexHook)) << "the scripts stay: a running session may still call them";
    EXPECT_FALSE(hooks.remove()) << "there is nothing left to take out";
}

TEST_F(CodexHooksTest, AnEmptyFileOfTheUsersStays) {
    platform.disk.put(hooksPath, "{}");
    hooks.install();
    EXPECT_EQ(platform.disk.text(backupPath), "{}");
    EXPECT_TRUE(hooks.remove());
    EXPECT_EQ(platform.disk.text(hooksPath), "{}\n");
    EXPECT_EQ(platform.disk.text(backupPath), "{}");
}

TEST_F(CodexHooksTest, FollowsALinkAndLeavesItALink) {
    platform.disk.put("/home/me/dotfiles/hooks.json", R"({"a":1})", 0640);
    platform.disk.makeDirectory("/home/me/.codex", 0755);
    platform.disk.makeLink("/home/me/dotfiles/hooks.json", hooksPath);
    hooks.install();
    EXPECT_TRUE(platform.disk.stat(hooksPath, Links::refuse)->isLink);
    EXPECT_EQ(platform.disk.stat("/home/me/dotfiles/hooks.json", Links::refuse)->mode, 0640u);
    EXPECT_TRUE(platform.disk.exists("/home/me/dotfiles/hooks.json.veslora-backup"));
    EXPECT_TRUE(hooks.state().areInstalled);
}

TEST_F(CodexHooksTest, RefusesWhatItCannotUnderstandAndTouchesNothing) {
    for (const char* bad : {"[]", "{", "not json", R"({"a":1,"a":2})", "\xff\xfe", "null"}) {
        platform.disk.put(hooksPath, bad);
        const int before = platform.disk.writes();
        EXPECT_THROW(hooks.install(), InstallError) << bad;
        EXPECT_THROW(hooks.remove(), InstallError) << bad;
        EXPECT_EQ(platform.disk.text(hooksPath), bad);
        EXPECT_EQ(platform.disk.writes(), before) << bad;
    }
    EXPECT_FALSE(text(SupportNames::codexHook));
}

TEST_F(CodexHooksTest, RefusesAFileThatItCannotRead) {
    platform.disk.put(hooksPath, "{}");
    platform.disk.giveAway(hooksPath);
    EXPECT_THROW(hooks.install(), std::system_error);
    EXPECT_THROW(hooks.remove(), std::system_error);
    EXPECT_EQ(platform.disk.text(hooksPath), "{}");
}

TEST_F(CodexHooksTest, AnEmptyFileCountsAsAbsentButIsBackedUp) {
    platform.disk.put(hooksPath, "\n");
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    EXPECT_EQ(platform.disk.text(backupPath), "\n");
}

TEST_F(CodexHooksTest, TellsWhatIsMissing) {
    EXPECT_FALSE(hooks.state().areOutdated);
    hooks.install();
    platform.disk.setMode(supportPath(SupportNames::codexPermission), 0644);
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_TRUE(hooks.state().areOutdated) << "a script that can't be run";
    platform.disk.setMode(supportPath(SupportNames::codexPermission), 0755);
    EXPECT_TRUE(hooks.state().areInstalled);
    Json changed = file();
    changed.find("hooks")->remove("Interrupt");
    platform.disk.put(hooksPath, changed.print(Json::Layout::pretty));
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_TRUE(hooks.state().areOutdated) << "an event that an older version did not know";
    hooks.install();
    EXPECT_TRUE(hooks.state().areInstalled);
    platform.disk.remove(hooksPath);
    EXPECT_FALSE(hooks.state().areInstalled);
    EXPECT_FALSE(hooks.state().areOutdated);
}

TEST_F(CodexHooksTest, ReadsTheFileOnlyWhenItChanged) {
    FaultInjectingFiles files(platform.disk);
    SupportDirectory folder(files, platform.paths.support, platform.paths.runtime);
    CodexHooks counted(files, folder, hooksPath);
    EXPECT_FALSE(counted.state().areInstalled);
    files.readError = std::errc::io_error;
    EXPECT_FALSE(counted.state().areInstalled);
    files.readError.reset();
    counted.install();
    EXPECT_TRUE(counted.state().areInstalled);
    files.readError = std::errc::io_error;
    EXPECT_TRUE(counted.state().areInstalled) << "nothing was read again";
    const int before = files.operations();
    EXPECT_TRUE(counted.state().areInstalled);
    EXPECT_EQ(files.operations() - before, 5)
        << "one look at the file, one at Codex's own, one at the folder and at each script";
}

TEST_F(CodexHooksTest, AReadThatFailedIsTriedAgain) {
    hooks.install();
    FaultInjectingFiles files(platform.disk);
    CodexHooks other(files, support, hooksPath);
    files.readError = std::errc::too_many_files_open;
    EXPECT_FALSE(other.state().areInstalled);
    files.readError.reset();
    EXPECT_TRUE(other.state().areInstalled);
}

TEST_F(CodexHooksTest, AFullDiskAtAnyMomentLosesNothing) {
    const std::string before =
        R"({"a":1,"hooks":{"Stop":[{"hooks":[{"type":"command","command":"mine"}]}]}})";
    int failures = 0;
    for (int step = 1; step < 40; ++step) {
        FakePlatform machine;
        machine.disk.put(hooksPath, before);
        FaultInjectingFiles files(machine.disk);
        SupportDirectory folder(files, machine.paths.support, machine.paths.runtime);
        CodexHooks faulty(files, folder, hooksPath);
        files.failOperation(step, std::errc::no_space_on_device);
        try {
            faulty.install();
        } catch (const std::exception&) {
            ++failures;
            EXPECT_EQ(machine.disk.text(hooksPath), before) << "failed at operation " << step;
            continue;
        }
        SupportDirectory sound(machine.disk, machine.paths.support, machine.paths.runtime);
        EXPECT_TRUE(CodexHooks(machine.disk, sound, hooksPath).state().areInstalled) << step;
        EXPECT_TRUE(Json::parse(*machine.disk.text(hooksPath))->find("a")) << step;
    }
    EXPECT_GT(failures, 5);
}

TEST_F(CodexHooksTest, AFaultWhileRemovingLeavesAllOrNothing) {
    for (const char* before : {"", R"({"a":1})"}) {
        for (int step = 1; step < 20; ++step) {
            FakePlatform machine;
            if (*before != '\0') {
                machine.disk.put(hooksPath, before);
            }
            SupportDirectory folder(machine.disk, machine.paths.support, machine.paths.runtime);
            CodexHooks(machine.disk, folder, hooksPath).install();
            const auto installed = machine.disk.text(hooksPath);
            FaultInjectingFiles files(machine.disk);
            CodexHooks faulty(files, folder, hooksPath);
            files.failOperation(step, std::errc::io_error);
            try {
                faulty.remove();
            } catch (const std::exception&) {
                EXPECT_EQ(machine.disk.text(hooksPath), installed)
                    << before << " failed at operation " << step;
                continue;
            }
            EXPECT_NE(machine.disk.text(hooksPath), installed) << before << " step " << step;
        }
    }
}

TEST_F(CodexHooksTest, AFileThatChangesMeanwhileIsNotDeleted) {
    platform.disk.put(hooksPath, "{}");
    ConfigurationFile configuration(platform.disk, hooksPath);
    ASSERT_TRUE(configuration.read());
    platform.disk.put(hooksPath, R"({"a":2})");
    EXPECT_THROW(configuration.remove(), std::system_error);
    EXPECT_EQ(platform.disk.text(hooksPath), R"({"a":2})");
}

TEST_F(CodexHooksTest, BringsOldScriptsNothingNewerButMakesNone) {
    hooks.updateScripts();
    EXPECT_FALSE(text(SupportNames::codexHook));
    hooks.install();
    platform.disk.put(supportPath(SupportNames::codexHook), "#!/bin/sh\nexit 0\n", 0755);
    hooks.updateScripts();
    EXPECT_EQ(text(SupportNames::codexHook), HookScripts::text(SupportNames::codexHook));
}

TEST_F(CodexHooksTest, TheMonitorPutsThemWhereCodexWasMovedTo) {
    platform.paths.codex = "/srv/codex";
    FakeDefaults settings(platform);
    const AgentMonitorSeams seams{platform.paths,       platform.time,     platform.disk,
                                  platform.watches,     platform.tasks,    platform.hosts,
                                  platform.multiplexer, platform.programs, test::fixedCalendar()};
    HookedAgentMonitor monitor(codexAgent(seams, support), seams, support, settings);
    monitor.installHooks();
    EXPECT_TRUE(monitor.hooksInstalled());
    EXPECT_TRUE(platform.disk.exists("/srv/codex/hooks.json"));
    platform.disk.setMode(supportPath(SupportNames::codexHook), 0600);
    monitor.refresh();
    EXPECT_FALSE(monitor.hooksInstalled());
    EXPECT_TRUE(monitor.hooksOutdated());
    monitor.removeHooks();
    EXPECT_FALSE(monitor.hooksOutdated());
    EXPECT_FALSE(platform.disk.exists("/srv/codex/hooks.json"));
}

TEST_F(CodexHooksTest, AreTrustedOnceCodexNamesEachOfThem) {
    constexpr auto trustFile = "/home/me/.codex/config.toml";
    EXPECT_TRUE(hooks.state().areTrusted) << "nothing is there that could be trusted";
    hooks.install();
    EXPECT_FALSE(hooks.state().areTrusted) << "Codex has no configuration yet";
    std::string trust = "model = \"m\"\n";
    platform.disk.put(trustFile, trust);
    EXPECT_FALSE(hooks.state().areTrusted);
    for (const char* event : {"pre_tool_use", "permission_request", "post_tool_use", "session_start",
                              "session_end", "user_prompt_submit", "stop", "interrupt"}) {
        EXPECT_FALSE(hooks.state().areTrusted) << event;
        trust += "[hooks.state.\"" + std::string(hooksPath) + ":" + event + ":0:0\"]\n";
        platform.advance(1);
        platform.disk.put(trustFile, trust);
    }
    EXPECT_TRUE(hooks.state().areTrusted);
    platform.disk.setMode(trustFile, 0);
    EXPECT_TRUE(hooks.state().areTrusted) << "what can't be read says nothing";
}

} // namespace
} // namespace veslora
