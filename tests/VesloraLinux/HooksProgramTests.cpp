// SPDX-License-Identifier: MIT
// Agents' hooks from the command line: without a program that runs, as in a container, and with one.
#include "tests/VesloraLinux/Support/OrdinaryUser.h"
#include "tests/VesloraLinux/Support/ProgramFixture.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <future>

namespace veslora {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

const std::string usersOwn = R"({
  "model": "opus",
  "statusLine": {"type": "command", "command": "my-line"}
})";

class HooksProgramTests : public testing::ProgramFixture {
  protected:
    HooksProgramTests() { std::filesystem::create_directory(folder.path(".claude")); }

    [[nodiscard]] Ended hooks(std::vector<std::string> words) const {
        words.insert(words.begin(), "hooks");
        return run(words, {"HOME=" + folder.path()});
    }
    [[nodiscard]] std::string file() const { return folder.bytesOf(".claude/settings.json"); }
};

TEST_F(HooksProgramTests, AStatusMakesNothingAndEndsWith3WhereNoneAreIn) {
    const Ended ended = hooks({"status"});
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.out, "claude: not installed\ncodex: not installed\n");
    EXPECT_THAT(ended.error, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder.path(".local")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(".codex")));
}

TEST_F(HooksProgramTests, PutInAndTakenOutTwiceAllIsAsItWas) {
    folder.put(".claude/settings.json", usersOwn);
    for (int time = 0; time < 2; ++time) {
        const Ended installed = hooks({"install"});
        EXPECT_EQ(installed.status, 0) << installed.error;
        EXPECT_THAT(installed.out, HasSubstr("Codex: the hooks are in. Run /hooks in it"));
        const Ended status = hooks({"status"});
        EXPECT_EQ(status.status, 0);
        EXPECT_EQ(status.out, "claude: installed\ncodex: installed; not trusted yet, run /hooks in it\n");
    }
    EXPECT_EQ(folder.bytesOf(".claude/settings.json.veslora-backup"), usersOwn);
    EXPECT_THAT(file(), HasSubstr("claude-permission.sh"));
    for (int time = 0; time < 2; ++time) {
        const Ended removed = hooks({"remove"});
        EXPECT_EQ(removed.status, 0) << removed.error;
        EXPECT_THAT(removed.out, HasSubstr("Sessions that run go on working"));
    }
    EXPECT_THAT(file(), HasSubstr("my-line"));
    EXPECT_THAT(file(), Not(HasSubstr("Veslora")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(".codex/hooks.json"))) << "it was made for them";
    EXPECT_EQ(hooks({"status"}).status, 3);
}

TEST_F(HooksProgramTests, OneAgentIsNotTheOther) {
    EXPECT_EQ(hooks({"install", "claude"}).status, 0);
    EXPECT_EQ(hooks({"status", "claude"}).status, 0);
    EXPECT_EQ(hooks({"status", "codex"}).status, 3);
    EXPECT_EQ(hooks({"status"}).status, 3) << "of both, one is missing";
}

TEST_F(HooksProgramTests, WhatCantBeUnderstoodIsLeftAndTheOtherAgentStillDone) {
    folder.put(".claude/settings.json", "[]");
    const Ended ended = hooks({"install"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "Couldn't read ~/.claude/settings.json; nothing was changed.\n");
    EXPECT_THAT(ended.out, StartsWith("Codex: the hooks are in."));
    EXPECT_EQ(file(), "[]");
    EXPECT_THAT(hooks({"status", "claude"}).out, HasSubstr("; not possible: Couldn't read"));
}

TEST_F(HooksProgramTests, ALinkStaysAndWhatItLeadsToIsChanged) {
    std::filesystem::create_directory(folder.path("dotfiles"));
    folder.put("dotfiles/claude.json", usersOwn);
    std::filesystem::create_symlink(folder.path("dotfiles/claude.json"),
                                    folder.path(".claude/settings.json"));
    EXPECT_EQ(hooks({"install", "claude"}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path(".claude/settings.json")));
    EXPECT_THAT(folder.bytesOf("dotfiles/claude.json"), HasSubstr("claude-hook.sh"));
    EXPECT_EQ(hooks({"remove", "claude"}).status, 0);
    EXPECT_THAT(folder.bytesOf("dotfiles/claude.json"), Not(HasSubstr("Veslora")));
}

TEST_F(HooksProgramTests, ASecondNameOfTheFileIsRefusedInTheWordsOfTheSettings) {
    folder.put(".claude/settings.json", usersOwn);
    std::filesystem::create_hard_link(folder.path(".claude/settings.json"), folder.path("second"));
    const Ended ended = hooks({"install", "claude"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.error, HasSubstr("it has a second name (a hard link)"));
    EXPECT_EQ(file(), usersOwn);
    EXPECT_THAT(run({"hooks", "install", "claude"}, {"HOME=" + folder.path(), "LANG=de_DE.UTF-8"}).error,
                AnyOf(HasSubstr("zweiten Namen"), HasSubstr("Hardlink")));
}

TEST_F(HooksProgramTests, ALinkInPlaceOfTheProgramsFolderIsRefused) {
    std::filesystem::create_directories(folder.path(".local/share"));
    std::filesystem::create_directory(folder.path("elsewhere"));
    std::filesystem::create_symlink(folder.path("elsewhere"), folder.path(".local/share/Veslora"));
    const Ended ended = hooks({"install", "claude"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.error, HasSubstr("it is a link"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("elsewhere")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(".claude/settings.json")));
}

TEST_F(HooksProgramTests, AReadOnlyFolderIsToldOfAndNothingIsLost) {
    folder.put(".claude/settings.json", usersOwn);
    const std::string program = VESLORA_BINARIES "/veslora";
    std::vector<std::string> command{"sh", "-c", R"(exec "$@" 2>")" + folder.path("error") + '"', "sh"};
    if (geteuid() == 0) {
        // The rights of files mean nothing to root.
        for (const char* name : {"", ".claude", ".claude/settings.json"}) {
            ASSERT_EQ(chown(folder.path(name).c_str(), testing::nobody, testing::nobody), 0);
        }
        const std::string id = std::to_string(testing::nobody);
        command.insert(command.end(), {"setpriv", "--reuid=" + id, "--regid=" + id, "--clear-groups"});
    }
    command.insert(command.end(),
                   {"env", "-i", "HOME=" + folder.path(), program, "hooks", "install", "claude"});
    ASSERT_EQ(chmod(folder.path(".claude").c_str(), 0555), 0);
    EXPECT_EQ(testing::Program(command).wait(), 1);
    EXPECT_THAT(folder.bytesOf("error"), HasSubstr("may not be changed. Nothing was changed.\n"));
    ASSERT_EQ(chmod(folder.path(".claude").c_str(), 0755), 0);
    EXPECT_EQ(file(), usersOwn);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path(".claude")), {}), 1);
}

