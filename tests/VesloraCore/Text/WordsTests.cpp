// SPDX-License-Identifier: MIT
// The core's texts in another language than its own.
#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Agents/ClaudeStatusText.h"
#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"
#include "VesloraCore/Agents/Usage/AgentUsage.h"
#include "VesloraCore/Agents/Usage/ClaudeUsageText.h"
#include "VesloraCore/Island/ClosedIsland.h"
#include "VesloraCore/Island/CommandLine.h"
#include "VesloraCore/KeepAwake/KeepAwakeText.h"
#include "VesloraCore/System/MeterMath.h"
#include "VesloraCore/Text/Words.h"

#include <gtest/gtest.h>

#include <string>

namespace veslora {
namespace {

/// Puts every text between brackets, and a comma into numbers.
const Words bracketed([](const char*, const char* text) { return "[" + std::string(text) + "]"; }, ",");

TEST(WordsTests, AreEnglishUnlessOthersAreGiven) {
    EXPECT_EQ(Words().translate("any", "DONE"), "DONE");
    EXPECT_EQ(Words().decimalPoint(), ".");
}

TEST(WordsTests, FillPatternsInAnyOrder) {
    EXPECT_EQ(Words::filled("%2 of %1", {"a", "b"}), "b of a");
    EXPECT_EQ(Words::filled("%1%1", {"a"}), "aa");
    EXPECT_EQ(Words::filled("", {"a"}), "");
    EXPECT_EQ(Words::filled("100%", {"a"}), "100%");
    EXPECT_EQ(Words::filled("%0 %x %3 %", {"a", "b"}), "%0 %x %3 %") << "marks without a value";
}

TEST(WordsTests, LookForNoMarkInAValue) {
    EXPECT_EQ(Words::filled("%1 %2", {"%2", "%1"}), "%2 %1");
}

TEST(WordsTests, AStatusIsInTheReadersWords) {
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::NeedsApproval{"", 0}, 0, bracketed), "[APPROVE]");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Finished{0}, 0, bracketed), "[DONE]");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Idle{}, 0, bracketed), "[IDLE]");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Working{0}, 30, bracketed), "[<1M]");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Working{0}, 720, bracketed), "[12M]");
    EXPECT_EQ(ClaudeStatusText::label(ClaudeStatus::Working{0}, 3900, bracketed), "[1H05]");
}

TEST(WordsTests, OnlyOurOwnPartOfAMessageIsTranslated) {
    EXPECT_EQ(AlertNotice::message("Claude needs your permission", bracketed), "[Needs your permission]");
    EXPECT_EQ(AlertNotice::message("Claude needs your permission to use Bash", bracketed),
              "[Wants to use Bash]");
    EXPECT_EQ(AlertNotice::message("Wants to use Bash", bracketed), "[Wants to use Bash]");
    EXPECT_EQ(AlertNotice::message(AlertNotice::waitingForYou, bracketed), "[Waiting for you]");
    EXPECT_EQ(AlertNotice::message("May I?", bracketed), "May I?") << "the agent's";
}

TEST(WordsTests, OnlyOurOwnPartOfAnActivityIsTranslated) {
    const auto line = [](const char* tool, const char* input) {
        return ClaudeActivity::describe(tool, *Json::parse(input), bracketed);
    };
    EXPECT_EQ(line("Edit", R"({"file_path": "/a/b.cpp"})"), "[Edit: b.cpp]");
    EXPECT_EQ(line("Write", R"({"file_path": "/a/b.cpp"})"), "[Write: b.cpp]");
    EXPECT_EQ(line("Read", R"({"file_path": "/a/b.cpp"})"), "[Read: b.cpp]");
    EXPECT_EQ(line("Grep", R"({"pattern": "x"})"), "[Search: x]");
    EXPECT_EQ(line("WebFetch", R"({"url": "https://a.example/b"})"), "[Web: a.example]");
    EXPECT_EQ(line("WebSearch", R"({"query": "x"})"), "[Web: x]");
    EXPECT_EQ(line("Task", R"({"description": "x"})"), "[Agent: x]");
    EXPECT_EQ(line("Bash", R"({"description": "Edit: all"})"), "Edit: all") << "the agent's";
    EXPECT_EQ(line("Bash", R"({"command": "ls"})"), "Bash: ls") << "a tool's name";
}

TEST(WordsTests, AnEventCarriesItsActivityInTheReadersWords) {
    const auto event = ClaudeHookEvent::parse(
        R"({"session_id": "s", "hook_event_name": "PreToolUse", "tool_name": "Read", "tool_input": {"file_path": "/b"}})",
        0, bracketed);
    ASSERT_TRUE(event);
    EXPECT_EQ(std::get<ClaudeHookEvent::ToolStart>(event->kind).text, "[Read: b]");
}

TEST(WordsTests, MetersAreInTheReadersWordsAndNumbers) {
    EXPECT_EQ(MeterMath::memoryGigabytes(std::uint64_t{15} << 29, bracketed), "7,5");
    EXPECT_EQ(MeterMath::memoryGigabytes(std::uint64_t{8} << 30, bracketed), "8");
    EXPECT_EQ(MeterMath::cpuDetail({}, bracketed), "[USER -- · SYS --]");
    EXPECT_EQ(MeterMath::batteryDetail({.onAC = true}, bracketed), "[ON POWER]");
    EXPECT_EQ(MeterMath::batteryDetail({}, bracketed), "[CALCULATING…]");
    EXPECT_EQ(MeterMath::batteryDetail({.minutesToEmpty = 65}, bracketed), "[1:05 LEFT]");
    EXPECT_EQ(MeterMath::batteryDetail({.isCharging = true, .minutesToFull = 65}, bracketed),
              "[CHARGING · 1:05 TO FULL]");
}

TEST(WordsTests, TokensAreInTheReadersNumbers) {
    EXPECT_EQ(ClaudeUsageText::tokens(999, bracketed), "999");
    EXPECT_EQ(ClaudeUsageText::tokens(1'500, bracketed), "[1K]");
    EXPECT_EQ(ClaudeUsageText::tokens(1'230'000, bracketed), "[1,23M]");
    EXPECT_EQ(ClaudeUsageText::tokens(2'000'000, bracketed), "[2M]");
    const CodexContext context{.percent = 5, .window = 200'000};
    EXPECT_EQ(codexUsage({}, context, {}, 0, bracketed).contextDetail, "[of [200K]]");
}

TEST(WordsTests, TheTimeThatIsLeftIsInTheReadersWords) {
    EXPECT_EQ(KeepAwakeText::shortText(0, bracketed), "[1M]");
    EXPECT_EQ(KeepAwakeText::shortText(600, bracketed), "[10M]");
}

TEST(WordsTests, AWingHasRoomForTheReadersWord) {
    ClosedIslandInputs inputs;
    inputs.agents.hasFinished = true;
    const auto measure = [](const std::string& text) { return 10.0 * static_cast<double>(text.size()); };
    const auto width = [&](const Words& words) {
        return *closedIslandActivity(inputs, {}, measure, 0, words).wingWidth;
    };
    EXPECT_EQ(width(bracketed) - width({}), 20);
}

TEST(WordsTests, TheCommandLineExplainsItselfInTheReadersWords) {
    EXPECT_EQ(CommandLine::usage(bracketed).rfind("[usage: veslora [--verbose", 0), 0U);
    EXPECT_EQ(CommandLine::usage(bracketed).substr(CommandLine::usage(bracketed).size() - 3), "]]\n");
    EXPECT_EQ(CommandLine::explanation(bracketed), "[" + CommandLine::explanation() + "]");
}

} // namespace
} // namespace veslora
