// SPDX-License-Identifier: MIT
// The runner of the media adapter, with small programs in the adapter's place.
#include "VesloraLinux/System/AdapterProcessRunner.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using testing::handleEventsFor;
using ::testing::IsEmpty;
using testing::waitUntil;

class AdapterProcessRunnerTest : public ::testing::Test {
  protected:
    /// Writes the program that is run in the adapter's place. It notes its process's id, then what it is
    /// told to do.
    void put(const std::string& script) {
        folder.put("adapter", "#!/bin/sh\necho $$ > '" + folder.path("pid") + ".new'; mv '" +
                                  folder.path("pid") + ".new' '" + folder.path("pid") + "'\n" + script);
        std::filesystem::permissions(folder.path("adapter"), std::filesystem::perms::owner_all);
    }
    [[nodiscard]] bool start() {
        return runner->start([this](const std::string& line) { lines.push_back(line); },
                             [this](std::int32_t status) { exits.push_back(status); });
    }
    [[nodiscard]] bool waitForLines(std::size_t count) {
        return waitUntil([this, count] { return lines.size() >= count; });
    }
    [[nodiscard]] std::optional<pid_t> pid() const {
        const std::string text = folder.bytesOf("pid");
        return text.empty() ? std::nullopt : std::optional(static_cast<pid_t>(std::stoi(text)));
    }
    [[nodiscard]] static bool hasEnded(pid_t pid) { return kill(pid, 0) != 0; }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    ManualScheduler time;
    std::unique_ptr<AdapterProcessRunner> runner =
        std::make_unique<AdapterProcessRunner>(time, QString::fromStdString(folder.path("adapter")));
    std::vector<std::string> lines;
    std::vector<std::int32_t> exits;
};

TEST_F(AdapterProcessRunnerTest, GivesTheLinesOfTheStreamHoweverTheyArrive) {
    put("[ \"$*\" = stream ] && printf 'one\\ntw' && sleep 0.1 && printf 'o\\n\\n\\377\\nhalf' && exec sleep "
        "1000");
    ASSERT_TRUE(start());
    EXPECT_THAT(lines, IsEmpty()) << "never within the call";
    ASSERT_TRUE(waitForLines(4));
    EXPECT_THAT(lines, ElementsAre("one", "two", "", "\xEF\xBF\xBD"));
    EXPECT_THAT(exits, IsEmpty());
}

TEST_F(AdapterProcessRunnerTest, TellsOfItsEndOnceAndAfterTheLastLine) {
    put("echo last; exit 3");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitUntil([this] { return !exits.empty(); }));
    EXPECT_THAT(lines, ElementsAre("last"));
    handleEventsFor(50);
    EXPECT_THAT(exits, ElementsAre(3));
}

TEST_F(AdapterProcessRunnerTest, AKilledAdapterIsAnEndToo) {
    put("echo here; exec sleep 1000");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForLines(1));
    kill(*pid(), SIGKILL);
    EXPECT_TRUE(waitUntil([this] { return exits.size() == 1; }));
}

TEST_F(AdapterProcessRunnerTest, AStoppedOneIsSilentAndEnds) {
    put("echo here; exec sleep 1000");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForLines(1));
    runner->stop();
    EXPECT_TRUE(waitUntil([this] { return hasEnded(*pid()); }));
    EXPECT_THAT(exits, IsEmpty());
    runner->stop();
}

TEST_F(AdapterProcessRunnerTest, OneThatIsSuspendedEndsAsWell) {
    put("echo here; exec sleep 1000");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForLines(1));
    kill(*pid(), SIGSTOP);
    runner->stop();
    EXPECT_TRUE(waitUntil([this] { return hasEnded(*pid()); }));
}

TEST_F(AdapterProcessRunnerTest, AReplacedOneNeverCallsBack) {
    put("echo first; exec sleep 1000");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForLines(1));
    const pid_t first = *pid();
    put("echo second; exec sleep 1000");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForLines(2));
    EXPECT_TRUE(waitUntil([first] { return hasEnded(first); }));
    EXPECT_NE(*pid(), first);
    EXPECT_THAT(lines, ElementsAre("first", "second"));
    EXPECT_THAT(exits, IsEmpty());
}