TEST_F(HooksProgramTests, ManyAtOnceKeepTheUsersStatusLine) {
    folder.put(".claude/settings.json", usersOwn);
    for (int round = 0; round < 5; ++round) {
        std::vector<std::future<Ended>> all;
        for (const char* word : {"install", "remove", "install", "remove"}) {
            all.push_back(std::async(std::launch::async, [this, word] { return hooks({word, "claude"}); }));
        }
        for (auto& each : all) {
            const Ended ended = each.get();
            EXPECT_EQ(ended.status, 0) << ended.error;
        }
    }
    EXPECT_EQ(hooks({"remove", "claude"}).status, 0);
    EXPECT_THAT(file(), HasSubstr("my-line"));
    EXPECT_THAT(file(), Not(HasSubstr("Veslora")));
}

class HooksOfRunningTests : public testing::RunningProgramFixture {
  protected:
    [[nodiscard]] Ended hooks(std::vector<std::string> words) const {
        words.insert(words.begin(), "hooks");
        return run(words, shell());
    }
    [[nodiscard]] std::string file() const { return folder.bytesOf("home/.claude/settings.json"); }
};

TEST_P(HooksOfRunningTests, TheProgramItselfPutsThemInAndTakesThemOut) {
    start();
    EXPECT_EQ(hooks({"status"}).status, 3);
    EXPECT_EQ(hooks({"install"}).status, 0);
    EXPECT_THAT(file(), HasSubstr("claude-hook.sh"));
    EXPECT_EQ(hooks({"status"}).out,
              "claude: installed\ncodex: installed; not trusted yet, run /hooks in it\n");
    EXPECT_EQ(hooks({"remove"}).status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path("home/.claude/settings.json")));
    EXPECT_EQ(hooks({"status"}).status, 3);
}

TEST_P(HooksOfRunningTests, ItTellsWhatTheHooksToldLast) {
    start();
    ASSERT_EQ(hooks({"install", "claude"}).status, 0);
    const std::string script = home + "/.local/share/Veslora/claude-hook.sh";
    EXPECT_EQ(testing::Program({"sh", "-c",
                                R"(printf '{"hook_event_name":"UserPromptSubmit","session_id":"s"}' | )"
                                R"(HOME=")" +
                                    home + R"(" ")" + script + '"'})
                  .wait(),
              0);
    EXPECT_TRUE(testing::becomesTrue([this] {
        return hooks({"status", "claude"}).out.find("; last event at 1") != std::string::npos;
    }));
}

TEST_P(HooksOfRunningTests, WhatItRefusesIsToldInItsWords) {
    start();
    std::filesystem::create_directories(folder.path("home/.claude"));
    folder.put("home/.claude/settings.json", "{ a slip");
    const Ended ended = hooks({"install", "claude"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "Couldn't read ~/.claude/settings.json; nothing was changed.\n");
    EXPECT_EQ(file(), "{ a slip");
}

TEST_P(HooksOfRunningTests, AStartMeanwhileKeepsTheUsersStatusLine) {
    std::filesystem::create_directories(folder.path("home/.claude"));
    folder.put("home/.claude/settings.json", usersOwn);
    std::vector<std::future<Ended>> all;
    for (const char* word : {"install", "remove", "install", "remove", "install"}) {
        all.push_back(std::async(std::launch::async, [this, word] { return hooks({word, "claude"}); }));
    }
    start();
    for (auto& each : all) {
        const Ended ended = each.get();
        EXPECT_EQ(ended.status, 0) << ended.error;
    }
    EXPECT_EQ(hooks({"remove", "claude"}).status, 0);
    EXPECT_THAT(file(), HasSubstr("my-line"));
    EXPECT_THAT(file(), Not(HasSubstr("Veslora")));
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutABus, HooksOfRunningTests, ::testing::Bool(),
                         [](const auto& tested) { return tested.param ? "Bus" : "Socket"; });

} // namespace
} // namespace veslora
