// SPDX-License-Identifier: MIT
// The program itself, asked by the words of its command line from a shell that has neither a display nor a
// home of its own session.
#include "VesloraCore/Island/StatusLine.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/System/SupportLock.h"
#include "tests/VesloraLinux/Support/ProgramFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <future>
#include <optional>
#include <string>
#include <vector>

namespace veslora {
namespace {

using testing::becomesTrue;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::Program;

using CommandLineProgramTests = testing::ProgramFixture;

TEST_F(CommandLineProgramTests, ExplainsItselfWithoutADisplayOrAHome) {
    const Ended help = run({"--help"}, {"HOME=/dev/null"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("usage: veslora"));
    EXPECT_THAT(help.out, HasSubstr("\n  toggle "));
    EXPECT_THAT(help.error, IsEmpty());
    const Ended version = run({"--version"}, {"DISPLAY=:nowhere"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.rfind("Veslora ", 0), 0U);
    EXPECT_EQ(version.out.back(), '\n');
    EXPECT_THAT(version.error, IsEmpty());
}

TEST_F(CommandLineProgramTests, AWrongWordPrintsTheUsageAndEndsWith2) {
    for (const auto& words : std::vector<std::vector<std::string>>{{"frobnicate"},
                                                                   {""},
                                                                   {"status", "quit"},
                                                                   {"page"},
                                                                   {"page", "sideways"},
                                                                   {"edit", "page"},
                                                                   {"pause", "nonsense"},
                                                                   {"pause", "8d"},
                                                                   {"resume", "1h"},
                                                                   {"-platform", "offscreen"},
                                                                   {"-session", "x"}}) {
        const Ended ended = run(words, {"HOME=" + folder.path()});
        EXPECT_EQ(ended.status, 2) << words.front();
        EXPECT_THAT(ended.out, IsEmpty());
        EXPECT_EQ(ended.error.rfind("usage: veslora [", 0), 0U);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path(".local")));
}

TEST_F(CommandLineProgramTests, AWrongLengthOfAPauseIsExplained) {
    const Ended ended = run({"pause", "nonsense"}, {"HOME=" + folder.path()});
    EXPECT_EQ(ended.status, 2);
    EXPECT_THAT(ended.error, HasSubstr("2h30m, from 1m to 168h, or tomorrow\n"));
    EXPECT_THAT(run({"edit", "page"}, {"HOME=" + folder.path()}).error, Not(HasSubstr("168h")));
}

TEST_F(CommandLineProgramTests, ACommandThatNobodyHearsSaysSoInOneLine) {
    const std::vector<std::vector<std::string>> commands{
        {"settings"}, {"toggle"}, {"page", "next"}, {"page", "previous"},
        {"edit"},     {"pause"},  {"pause", "1h"},  {"resume"},
        {"quit"},     {"status"}};
    for (const auto& words : commands) {
        const Ended ended = run(words, {"HOME=" + folder.path()});
        EXPECT_EQ(ended.status, 1) << words.back();
        EXPECT_THAT(ended.out, IsEmpty());
        EXPECT_EQ(ended.error, "Veslora is not running.\n");
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path(".local"))) << "to ask makes nothing";
}

TEST_F(CommandLineProgramTests, AReportNeedsNeitherADisplayNorARunningProgramAndNamesNobody) {
    const Ended ended =
        run({"report"}, {"HOME=" + folder.path(), "USER=somebody", "XDG_CURRENT_DESKTOP=Desk"});
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.out, HasSubstr("Veslora: "));
    EXPECT_THAT(ended.out, HasSubstr("\ndesktop: Desk\n"));
    EXPECT_THAT(ended.out, HasSubstr("\ndisplay: none\n"));
    EXPECT_THAT(ended.out, HasSubstr("\nagent: Claude unknown, no hooks\n"));
    EXPECT_THAT(ended.out, HasSubstr("\nrunning: no\n"));
    EXPECT_THAT(ended.out, Not(HasSubstr(folder.path())));
    EXPECT_THAT(ended.out, Not(HasSubstr("somebody")));
    EXPECT_THAT(ended.error, IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(folder.path(".local"))) << "to ask makes nothing";
}

TEST_F(CommandLineProgramTests, SpeaksTheLanguageThatTheVariablesAskFor) {
    const auto answer = [this](std::vector<std::string> variables) {
        variables.push_back("HOME=" + folder.path());
        return run({"toggle"}, variables).error;
    };
    const std::string german = "Veslora läuft nicht.\n";
    EXPECT_EQ(answer({"LANG=de_DE.UTF-8"}), german);
    EXPECT_EQ(answer({"LANG=de_AT"}), german);
    EXPECT_EQ(answer({"LANG=en_US.UTF-8", "LC_MESSAGES=de_DE.UTF-8"}), german);
    EXPECT_EQ(answer({"LANG=en_US.UTF-8", "LC_ALL=de_DE.UTF-8"}), german);
    EXPECT_EQ(answer({"LANG=en_US.UTF-8", "LANGUAGE=de:en"}), german);
    EXPECT_EQ(answer({"LANG=fr_FR", "LANGUAGE=fr:de"}), german);
    const std::string english = "Veslora is not running.\n";
    EXPECT_EQ(answer({"LANG=de_DE.UTF-8", "LC_ALL=C"}), english);
    EXPECT_EQ(answer({"LANG=de_DE.UTF-8", "LC_MESSAGES=en_GB.UTF-8"}), english);
    EXPECT_EQ(answer({"LANG=de_DE.UTF-8", "LANGUAGE=en"}), english);
    EXPECT_EQ(answer({"LANG=fr_FR.UTF-8"}), english);
    EXPECT_EQ(answer({"LANGUAGE=de"}), english) << "there is no locale";
}

TEST_F(CommandLineProgramTests, ExplainsItselfInGermanWithTheSameWords) {
    const Ended help = run({"--help"}, {"LANG=de_DE.UTF-8"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out.rfind("Aufruf: veslora [", 0), 0U);
    for (const char* word : {"settings", "toggle", "page next", "page previous", "edit", "quit", "status",
                             "report", "--verbose", "--help", "--version"}) {
        EXPECT_THAT(help.out, HasSubstr("\n  " + std::string(word) + " "));
    }
    EXPECT_EQ(run({"frobnicate"}, {"LANG=de_DE.UTF-8"}).error.rfind("Aufruf: veslora [", 0), 0U);
}

TEST_F(CommandLineProgramTests, WhatProgramsReadIsTheSameInEveryLanguage) {
    const std::vector<std::string> home{"HOME=" + folder.path()};
    const std::vector<std::string> germanHome{"HOME=" + folder.path(), "LANG=de_DE.UTF-8"};
    EXPECT_EQ(run({"report"}, germanHome).out, run({"report"}, home).out);
    EXPECT_EQ(run({"--version"}, germanHome).out, run({"--version"}, home).out);
}

using RunningProgramTests = testing::RunningProgramFixture;

TEST_P(RunningProgramTests, DoesWhatItIsAskedFromAShellWithoutADisplay) {
    start();
    const Ended first = ask("status");
    EXPECT_TRUE(StatusLine::isOne(first.out.substr(0, first.out.size() - 1))) << first.out;
    EXPECT_EQ(first.out.back(), '\n');
    EXPECT_THAT(first.out, HasSubstr(R"("island":"closed")"));
    expectDone("toggle");
    EXPECT_THAT(status(), HasSubstr(R"("island":"open")"));
    expectDone("toggle");
    EXPECT_THAT(status(), HasSubstr(R"("island":"closed")"));
    expectDone("settings");
}

TEST_P(RunningProgramTests, TurnsPagesAndEditsForKeysOfTheUsersOwn) {
    start();
    expectDone("page", "next");
    EXPECT_THAT(status(), HasSubstr(R"("island":"open")"));
    expectDone("page", "next");
    expectDone("page", "previous");
    expectDone("toggle");
    EXPECT_THAT(status(), HasSubstr(R"("island":"closed")"));
    expectDone("edit");
    EXPECT_THAT(status(), HasSubstr(R"("island":"open")"));
    expectDone("edit");
    EXPECT_THAT(status(), HasSubstr(R"("island":"closed")"));
}

TEST_P(RunningProgramTests, PausesAlertsBeyondItsOwnEnd) {
    start();
    EXPECT_THAT(status(), Not(HasSubstr("pausedUntil")));
    expectDone("pause", "2h30m");
    const std::string paused = status();
    EXPECT_THAT(paused, HasSubstr(R"("pausedUntil":)"));
    expectDone("quit");
    start();
    EXPECT_EQ(status(), paused) << "it survives a restart";
    expectDone("resume");
    EXPECT_THAT(status(), Not(HasSubstr("pausedUntil")));
    expectDone("resume");
    expectDone("pause");
    expectDone("pause", "tomorrow");
    EXPECT_THAT(status(), HasSubstr(R"("pausedUntil":)"));
}

TEST_P(RunningProgramTests, QuitLeavesNothingBehindWhenItReturns) {
    start();
    const std::string support = home + "/.local/share/Veslora";
    EXPECT_TRUE(std::filesystem::exists(support + "/heartbeat"));
    expectDone("quit");
    EXPECT_FALSE(std::filesystem::exists(support + "/heartbeat"));
    EXPECT_FALSE(std::filesystem::exists(support + "/socket"));
    // A zombie at most, until this test has asked for its status.
    EXPECT_EQ(program->wait(), 0);
    EXPECT_EQ(ask("quit").error, "Veslora is not running.\n");
    start();
    EXPECT_THAT(status(), HasSubstr("island")) << "the next one runs at once";
}

TEST_P(RunningProgramTests, OneThatHangsIsToldOfAndNotWaitedForForEver) {
    start();
    ASSERT_EQ(kill(program->pid(), SIGSTOP), 0);
    for (const char* word : {"status", ""}) {
        const Ended ended = *word != 0 ? ask(word) : run({}, session());
        EXPECT_EQ(ended.status, 1);
        EXPECT_THAT(ended.out, IsEmpty());
        EXPECT_EQ(ended.error, "Veslora is running but does not answer.\n");
    }
    ASSERT_EQ(kill(program->pid(), SIGCONT), 0);
    EXPECT_EQ(ask("status").status, 0);
}

TEST_F(CommandLineProgramTests, ABusThatHangsIsToldOfAndNotWaitedForForEver) {
    const Program bus({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=3"}, 3);
    const std::string address = bus.nextLine();
    ASSERT_EQ(kill(bus.pid(), SIGSTOP), 0);
    const Ended ended = run({"status"}, {"HOME=" + folder.path(), "DBUS_SESSION_BUS_ADDRESS=" + address});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.out, IsEmpty());
    EXPECT_EQ(ended.error, "The session bus does not answer.\n");
    ASSERT_EQ(kill(bus.pid(), SIGCONT), 0);
}

TEST_P(RunningProgramTests, ASecondStartEndsAtOnce) {
    start();
    const Ended second = run({}, session());
    EXPECT_EQ(second.status, 0);
    EXPECT_THAT(second.error, IsEmpty());
}

TEST_P(RunningProgramTests, OfTwoThatStartAtOnceOneRunsAndTheOtherDoesNotComplain) {
    for (int round = 0; round < 5; ++round) {
        std::array<std::future<Ended>, 2> both;
        for (auto& each : both) {
            each = std::async(std::launch::async, [this] { return run({}, session()); });
        }
        const auto hasEnded = [](const auto& each) {
            return each.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        };
        EXPECT_TRUE(becomesTrue([&] { return std::ranges::any_of(both, hasEnded); }));
        EXPECT_EQ(std::ranges::count_if(both, hasEnded), 1);
        expectDone("quit");
        for (auto& each : both) {
            const Ended ended = each.get();
            EXPECT_EQ(ended.status, 0) << ended.error;
            EXPECT_THAT(ended.error, IsEmpty());
        }
    }
}

TEST_P(RunningProgramTests, OneThatIsAboutToEndIsWaitedFor) {
    PosixFiles files;
    std::optional lock(SupportLock::take(files, home + "/.local/share/Veslora"));
    auto started = std::async(std::launch::async, [this] { return run({}, session()); });
    EXPECT_EQ(started.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    lock.reset();
    EXPECT_TRUE(becomesTrue([this] { return ask("status").status == 0; }));
    expectDone("quit");
    EXPECT_EQ(started.get().status, 0);
}

TEST_P(RunningProgramTests, OneThatHasTheLockAndIsNeverReachedIsToldOf) {
    PosixFiles files;
    const auto lock = SupportLock::take(files, home + "/.local/share/Veslora");
    const Ended ended = run({}, session());
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "Veslora is running but does not answer.\n");
}

TEST_P(RunningProgramTests, AHomeThatIsOfNoUseIsToldInOneLine) {
    folder.put("home", "a file");
    const Ended ended = run({}, session());
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error,
              "Veslora can't use its folder " + home + "/.local/share/Veslora: Not a directory.\n");
    auto german = session();
    german.emplace_back("LC_ALL=de_DE.UTF-8");
    EXPECT_THAT(run({}, german).error, HasSubstr("Veslora kann seinen "));
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutABus, RunningProgramTests, ::testing::Bool(),
                         [](const auto& tested) { return tested.param ? "Bus" : "Socket"; });

} // namespace
} // namespace veslora
