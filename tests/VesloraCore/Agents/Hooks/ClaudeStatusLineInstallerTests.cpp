// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraCore/Agents/Hooks/ClaudeStatusLineInstaller.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/ShellQuote.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/VesloraCore/TestJson.h"

#include <gtest/gtest.h>

using namespace veslora;
using namespace veslora::ClaudeStatusLineInstaller;
using ClaudeHooksInstaller::HookSet;

namespace {

const std::string support = "/home/me/.local/share/Veslora/";
const std::string line = shellQuoted(support + "claude-statusline.sh");
const ClaudeHooksInstaller::Commands commands = {shellQuoted(support + "claude-hook.sh"),
                                                 shellQuoted(support + "claude-permission.sh"),
                                                 {support + "claude-hook.sh"}};

// Everything that is written into Claude Code's settings, as installing does it.
Installed installWhole(const std::string& text) {
    return installing(ClaudeHooksInstaller::installing(text, commands, HookSet::claude()), line);
}

std::string removeWhole(const Installed& installed) {
    return removing(ClaudeHooksInstaller::removing(installed.text, commands), line, installed.previous);
}

} // namespace

TEST(ClaudeSettings, ComeOutAsTheFilesSay) {
    for (const std::string& path : test::dataFiles("settings", ".before.json")) {
        const std::string stem = path.substr(0, path.size() - std::string(".before.json").size());
        const Installed installed = installWhole(test::dataFile(path));
        EXPECT_EQ(installed.text, test::dataFile(stem + ".installed.json")) << path;
        EXPECT_EQ(removeWhole(installed), test::dataFile(stem + ".removed.json")) << path;
    }
}

TEST(ClaudeSettings, InstallingAgainChangesNothing) {
    for (const std::string& path : test::dataFiles("settings", ".installed.json")) {
        const std::string text = test::dataFile(path);
        EXPECT_EQ(installWhole(text), (Installed{text, std::nullopt})) << path;
    }
}

TEST(ClaudeStatusLineInstaller, SavesTheUsersOwnLineOfAnyKind) {
    EXPECT_EQ(installing(R"({"statusLine":{"padding":1.0,"command":"a/b","a":null}})", line).previous,
              R"({"a":null,"command":"a/b","padding":1.0})");
    EXPECT_EQ(installing(R"({"statusLine":"text"})", line).previous, "\"text\"");
    EXPECT_EQ(installing(R"({"statusLine":null})", line).previous, "null");
    EXPECT_FALSE(installing("{}", line).previous);
    EXPECT_FALSE(installing(std::nullopt, line).previous);
}

TEST(ClaudeStatusLineInstaller, ItsOwnLineIsNothingToSave) {
    const Installed once = installing("{}", line);
    EXPECT_EQ(installing(once.text, line), (Installed{once.text, std::nullopt}));
    EXPECT_EQ(once.text, "{\n  \"statusLine\" : {\n    \"command\" : \"" + line +
                             "\",\n    \"padding\" : 0,\n    \"type\" : \"command\"\n  }\n}\n");
}

TEST(ClaudeStatusLineInstaller, AWrappedLineKeepsWhatTheUserSetBesideTheCommand) {
    const std::string own =
        R"({"statusLine":{"command":"mine","hideVimModeIndicator":true,"later":1.50,"padding":2,"refreshInterval":10}})";
    const Installed once = installing(own, line);
    EXPECT_EQ(once.text, "{\n  \"statusLine\" : {\n    \"command\" : \"" + line +
                             "\",\n    \"hideVimModeIndicator\" : true,\n    \"later\" : 1.50,\n    "
                             "\"padding\" : 2,\n    \"refreshInterval\" : 10,\n    \"type\" : "
                             "\"command\"\n  }\n}\n");
    EXPECT_EQ(installing(once.text, line), (Installed{once.text, std::nullopt}));
    EXPECT_EQ(removing(once.text, line, once.previous),
              Json::parse(own, Json::Reading::lossless)->print(Json::Layout::pretty) + "\n");
}

TEST(ClaudeStatusLineInstaller, AWrappedLineGetsNoPaddingThatTheUserDidNotSet) {
    const Installed once = installing(R"({"statusLine":{"type":"command","command":"mine"}})", line);
    EXPECT_FALSE(Json::parse(once.text)->find("statusLine")->find("padding"));
}

TEST(ClaudeStatusLineInstaller, RemovingGivesBackWhatWasSaved) {
    const std::string text = installing("{}", line).text;
    EXPECT_EQ(removing(text, line, R"({"command":"mine"})"),
              "{\n  \"statusLine\" : {\n    \"command\" : \"mine\"\n  }\n}\n");
    EXPECT_EQ(removing(text, line, "5"), "{\n  \"statusLine\" : 5\n}\n");
    EXPECT_EQ(removing(text, line, std::nullopt), "{}\n");
    EXPECT_EQ(removing(text, line, "no JSON"), "{}\n");
    EXPECT_EQ(removing(text, line, ""), "{}\n");
}

TEST(ClaudeStatusLineInstaller, RemovingLeavesALineThatIsNotOurs) {
    EXPECT_EQ(removing(R"({"statusLine":{"command":"mine"}})", line, "5"),
              "{\n  \"statusLine\" : {\n    \"command\" : \"mine\"\n  }\n}\n");
    EXPECT_EQ(removing("", line, "5"), "{}\n");
}

TEST(ClaudeStatusLineInstaller, KnowsItsOwnLineByItsCommand) {
    EXPECT_TRUE(isInstalled(installing("{}", line).text, line));
    EXPECT_FALSE(isInstalled("{}", line));
    EXPECT_FALSE(isInstalled(std::nullopt, line));
    EXPECT_FALSE(isInstalled("nonsense", line));
    EXPECT_FALSE(isInstalled(R"({"statusLine":"x"})", line));
    EXPECT_FALSE(isInstalled(R"({"statusLine":{"command":["x"]}})", line));
}

TEST(ClaudeStatusLineInstaller, RefusesWhatItCouldNotWriteBack) {
    for (const std::string& path : test::dataFiles("settings/refused", ".json")) {
        const std::string text = test::dataFile(path);
        EXPECT_THROW((void)installing(text, line), ClaudeHooksInstaller::InstallError) << path;
        EXPECT_THROW((void)removing(text, line, std::nullopt), ClaudeHooksInstaller::InstallError) << path;
        EXPECT_FALSE(isInstalled(text, line)) << path;
    }
}

TEST(ClaudeStatusLineInstaller, FindsTheCommandOfASavedLine) {
    EXPECT_EQ(commandOf(R"({"command":"mine","padding":2})"), "mine");
    EXPECT_FALSE(commandOf(R"({"command":5})"));
    EXPECT_FALSE(commandOf("\"mine\""));
    EXPECT_FALSE(commandOf("nonsense"));
}

TEST(ClaudeStatusLineInstaller, InstallingAndRemovingGivesBackWhatWas) {
    test::JsonGenerator generator;
    for (int round = 0; round < 500; ++round) {
        Json before = Json::makeObject();
        before.set(generator.text(), generator.value(4));
        if (generator.pick(2) == 0) {
            before.set("statusLine", generator.value(3));
        }
        const Installed once = installing(before.print(Json::Layout::compact), line);
        ASSERT_EQ(removing(once.text, line, once.previous), before.print(Json::Layout::pretty) + "\n");
    }
}
