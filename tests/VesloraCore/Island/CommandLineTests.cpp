// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

using namespace veslora;
using testing::HasSubstr;

namespace {

constexpr std::array all{Command::settings,     Command::toggle, Command::nextPage,
                         Command::previousPage, Command::edit,   Command::pause,
                         Command::resume,       Command::quit,   Command::status};

CommandLine::Request parse(const std::vector<std::string_view>& words) {
    return CommandLine::parse(words);
}

} // namespace

TEST(CommandLineTest, WithoutAWordTheProgramStarts) {
    EXPECT_EQ(parse({}), CommandLine::Request(CommandLine::Start{}));
}

TEST(CommandLineTest, KnowsEachWord) {
    EXPECT_EQ(parse({"--help"}), CommandLine::Request(CommandLine::Help{}));
    EXPECT_EQ(parse({"--version"}), CommandLine::Request(CommandLine::Version{}));
    EXPECT_EQ(parse({"--verbose"}), CommandLine::Request(CommandLine::Start{.isVerbose = true}));
    EXPECT_EQ(parse({"report"}), CommandLine::Request(CommandLine::Report{}));
    EXPECT_EQ(parse({"settings"}), CommandLine::Request(CommandLine::Ask{Command::settings}));
    EXPECT_EQ(parse({"toggle"}), CommandLine::Request(CommandLine::Ask{Command::toggle}));
    EXPECT_EQ(parse({"page", "next"}), CommandLine::Request(CommandLine::Ask{Command::nextPage}));
    EXPECT_EQ(parse({"page", "previous"}), CommandLine::Request(CommandLine::Ask{Command::previousPage}));
    EXPECT_EQ(parse({"edit"}), CommandLine::Request(CommandLine::Ask{Command::edit}));
    EXPECT_EQ(parse({"resume"}), CommandLine::Request(CommandLine::Ask{Command::resume}));
    EXPECT_EQ(parse({"quit"}), CommandLine::Request(CommandLine::Ask{Command::quit}));
    EXPECT_EQ(parse({"status"}), CommandLine::Request(CommandLine::Ask{Command::status}));
}

TEST(CommandLineTest, AnyOtherWordIsWrong) {
    for (const std::string_view word : {"", " ", "Settings", "settings ", "toggle\n", "--Help", "-h", "help",
                                        "--settings", "-platform", "--"}) {
        EXPECT_EQ(parse({word}), CommandLine::Request(CommandLine::Wrong{})) << word;
    }
    EXPECT_EQ(parse({std::string_view("quit\0", 5)}), CommandLine::Request(CommandLine::Wrong{}));
}

TEST(CommandLineTest, APageIsTheNextOrThePreviousOne) {
    EXPECT_EQ(parse({"page"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"page", "sideways"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"page", "next", "next"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"page", "", "next"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"next", "page"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"page next"}), CommandLine::Request(CommandLine::Wrong{})) << "as one word";
    EXPECT_EQ(parse({"", "edit"}), CommandLine::Request(CommandLine::Wrong{}));
}

TEST(CommandLineTest, MoreThanOneWordIsWrong) {
    EXPECT_EQ(parse({"settings", "toggle"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"status", ""}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"--help", "--help"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"-platform", "offscreen"}), CommandLine::Request(CommandLine::Wrong{}));
}

TEST(CommandLineTest, APauseHasALengthOrLastsAnHour) {
    const auto pauseOf = [](const AlertPause::Length& length) {
        return CommandLine::Request(CommandLine::Ask{Command::pause, length});
    };
    EXPECT_EQ(parse({"pause"}), pauseOf(AlertPause::For{3600}));
    EXPECT_EQ(parse({"pause", "1h"}), pauseOf(AlertPause::For{3600}));
    EXPECT_EQ(parse({"pause", "2h30m"}), pauseOf(AlertPause::For{9000}));
    EXPECT_EQ(parse({"pause", "tomorrow"}), pauseOf(AlertPause::UntilTomorrow{}));
}

TEST(CommandLineTest, AnyOtherLengthIsWrongAndSaidToBeThat) {
    for (const char* length : {"nonsense", "0m", "169h", "1h30"}) {
        EXPECT_EQ(parse({"pause", length}), CommandLine::Request(CommandLine::Wrong{.isLength = true}));
    }
    EXPECT_EQ(parse({"pause", "1h", "30m"}), CommandLine::Request(CommandLine::Wrong{.isLength = true}));
    EXPECT_EQ(parse({"pause", ""}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"pause 1h"}), CommandLine::Request(CommandLine::Wrong{})) << "as one word";
    EXPECT_EQ(parse({"pauses"}), CommandLine::Request(CommandLine::Wrong{}));
    EXPECT_EQ(parse({"resume", "1h"}), CommandLine::Request(CommandLine::Wrong{}));
}

