// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/ShellQuote.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/VesloraCore/TestJson.h"

#include <gtest/gtest.h>

using namespace veslora;
using namespace veslora::ClaudeHooksInstaller;

namespace {

const std::string support = "/home/me/.local/share/Veslora/";
const Commands commands = {shellQuoted(support + "claude-hook.sh"),
                           shellQuoted(support + "claude-permission.sh"),
                           {support + "claude-hook.sh"}};
const Commands codexCommands = {
    shellQuoted(support + "codex-hook.sh"), shellQuoted(support + "codex-permission.sh"), {}};

std::string installed(std::optional<std::string_view> text) {
    return installing(text, commands, HookSet::claude());
}

bool isIn(std::optional<std::string_view> text) {
    return isInstalled(text, commands, HookSet::claude());
}

bool isPartlyIn(std::optional<std::string_view> text) {
    return isPartlyInstalled(text, commands, HookSet::claude());
}

Json parsed(const std::string& text) {
    const auto value = Json::parse(text);
    EXPECT_TRUE(value) << text;
    return value.value_or(Json());
}

// A configuration whose events all have groups, so that taking ours out leaves it as it was.
Json configuration(test::JsonGenerator& generator) {
    Json root = Json::makeObject();
    for (int count = generator.pick(5); count > 0; --count) {
        root.set(generator.text() + "key", generator.value(4));
    }
    if (generator.pick(2) == 0) {
        return root;
    }
    Json hooks = Json::makeObject();
    for (const std::string event : {"Stop", "PreToolUse", "PermissionRequest", "Custom"}) {
        if (generator.pick(2) == 0) {
            hooks.set(event, Json::makeArray({generator.value(3)}));
        }
    }
    if (!hooks.members().empty()) {
        root.set("hooks", hooks);
    }
    return root;
}

} // namespace

TEST(ClaudeHooksInstaller, TheSetsNameTheirEvents) {
    EXPECT_EQ(HookSet::claude().events, (std::vector<std::string>{"UserPromptSubmit", "Stop", "Notification",
                                                                  "PreToolUse", "PostToolUse"}));
    EXPECT_EQ(HookSet::claude().toolMatcher, "*");
    EXPECT_FALSE(HookSet::claude().timeout);
    EXPECT_EQ(HookSet::codex().events,
              (std::vector<std::string>{"SessionStart", "UserPromptSubmit", "PreToolUse", "PostToolUse",
                                        "Stop", "SessionEnd", "Interrupt"}));
    EXPECT_FALSE(HookSet::codex().toolMatcher);
    EXPECT_EQ(HookSet::codex().timeout, 3);
}

TEST(ClaudeHooksInstaller, AnAbsentFileAndBlankOnesInstallAlike) {
    const std::string fresh = installed(std::nullopt);
    EXPECT_EQ(installed(""), fresh);
    EXPECT_EQ(installed(" \r\n\t\n"), fresh);
    EXPECT_EQ(installed("\xEF\xBB\xBF\n"), fresh);
    EXPECT_EQ(installed("{}"), fresh);
    EXPECT_TRUE(isIn(fresh));
}

TEST(ClaudeHooksInstaller, RefusesWhatItCouldNotWriteBack) {
    for (const std::string& path : test::dataFiles("settings/refused", ".json")) {
        const std::string text = test::dataFile(path);
        EXPECT_THROW((void)installed(text), InstallError) << path;
        EXPECT_THROW((void)removing(text, commands), InstallError) << path;
        EXPECT_FALSE(isIn(text)) << path;
        EXPECT_FALSE(isPartlyIn(text)) << path;
    }
    try {
        (void)installed("[]");
        ADD_FAILURE() << "a list was taken for an object";
    } catch (const InstallError& error) {
        EXPECT_EQ(error.reason, InstallError::Reason::notAnObject);
    }
}

TEST(ClaudeHooksInstaller, CodexGetsNoMatcherAndATimeout) {
    const Json root = parsed(installing(std::nullopt, codexCommands, HookSet::codex()));
    const Json* hooks = root.objectAt("hooks");
    ASSERT_TRUE(hooks);
    EXPECT_EQ(hooks->members().size(), 8u);
    EXPECT_EQ(
        hooks->find("PreToolUse")->print(Json::Layout::compact),
        R"json([{"hooks":[{"command":"'/home/me/.local/share/Veslora/codex-hook.sh'","timeout":3,"type":"command"}]}])json");
    EXPECT_EQ(
        hooks->find("PermissionRequest")->print(Json::Layout::compact),
        R"json([{"hooks":[{"command":"'/home/me/.local/share/Veslora/codex-permission.sh'","timeout":30,"type":"command"}]}])json");
}