TEST_F(AdapterProcessRunnerTest, ALineMayStopIt) {
    put("printf 'one\\ntwo\\nthree\\n'; exec sleep 1000");
    ASSERT_TRUE(runner->start(
        [this](const std::string& line) {
            lines.push_back(line);
            runner->stop();
        },
        [this](std::int32_t status) { exits.push_back(status); }));
    ASSERT_TRUE(waitForLines(1));
    handleEventsFor(50);
    EXPECT_THAT(lines, ElementsAre("one"));
    EXPECT_THAT(exits, IsEmpty());
}

TEST_F(AdapterProcessRunnerTest, AnEndMayStartItAgain) {
    put("exit 1");
    int starts = 1;
    std::function<void(std::int32_t)> again = [&](std::int32_t) {
        if (++starts < 4) {
            static_cast<void>(runner->start([](const std::string&) {}, again));
        }
    };
    ASSERT_TRUE(runner->start([](const std::string&) {}, again));
    EXPECT_TRUE(waitUntil([&starts] { return starts == 4; }));
}

TEST_F(AdapterProcessRunnerTest, OneThatIsMissingFailsAtOnce) {
    EXPECT_FALSE(start());
    runner->send(AdapterCommand::next);
    handleEventsFor(50);
    EXPECT_THAT(exits, IsEmpty());
}

TEST_F(AdapterProcessRunnerTest, OneThatCannotBeRunEndsSoon) {
    folder.put("adapter", "no program");
    std::filesystem::permissions(folder.path("adapter"), std::filesystem::perms::owner_all);
    EXPECT_TRUE(start());
    EXPECT_TRUE(waitUntil([this] { return exits.size() == 1; }));
    handleEventsFor(50);
    EXPECT_EQ(exits.size(), 1U);
}

TEST_F(AdapterProcessRunnerTest, EachCommandIsAProcessOfItsOwn) {
    put("echo \"$*\" >> '" + folder.path("commands") + "'");
    for (const auto command :
         {AdapterCommand::togglePlayPause, AdapterCommand::next, AdapterCommand::previous}) {
        const auto before = folder.bytesOf("commands");
        runner->send(command);
        ASSERT_TRUE(waitUntil([&] { return folder.bytesOf("commands") != before; }));
    }
    EXPECT_EQ(folder.bytesOf("commands"), "send 2\nsend 4\nsend 5\n");
}

TEST_F(AdapterProcessRunnerTest, CommandsThatHangDoNotPileUp) {
    put("echo \"$*\" >> '" + folder.path("commands") + "'; exec sleep 1000");
    for (int count = 0; count < 50; ++count) {
        runner->send(AdapterCommand::next);
    }
    const auto started = [this] { return std::ranges::count(folder.bytesOf("commands"), '\n'); };
    ASSERT_TRUE(waitUntil([&started] { return started() == 4; }));
    handleEventsFor(100);
    EXPECT_EQ(started(), 4);
}

TEST_F(AdapterProcessRunnerTest, ItsEndEndsTheStream) {
    put("echo here; exec sleep 1000");
    ASSERT_TRUE(start());
    ASSERT_TRUE(waitForLines(1));
    const pid_t running = *pid();
    runner.reset();
    EXPECT_TRUE(waitUntil([running] { return hasEnded(running); }));
    EXPECT_THAT(exits, IsEmpty());
}

TEST_F(AdapterProcessRunnerTest, OrphansAreLookedForOnceAndOnlyWhenItIsNeeded) {
    put("exit 0");
    EXPECT_EQ(time.pendingBackground(), 0U);
    ASSERT_TRUE(start());
    EXPECT_EQ(time.runBackground(), 1U);
    ASSERT_TRUE(start());
    EXPECT_EQ(time.pendingBackground(), 0U);
}

} // namespace
} // namespace veslora