TEST(CommandLineTest, ALineOfAPauseHoldsItsLength) {
    for (const CommandLine::Ask& ask : {CommandLine::Ask{Command::pause, AlertPause::For{604'800}},
                                        CommandLine::Ask{Command::pause, AlertPause::UntilTomorrow{}}}) {
        EXPECT_EQ(CommandLine::askFor(CommandLine::lineFor(ask)), ask);
    }
    EXPECT_EQ(CommandLine::askFor("pause "), std::nullopt);
    EXPECT_EQ(CommandLine::askFor("pause  1h"), std::nullopt);
    EXPECT_EQ(CommandLine::askFor("pause 1h "), std::nullopt);
}

TEST(CommandLineTest, EachCommandHasAWordOfItsOwn) {
    for (const Command command : all) {
        const CommandLine::Ask ask{command};
        EXPECT_EQ(CommandLine::askFor(CommandLine::wordFor(command)), ask);
        EXPECT_EQ(CommandLine::askFor(CommandLine::lineFor(ask)), ask);
    }
    EXPECT_EQ(CommandLine::askFor("--help"), std::nullopt);
}

TEST(CommandLineTest, AKeyAndAValueMayBeAnyText) {
    EXPECT_EQ(parse({"get"}), CommandLine::Request(CommandLine::Get{}));
    EXPECT_EQ(parse({"get", "accent"}), CommandLine::Request(CommandLine::Get{"accent"}));
    EXPECT_EQ(parse({"get", "no key"}), CommandLine::Request(CommandLine::Get{"no key"}));
    EXPECT_EQ(parse({"set", "accent", "cyan"}), CommandLine::Request(CommandLine::Set{"accent", "cyan"}));
    EXPECT_EQ(parse({"set", "displayOutput", ""}),
              CommandLine::Request(CommandLine::Set{"displayOutput", ""}));
    EXPECT_EQ(parse({"set", "widgetLayout", "timer, music\n"}),
              CommandLine::Request(CommandLine::Set{"widgetLayout", "timer, music\n"}));
    for (const auto& words : std::vector<std::vector<std::string_view>>{{"get", ""},
                                                                        {"get", "a", "b"},
                                                                        {"set"},
                                                                        {"set", "accent"},
                                                                        {"set", "", "x"},
                                                                        {"set", "accent", "a", "b"},
                                                                        {"get accent"},
                                                                        {"get "}}) {
        EXPECT_EQ(parse(words), CommandLine::Request(CommandLine::Wrong{})) << words.front();
    }
}

TEST(CommandLineTest, SettingsGoOutAndComeIn) {
    EXPECT_EQ(parse({"export"}), CommandLine::Request(CommandLine::Export{}));
    EXPECT_EQ(parse({"export", "--all"}), CommandLine::Request(CommandLine::Export{.isWhole = true}));
    EXPECT_EQ(parse({"import"}), CommandLine::Request(CommandLine::Import{}));
    EXPECT_EQ(parse({"import", "-"}), CommandLine::Request(CommandLine::Import{}));
    EXPECT_EQ(parse({"import", "my settings.json"}),
              CommandLine::Request(CommandLine::Import{"my settings.json"}));
    for (const auto& words : std::vector<std::vector<std::string_view>>{{"export", "all"},
                                                                        {"export", "--all", "--all"},
                                                                        {"export", ""},
                                                                        {"import", ""},
                                                                        {"import", "a", "b"},
                                                                        {"import {}"},
                                                                        {"--all"}}) {
        EXPECT_EQ(parse(words), CommandLine::Request(CommandLine::Wrong{})) << words.front();
    }
}

TEST(CommandLineTest, HooksAreOfOneAgentOrOfAll) {
    EXPECT_EQ(parse({"hooks", "install"}),
              CommandLine::Request(CommandLine::Hooks{Command::installHooks, {}}));
    EXPECT_EQ(parse({"hooks", "remove", "claude"}),
              CommandLine::Request(CommandLine::Hooks{Command::removeHooks, AgentKind::claude}));
    EXPECT_EQ(parse({"hooks", "status", "codex"}),
              CommandLine::Request(CommandLine::Hooks{Command::hooksStatus, AgentKind::codex}));
    for (const auto& words :
         std::vector<std::vector<std::string_view>>{{"hooks"},
                                                    {"hooks", "toggle"},
                                                    {"hooks", ""},
                                                    {"hooks", "install", "Claude"},
                                                    {"hooks", "install", ""},
                                                    {"hooks", "install", "claude", "codex"},
                                                    {"hooks install"}}) {
        EXPECT_EQ(parse(words), CommandLine::Request(CommandLine::Wrong{})) << words.front();
    }
}

TEST(CommandLineTest, ALineHoldsWhatBelongsToItsCommand) {
    for (const CommandLine::Ask& ask : {CommandLine::Ask{Command::exportSettings, {}, {}},
                                        CommandLine::Ask{Command::importSettings, {}, R"({"accent": "x y"})"},
                                        CommandLine::Ask{Command::installHooks, {}, "claude"},
                                        CommandLine::Ask{Command::removeHooks, {}, "codex"},
                                        CommandLine::Ask{Command::hooksStatus, {}, "codex"}}) {
        EXPECT_EQ(CommandLine::askFor(CommandLine::lineFor(ask)), ask) << CommandLine::lineFor(ask);
    }
    for (const char* line : {"import", "import ", "hooks install", "hooks install ", "hooks install cl",
                             "hooks", "export --all", "get accent", "set accent cyan"}) {
        EXPECT_EQ(CommandLine::askFor(line), std::nullopt) << line;
    }
}

TEST(CommandLineTest, UsageIsOneLineWithEveryWordAndTheExplanationTellsOfEach) {
    const std::string usage(CommandLine::usage());
    EXPECT_EQ(usage.find('\n'), usage.size() - 1);
    std::vector<std::string> words{"--help", "--version"};
    for (const Command command : all) {
        words.emplace_back(CommandLine::wordFor(command));
    }
    words.insert(words.end(),
                 {"get", "set", "export", "import", "hooks install", "hooks remove", "hooks status"});
    for (const std::string& word : words) {
        EXPECT_THAT(usage, HasSubstr(word));
        EXPECT_THAT(std::string(CommandLine::explanation()), HasSubstr("\n  " + word + " "));
    }
}