TEST(ClaudeHooksInstaller, WithoutAPermissionCommandThatEventIsLeftAlone) {
    const Commands eventAlone = {commands.event, std::nullopt, {}};
    const std::string text =
        installing(R"({"hooks":{"PermissionRequest":5}})", eventAlone, HookSet::claude());
    EXPECT_EQ(parsed(text).objectAt("hooks")->find("PermissionRequest")->integer(), 5);
    EXPECT_TRUE(isInstalled(text, eventAlone, HookSet::claude()));
    EXPECT_FALSE(isIn(text));
}

TEST(ClaudeHooksInstaller, RemovingFromACodexFileOfOursAloneLeavesAnEmptyObject) {
    const std::string text = installing(std::nullopt, codexCommands, HookSet::codex());
    EXPECT_EQ(removing(text, codexCommands), "{}\n");
}

TEST(ClaudeHooksInstaller, IsInstalledOnlyWhenEveryEventHasOurs) {
    const std::string whole = installed(R"({"a":1})");
    EXPECT_TRUE(isIn(whole));
    EXPECT_FALSE(isPartlyIn(whole));
    const Json root = parsed(whole);
    for (const Json::Member& event : root.objectAt("hooks")->members()) {
        Json damaged = root;
        damaged.find("hooks")->remove(event.key);
        const std::string text = damaged.print(Json::Layout::compact);
        EXPECT_FALSE(isIn(text)) << event.key;
        EXPECT_TRUE(isPartlyIn(text)) << event.key;
    }
}

TEST(ClaudeHooksInstaller, OursInAnyEventIsPartlyInstalled) {
    const auto withEntry = [](const std::string& event, const std::string& command) {
        Json entry;
        entry.set("command", Json::makeString(command));
        Json group;
        group.set("hooks", Json::makeArray({entry}));
        Json root;
        root.set("hooks", Json());
        root.find("hooks")->set(event, Json::makeArray({group}));
        return root.print(Json::Layout::compact);
    };
    EXPECT_TRUE(isPartlyIn(withEntry("PermissionRequest", *commands.permission)));
    EXPECT_TRUE(isPartlyIn(withEntry("Custom", commands.event)));
    EXPECT_FALSE(isPartlyIn(withEntry("Stop", "mine")));
    EXPECT_FALSE(isPartlyIn(withEntry("Stop", commands.legacy.front())));
    EXPECT_FALSE(isPartlyIn(R"({"hooks":[]})"));
    EXPECT_FALSE(isPartlyIn("{}"));
    EXPECT_FALSE(isPartlyIn(""));
    EXPECT_FALSE(isPartlyIn(std::nullopt));
    EXPECT_FALSE(isIn(std::nullopt));
    EXPECT_FALSE(isIn("nonsense"));
}

TEST(ClaudeHooksInstaller, FindsACommandWithASingleQuoteAgain) {
    const Commands odd = {shellQuoted("/home/it's me/claude-hook.sh"), shellQuoted("/home/it's me/p.sh"), {}};
    const std::string text = installing("{}", odd, HookSet::claude());
    EXPECT_TRUE(isInstalled(text, odd, HookSet::claude()));
    EXPECT_NE(text.find(R"("command" : "'/home/it'\\''s me/claude-hook.sh'")"), std::string::npos) << text;
    EXPECT_EQ(removing(text, odd), "{}\n");
}

TEST(ClaudeHooksInstaller, InstallingTwiceChangesNothingAndRemovingGivesBackWhatWas) {
    test::JsonGenerator generator;
    for (int round = 0; round < 500; ++round) {
        const Json before = configuration(generator);
        const std::string once = installed(before.print(Json::Layout::compact));
        ASSERT_EQ(installed(once), once);
        ASSERT_TRUE(isIn(once));
        ASSERT_EQ(removing(once, commands), before.print(Json::Layout::pretty) + "\n");
    }
}
