// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "tests/VesloraCore/TestText.h"

#include <gtest/gtest.h>

using namespace veslora;
using test::repeated;
using namespace std::string_literals;

namespace {

std::string described(std::string_view tool, std::string_view input, std::string_view home = "/home/me") {
    const auto value = Json::parse(input);
    EXPECT_TRUE(value) << input;
    return ClaudeRequestText::describe(tool, value.value_or(Json()), home);
}

std::string shown(std::string_view text) {
    return ClaudeRequestText::display(text).text;
}

} // namespace

TEST(ClaudeRequestText, BashIsItsCommandUnchanged) {
    EXPECT_EQ(described("Bash", R"({"command":"ls\npwd ","description":"x"})"), "ls\npwd ");
    EXPECT_EQ(described("Bash", R"({"command":""})"), "");
}

TEST(ClaudeRequestText, BashWithoutACommandTakesTheGenericForm) {
    EXPECT_EQ(described("Bash", R"({"timeout":5,"command":["ls"]})"),
              R"(Bash · command: ["ls"] · timeout: 5)");
    EXPECT_EQ(described("Bash", "{}"), "Bash");
}

TEST(ClaudeRequestText, FileToolsShowTheirPath) {
    EXPECT_EQ(described("Edit", R"({"file_path":"/etc/hosts"})"), "Edit /etc/hosts");
    EXPECT_EQ(described("MultiEdit", R"({"file_path":"/etc/hosts"})"), "Edit /etc/hosts");
    EXPECT_EQ(described("Write", R"({"file_path":"/home/me/a"})"), "Write ~/a");
    EXPECT_EQ(described("Read", R"({"file_path":"/home/me/a"})"), "Read ~/a");
    EXPECT_EQ(described("NotebookEdit", R"({"notebook_path":"/home/me/a.ipynb"})"), "NotebookEdit ~/a.ipynb");
    EXPECT_EQ(described("NotebookEdit", R"({"file_path":"/home/me/a"})"), "NotebookEdit ");
    EXPECT_EQ(described("Write", R"({"file_path":5})"), "Write ");
    EXPECT_EQ(described("Read", "{}"), "Read ");
}

TEST(ClaudeRequestText, OnlyTheHomeItselfIsShortened) {
    EXPECT_EQ(described("Read", R"({"file_path":"/home/me"})"), "Read ~");
    EXPECT_EQ(described("Read", R"({"file_path":"/home/me/"})"), "Read ~/");
    EXPECT_EQ(described("Read", R"({"file_path":"/home/melissa/a"})"), "Read /home/melissa/a");
    EXPECT_EQ(described("Read", R"({"file_path":"/mnt/home/me/a"})"), "Read /mnt/home/me/a");
    EXPECT_EQ(described("Read", R"({"file_path":"/etc/hosts"})", ""), "Read /etc/hosts");
}

TEST(ClaudeRequestText, WebToolsShowTheirSubject) {
    EXPECT_EQ(described("WebFetch", R"({"url":"https://example.com/a"})"), "WebFetch https://example.com/a");
    EXPECT_EQ(described("WebFetch", "{}"), "WebFetch ");
    EXPECT_EQ(described("WebSearch", R"({"query":"weather"})"), "WebSearch weather");
    EXPECT_EQ(described("WebSearch", R"({"query":1})"), "WebSearch ");
}

TEST(ClaudeRequestText, OtherToolsListTheirInputSorted) {
    EXPECT_EQ(described("Custom", R"({"b":"x y","a":1.0,"c":true,"d":null,"e":{"z":[1],"k":"v"},"B":1e400})"),
              R"(Custom · B: 1e400 · a: 1.0 · b: x y · c: true · d: null · e: {"k":"v","z":[1]})");
    EXPECT_EQ(described("mcp__git_hub__open_pull_request", R"({"title":"Fix"})"),
              "git_hub: open pull request · title: Fix");
    EXPECT_EQ(described("ExitPlanMode", "{}"), "ExitPlanMode");
}

TEST(ClaudeRequestText, CompleteMeansAtMost130Characters) {
    const auto isComplete = [](const std::string& text) {
        return ClaudeRequestText::display(text).isComplete;
    };
    EXPECT_TRUE(isComplete(std::string(130, 'x')));
    EXPECT_FALSE(isComplete(std::string(131, 'x')));
    EXPECT_TRUE(isComplete(repeated("👍🏽", 130)));
    EXPECT_FALSE(isComplete(repeated("👍🏽", 131)));
    EXPECT_TRUE(isComplete(""));
}

TEST(ClaudeRequestText, CompletenessCountsWhatIsShownNotWhatCame) {
    // 128 letters, and one line end that takes three characters.
    EXPECT_FALSE(ClaudeRequestText::display(std::string(128, 'x') + "\n").isComplete);
    EXPECT_TRUE(ClaudeRequestText::display(std::string(127, 'x') + "\n").isComplete);
}

TEST(ClaudeRequestText, ShowsTheStartOfWhatIsTooLong) {
    const std::string whole = repeated("👍🏽", 130);
    EXPECT_EQ(shown(whole), whole);
    EXPECT_EQ(shown(whole + "x"), repeated("👍🏽", 129) + "…");
    EXPECT_EQ(shown(std::string(100'000, 'x')), std::string(129, 'x') + "…");
}
