// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/HooksCommand.h"
#include "VesloraUI/Claude/Hooks/KnownHooks.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class HooksCommandTest : public testing::TestWithParam<AgentKind> {
  protected:
    [[nodiscard]] CommandOutcome perform(Command command, const std::optional<HookSign>& sign = {}) {
        const auto hooks = makeAgentHooks(GetParam(), files, support, platform.paths);
        return HooksCommand::perform(command, *hooks, agent, sign);
    }
    [[nodiscard]] std::string status(const std::optional<HookSign>& sign = {}) {
        const auto outcome = perform(Command::hooksStatus, sign);
        EXPECT_TRUE(outcome.isDone);
        EXPECT_THAT(outcome.text, StartsWith(std::string(agent.rawValue) + ": "));
        return outcome.text.substr(agent.rawValue.size() + 2);
    }
    [[nodiscard]] std::optional<std::string> text() const { return platform.disk.text(configuration); }

    FakePlatform platform;
    FaultInjectingFiles files{platform.disk};
    SupportDirectory support{files, platform.paths.support, platform.paths.runtime};
    const AgentTraits& agent = traitsOf(GetParam());
    const std::string configuration = GetParam() == AgentKind::claude
                                          ? platform.paths.claude + "/settings.json"
                                          : platform.paths.codex + "/hooks.json";
};

TEST_P(HooksCommandTest, InstalledAndRemovedTwiceAllIsAsItWas) {
    const std::string before = R"({"mine" : [1.0]})";
    platform.disk.put(configuration, before);
    EXPECT_EQ(status(), "not installed");
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(perform(Command::installHooks).isDone);
        EXPECT_THAT(status(), StartsWith("installed"));
    }
    EXPECT_EQ(platform.disk.text(configuration + ".veslora-backup"), before);
    for (int time = 0; time < 2; ++time) {
        const auto removed = perform(Command::removeHooks);
        EXPECT_TRUE(removed.isDone);
        EXPECT_THAT(removed.text, HasSubstr("Sessions that run go on working"));
        EXPECT_EQ(status(), "not installed");
    }
    EXPECT_EQ(Json::parse(*text()), Json::parse(before));
}

TEST_P(HooksCommandTest, WhatCantBeUnderstoodIsLeftAndSaidToBe) {
    platform.disk.put(configuration, "{ a slip");
    EXPECT_THAT(status(), StartsWith("not installed; not possible: Couldn't read ~/."));
    for (const Command command : {Command::installHooks, Command::removeHooks}) {
        const auto outcome = perform(command);
        EXPECT_FALSE(outcome.isDone);
        EXPECT_THAT(outcome.text, HasSubstr("nothing was changed"));
    }
    EXPECT_EQ(text(), "{ a slip");
}

TEST_P(HooksCommandTest, AFailureAtAnyStepLosesNothing) {
    platform.disk.put(configuration, R"({"mine" : true})");
    const int before = files.operations();
    EXPECT_TRUE(perform(Command::installHooks).isDone);
    const int steps = files.operations() - before;
    EXPECT_TRUE(perform(Command::removeHooks).isDone);
    for (int step = 1; step <= steps; ++step) {
        files.failOperation(step, std::errc::no_space_on_device);
        const auto outcome = perform(Command::installHooks);
        files.failOperation(0, std::errc::no_space_on_device);
        EXPECT_THAT(*text(), HasSubstr("mine")) << step;
        EXPECT_EQ(outcome.isDone, status().starts_with("installed")) << step << outcome.text;
        EXPECT_TRUE(perform(Command::removeHooks).isDone);
    }
    EXPECT_EQ(Json::parse(*text()), Json::parse(R"({"mine" : true})"));
}

TEST_P(HooksCommandTest, AFullDiskIsToldInTheWordsOfTheSettings) {
    platform.disk.put(configuration, "{}");
    files.writeError = std::errc::no_space_on_device;
    const auto outcome = perform(Command::installHooks);
    EXPECT_FALSE(outcome.isDone);
    EXPECT_THAT(outcome.text, StartsWith("Couldn't write /"));
    EXPECT_THAT(outcome.text, HasSubstr("the disk is full. Nothing was changed."));
    EXPECT_EQ(text(), "{}");
}

TEST_P(HooksCommandTest, AnotherWriterIsToldOf) {
    platform.disk.put(configuration, "{}");
    platform.disk.refusal = FileRefusal::changed;
    EXPECT_THAT(perform(Command::installHooks).text, HasSubstr("another program has just changed it"));
    EXPECT_EQ(text(), "{}");
}

TEST_P(HooksCommandTest, HalfOfThemNeedAnUpdate) {
    EXPECT_TRUE(perform(Command::installHooks).isDone);
    platform.disk.remove(support.pathOf(agent.hookNames.event));
    EXPECT_EQ(status(), "needs an update");
    EXPECT_TRUE(perform(Command::installHooks).isDone);
    EXPECT_THAT(status(), StartsWith("installed"));
}

TEST_P(HooksCommandTest, ASignThatWasHeardIsTold) {
    EXPECT_TRUE(perform(Command::installHooks).isDone);
    const HookSign later{HookSign::Kind::prompt, platform.disk.clock + 60};
    EXPECT_EQ(status(later), "installed; last event at 1800000060");
    EXPECT_TRUE(HooksCommand::saysInstalled(std::string(agent.rawValue) + ": " + status(later), agent));
}

TEST_P(HooksCommandTest, AStatusIsOneLine) {
    platform.paths.claude = "/home/me/\x1b[2J\n";
    platform.paths.codex = platform.paths.claude;
    const auto outcome = perform(Command::hooksStatus);
    EXPECT_EQ(outcome.text.find_first_of("\x1b\n"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(OfEachAgent, HooksCommandTest, testing::Values(AgentKind::claude, AgentKind::codex),
                         [](const auto& tested) { return std::string(traitsOf(tested.param).name); });

TEST(HooksCommand, CodexHasToTrustThem) {
    FakePlatform platform;
    SupportDirectory support{platform.disk, platform.paths.support, platform.paths.runtime};
    const auto hooks = makeAgentHooks(AgentKind::codex, platform.disk, support, platform.paths);
    const AgentTraits& agent = traitsOf(AgentKind::codex);
    EXPECT_EQ(HooksCommand::perform(Command::installHooks, *hooks, agent).text,
              "Codex: the hooks are in. Run /hooks in it and trust them.");
    const std::string line = HooksCommand::perform(Command::hooksStatus, *hooks, agent).text;
    EXPECT_EQ(line, "codex: installed; not trusted yet, run /hooks in it");
    EXPECT_TRUE(HooksCommand::saysInstalled(line, agent));
    EXPECT_FALSE(HooksCommand::saysInstalled("codex: not installed", agent));
    EXPECT_FALSE(HooksCommand::saysInstalled("claude: installed", agent));
}

} // namespace
} // namespace veslora
