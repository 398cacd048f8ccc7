// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"
#include "tests/VesloraCore/TestText.h"

#include <gtest/gtest.h>

using namespace veslora;
using test::repeated;

namespace {

std::string described(std::string_view tool, std::string_view input) {
    const auto value = Json::parse(input);
    EXPECT_TRUE(value) << input;
    return ClaudeActivity::describe(tool, value.value_or(Json()));
}

} // namespace

TEST(ClaudeActivity, BashShowsItsDescriptionElseTheFirstLineOfItsCommand) {
    EXPECT_EQ(described("Bash", R"({"description":"List files","command":"ls"})"), "List files");
    EXPECT_EQ(described("Bash", R"({"description":"","command":"ls"})"), "Bash: ls");
    EXPECT_EQ(described("Bash", R"({"command":"\n\r\n\nls -l\npwd"})"), "Bash: ls -l");
    EXPECT_EQ(described("Bash", R"({"command":"\n\n"})"), "Bash: ");
    EXPECT_EQ(described("Bash", R"({"command":5})"), "Bash: ");
    EXPECT_EQ(described("Bash", "{}"), "Bash: ");
}

TEST(ClaudeActivity, FilesShowTheirNameAlone) {
    EXPECT_EQ(described("Edit", R"({"file_path":"/home/me/a.txt"})"), "Edit: a.txt");
    EXPECT_EQ(described("MultiEdit", R"({"file_path":"/home/me/a.txt"})"), "Edit: a.txt");
    EXPECT_EQ(described("Write", R"({"file_path":"a.txt"})"), "Write: a.txt");
    EXPECT_EQ(described("Read", R"({"file_path":"/home/me/dir/"})"), "Read: dir");
    EXPECT_EQ(described("Read", R"({"file_path":7})"), "Read: ");
    EXPECT_EQ(described("Edit", "{}"), "Edit: ");
}

TEST(ClaudeActivity, SearchesWebAndAgentsShowTheirSubject) {
    EXPECT_EQ(described("Grep", R"({"pattern":"a.*b"})"), "Search: a.*b");
    EXPECT_EQ(described("Glob", R"({"pattern":"*.cpp"})"), "Search: *.cpp");
    EXPECT_EQ(described("Glob", "{}"), "Search: ");
    EXPECT_EQ(described("WebFetch", R"({"url":"https://example.com/a/b"})"), "Web: example.com");
    EXPECT_EQ(described("WebFetch", R"({"url":"no address"})"), "Web: ");
    EXPECT_EQ(described("WebFetch", "{}"), "Web: ");
    EXPECT_EQ(described("WebSearch", R"({"query":"weather"})"), "Web: weather");
    EXPECT_EQ(described("Agent", R"({"description":"Look around"})"), "Agent: Look around");
    EXPECT_EQ(described("Task", R"({"description":"Look around"})"), "Agent: Look around");
    EXPECT_EQ(described("Task", R"({"description":[1]})"), "Agent: ");
}

TEST(ClaudeActivity, OtherToolsShowTheirName) {
    EXPECT_EQ(described("TodoWrite", R"({"todos":[]})"), "TodoWrite");
    EXPECT_EQ(described("", "{}"), "");
    EXPECT_EQ(described("mcp__git_hub__open_pull_request", "{}"), "git_hub: open pull request");
}

TEST(ClaudeActivity, AnInputOfAnotherKindOnlyShortensTheLine) {
    EXPECT_EQ(ClaudeActivity::describe("Bash", Json()), "Bash: ");
    EXPECT_EQ(ClaudeActivity::describe("Edit", Json::makeString("x")), "Edit: ");
}

TEST(ClaudeActivity, McpNamesNeedAServerAndATool) {
    EXPECT_EQ(ClaudeActivity::mcpName("mcp__server__tool"), "server: tool");
    EXPECT_EQ(ClaudeActivity::mcpName("mcp__a__b__c_d"), "a: b c d");
    EXPECT_EQ(ClaudeActivity::mcpName("mcp__a__"), "a: ");
    EXPECT_EQ(ClaudeActivity::mcpName("mcp____x"), ": x");
    EXPECT_FALSE(ClaudeActivity::mcpName("mcp__server"));
    EXPECT_FALSE(ClaudeActivity::mcpName("mcp_server__tool__x"));
    EXPECT_FALSE(ClaudeActivity::mcpName("MCP__server__tool"));
    EXPECT_FALSE(ClaudeActivity::mcpName("mcp"));
    EXPECT_FALSE(ClaudeActivity::mcpName(""));
}

TEST(ClaudeActivity, SixtyCharactersStayAndSixtyOneAreCut) {
    const auto ofLength = [](int characters) {
        return described("Bash", R"({"description":")" + repeated("é", characters) + R"("})");
    };
    EXPECT_EQ(ofLength(60), repeated("é", 60));
    EXPECT_EQ(ofLength(61), repeated("é", 59) + "…");
    EXPECT_EQ(described("Bash", R"({"description":")" + repeated("👨‍👩‍👧", 61) + R"("})"),
              repeated("👨‍👩‍👧", 59) + "…");
    EXPECT_EQ(described(std::string(61, 'T'), "{}"), std::string(59, 'T') + "…");
}
