// SPDX-License-Identifier: MIT
// The settings from the command line: without a program that runs, and with one.
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/SupportLock.h"
#include "tests/VesloraLinux/Support/ProgramFixture.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <future>
#include <optional>

namespace veslora {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

class SettingsProgramTests : public testing::ProgramFixture {
  protected:
    [[nodiscard]] Ended ask(const std::vector<std::string>& words) const {
        return run(words, {"HOME=" + folder.path()});
    }
    [[nodiscard]] std::string file() const { return folder.bytesOf(".config/Veslora/settings.json"); }
    void expectRefused(const std::vector<std::string>& words, const std::string& why) const {
        const std::string before = file();
        const Ended ended = ask(words);
        EXPECT_EQ(ended.status, 1) << words.back();
        EXPECT_THAT(ended.out, IsEmpty());
        EXPECT_THAT(ended.error, HasSubstr(why));
        EXPECT_EQ(file(), before);
    }
};

TEST_F(SettingsProgramTests, ToAskMakesNothing) {
    EXPECT_EQ(ask({"get", "accent"}).out, "lime\n");
    EXPECT_EQ(ask({"get", "metronomeVolume"}).out, "0.8\n");
    EXPECT_EQ(ask({"export"}).out, "{}\n");
    EXPECT_THAT(ask({"export", "--all"}).out, HasSubstr("\n  \"hoverDelay\" : 0.1,\n"));
    EXPECT_THAT(ask({"get"}).out, HasSubstr("\nmetronomeBPM\t120\t120\ta whole number from 30 to 300\n"));
    EXPECT_THAT(ask({"get"}).out, Not(HasSubstr("alertsPausedUntil")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(".config")));
    EXPECT_FALSE(std::filesystem::exists(folder.path(".local")));
}

TEST_F(SettingsProgramTests, WhatIsSetIsGotByTheNext) {
    const Ended ended = ask({"set", "accent", "cyan"});
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_THAT(ended.out + ended.error, IsEmpty());
    EXPECT_EQ(ask({"set", "hideInFullscreen", "false"}).status, 0);
    EXPECT_EQ(ask({"get", "accent"}).out, "cyan\n");
    EXPECT_EQ(ask({"export"}).out, "{\n  \"accent\" : \"cyan\",\n  \"hideInFullscreen\" : false\n}\n");
}

TEST_F(SettingsProgramTests, WhatCantBeASettingChangesNothing) {
    ASSERT_EQ(ask({"set", "accent", "cyan"}).status, 0);
    expectRefused({"set", "accent", "pink"}, "accent: it must be one of lime, cyan, amber, white.\n");
    expectRefused({"set", "metronomeBPM", "301"}, "a whole number from 30 to 300");
    expectRefused({"set", "colour", "cyan"}, "colour: there is no such setting.\n");
    expectRefused({"set", "alertsPausedUntil", "0"}, "alertsPausedUntil: ");
    expectRefused({"set", "displayOutput", "\x1b]0;x\a"}, "displayOutput: ");
    expectRefused({"set", "displayOutput", "\xed\xa0\x80"}, "displayOutput: ");
    expectRefused({"set", "displayOutput", std::string(100'000, 'x')}, "displayOutput: ");
    expectRefused({"get", "\x1b[2J"}, ": there is no such setting.\n");
    EXPECT_EQ(ask({"get", "\x1b[2J"}).error.find('\x1b'), std::string::npos);
    EXPECT_THAT(run({"set", "accent", "pink"}, {"HOME=" + folder.path(), "LANG=de_DE.UTF-8"}).error,
                HasSubstr("accent: "));
}

TEST_F(SettingsProgramTests, AnExportIsImportedWholeOrNotAtAll) {
    folder.put("good.json", R"({"accent": "amber", "metronomeBPM": 90, "widgetLayout": "clock,timer"})");
    EXPECT_EQ(ask({"import", folder.path("good.json")}).status, 0);
    const std::string exported = ask({"export"}).out;
    EXPECT_EQ(exported, "{\n  \"accent\" : \"amber\",\n  \"metronomeBPM\" : 90,\n"
                        "  \"widgetLayout\" : \"clock,timer\"\n}\n");
    folder.put("bad.json", R"({"accent": "lime", "hoverDelay": -1, "colour": 1})");
    expectRefused({"import", folder.path("bad.json")}, "hoverDelay: it must be a number from 0 on.\n"
                                                       "colour: there is no such setting.\n");
    folder.put("half.json", R"({"accent": "lime")");
    expectRefused({"import", folder.path("half.json")}, "The text is not a JSON object.\n");
    folder.put("long.json", "{}" + std::string(100'000, ' '));
    expectRefused({"import", folder.path("long.json")}, "too long");
    expectRefused({"import", folder.path("none.json")}, "Can't read ");
    expectRefused({"import", folder.path()}, "Can't read ");
    expectRefused({"import", "/dev/zero"}, "Can't read ");
    expectRefused({"import"}, "The text is not a JSON object.\n");
}

TEST_F(SettingsProgramTests, StandardInputIsReadToItsEndAndNoFurther) {
    const std::string home = "HOME=" + folder.path();
    const auto pipe = [&](const std::string& source) {
        return testing::Program(
                   {"sh", "-c",
                    "{ " + source + "; } | env -i " + home + " " VESLORA_BINARIES "/veslora import"})
            .wait();
    };
    EXPECT_EQ(pipe(R"(printf '{"accent":'; printf ' "white"}')"), 0);
    EXPECT_EQ(ask({"get", "accent"}).out, "white\n");
    EXPECT_EQ(pipe("cat /dev/zero"), 1) << "it has no end";
    EXPECT_EQ(ask({"get", "accent"}).out, "white\n");
}

TEST_F(SettingsProgramTests, AFileThatHoldsNoSettingsIsPutAsideAndOneThatCantBeReadIsLeft) {
    std::filesystem::create_directories(folder.path(".config/Veslora"));
    folder.put(".config/Veslora/settings.json", "{ a slip");
    EXPECT_EQ(ask({"get", "accent"}).out, "lime\n");
    EXPECT_EQ(ask({"set", "accent", "cyan"}).status, 0);
    EXPECT_EQ(folder.bytesOf(".config/Veslora/settings.json.damaged"), "{ a slip");
    std::filesystem::remove(folder.path(".config/Veslora/settings.json"));
    std::filesystem::create_directory(folder.path(".config/Veslora/settings.json"));
    EXPECT_THAT(ask({"set", "accent", "amber"}).error, StartsWith("The settings couldn't be written: "));
    EXPECT_TRUE(std::filesystem::is_directory(folder.path(".config/Veslora/settings.json")));
}

TEST_F(SettingsProgramTests, ALinkOfTheUsersStaysOne) {
    std::filesystem::create_directories(folder.path(".config/Veslora"));
    std::filesystem::create_directories(folder.path("dotfiles"));
    folder.put("dotfiles/settings.json", R"({"hoverDelay": 0.3})");
    std::filesystem::create_symlink(folder.path("dotfiles/settings.json"),
                                    folder.path(".config/Veslora/settings.json"));
    EXPECT_EQ(ask({"set", "accent", "cyan"}).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path(".config/Veslora/settings.json")));
    EXPECT_THAT(folder.bytesOf("dotfiles/settings.json"), HasSubstr("cyan"));
    EXPECT_THAT(folder.bytesOf("dotfiles/settings.json"), HasSubstr("0.3"));
}

TEST_F(SettingsProgramTests, ManyAtOnceLoseNothing) {
    const std::vector<std::vector<std::string>> changes{
        {"set", "accent", "cyan"},         {"set", "hoverDelay", "0.2"},
        {"set", "metronomeBPM", "90"},     {"set", "timerSound", "Ping"},
        {"set", "metronomeVolume", "0.3"}, {"set", "keepAwakeDisplay", "true"}};
    std::vector<std::future<Ended>> all;
    for (const auto& words : changes) {
        all.push_back(std::async(std::launch::async, [this, words] { return ask(words); }));
    }
    for (auto& each : all) {
        const Ended ended = each.get();
        EXPECT_EQ(ended.status, 0) << ended.error;
    }
    for (const auto& words : changes) {
        EXPECT_EQ(ask({"get", words[1]}).out, words[2] + "\n");
    }
}

TEST_F(SettingsProgramTests, AProgramThatHasTheLockIsWaitedFor) {
    PosixFiles files;
    std::optional lock(SupportLock::take(files, folder.path(".local/share/Veslora")));
    auto setting = std::async(std::launch::async, [this] { return ask({"set", "accent", "cyan"}); });
    EXPECT_EQ(setting.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    EXPECT_THAT(file(), IsEmpty());
    lock.reset();
    EXPECT_EQ(setting.get().status, 0);
    EXPECT_THAT(file(), HasSubstr("cyan"));
}

class SettingsOfRunningTests : public testing::RunningProgramFixture {
  protected:
    [[nodiscard]] std::string file() const { return folder.bytesOf("home/.config/Veslora/settings.json"); }
    void set(const std::string& key, const std::string& value) const {
        const Ended ended = run({"set", key, value}, shell());
        EXPECT_EQ(ended.status, 0) << ended.error;
        EXPECT_THAT(ended.out + ended.error, IsEmpty());
    }
    [[nodiscard]] std::string get(const std::string& key) const { return run({"get", key}, shell()).out; }
};

TEST_P(SettingsOfRunningTests, TheProgramItselfIsAskedAndHasThemOnTheDisk) {
    start();
    EXPECT_EQ(get("accent"), "lime\n");
    // More than one in the time that a slider's writes are paced by.
    set("accent", "cyan");
    set("hoverDelay", "0.25");
    set("widgetLayout", "clock,timer");
    EXPECT_THAT(file(), HasSubstr("clock,timer"));
    EXPECT_EQ(get("widgetLayout"), "clock,timer\n");
    folder.put("more.json", R"({"metronomeBPM": 61, "displayOutput": "DP-\"1\" ä"})");
    EXPECT_EQ(run({"import", folder.path("more.json")}, shell()).status, 0);
    EXPECT_EQ(get("displayOutput"), "DP-\"1\" ä\n");
    const std::string exported = run({"export"}, shell()).out;
    expectDone("quit");
    EXPECT_EQ(program->wait(), 0);
    EXPECT_EQ(run({"export"}, shell()).out, exported) << "also without it";
}

TEST_P(SettingsOfRunningTests, WhatIsWrongIsRefusedAndWhatItCantWriteIsTold) {
    start();
    set("accent", "cyan");
    const Ended wrong = run({"set", "accent", "pink"}, shell());
    EXPECT_EQ(wrong.status, 1);
    EXPECT_THAT(wrong.error, StartsWith("accent: it must be"));
    EXPECT_EQ(get("accent"), "cyan\n");
    std::filesystem::remove(folder.path("home/.config/Veslora/settings.json"));
    std::filesystem::create_directory(folder.path("home/.config/Veslora/settings.json"));
    const Ended refused = run({"set", "accent", "amber"}, shell());
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, StartsWith("The settings couldn't be written: "));
}

TEST_P(SettingsOfRunningTests, OneThatHangsIsNotWrittenBehind) {
    start();
    set("accent", "cyan");
    ASSERT_EQ(kill(program->pid(), SIGSTOP), 0);
    const Ended ended = run({"set", "accent", "amber"}, shell());
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "Veslora is running but does not answer.\n");
    EXPECT_THAT(file(), HasSubstr("cyan"));
    ASSERT_EQ(kill(program->pid(), SIGCONT), 0);
}

TEST_P(SettingsOfRunningTests, AStartMeanwhileLosesNothing) {
    std::vector<std::future<Ended>> all;
    for (int tempo = 100; tempo < 110; ++tempo) {
        all.push_back(std::async(std::launch::async, [this, tempo] {
            return run({"set", "metronomeBPM", std::to_string(tempo)}, shell());
        }));
    }
    start();
    for (auto& each : all) {
        const Ended ended = each.get();
        EXPECT_EQ(ended.status, 0) << ended.error;
    }
    set("accent", "cyan");
    const std::string tempo = get("metronomeBPM");
    EXPECT_NE(tempo, "120\n");
    EXPECT_THAT(file(), HasSubstr("\"metronomeBPM\" : " + tempo.substr(0, 3)));
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutABus, SettingsOfRunningTests, ::testing::Bool(),
                         [](const auto& tested) { return tested.param ? "Bus" : "Socket"; });

} // namespace
} // namespace veslora
