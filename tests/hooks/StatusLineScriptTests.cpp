// SPDX-License-Identifier: MIT
// The script that Claude Code runs for its status line, under every shell, with the real helper beside it.
#include "tests/VesloraCore/TestData.h"
#include "tests/hooks/HookRoom.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace veslora;
using namespace veslora::test;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const std::string script = "claude-statusline.sh";
const std::string afterTurn = "agents/claude/statusline/subscription.after-turn.json";

class StatusLineScript : public testing::TestWithParam<Shell> {
  protected:
    void SetUp() override {
        std::filesystem::copy_file(VESLORA_BINARIES "/json-value", room.path("json-value"));
    }

    Result run(std::string_view input, const Options& options = {}) {
        return room.run(script, input, options);
    }
    void wrap(std::string_view command) { room.write("statusline-wrapped", command); }
    std::string lineOf(std::string_view input) {
        const Result result = run(input);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        return result.out;
    }

    HookRoom room{GetParam()};
};

std::string withoutFinalNewlines(std::string text) {
    text.erase(text.find_last_not_of('\n') + 1);
    return text;
}

std::string session(const std::string& id) {
    return R"({"session_id":")" + id + "\"}";
}

std::string percentages(const std::string& context, const std::string& fiveHours) {
    return R"({"model":{"display_name":"M"},"context_window":{"used_percentage":)" + context +
           R"(},"rate_limits":{"five_hour":{)" + fiveHours + "}}}";
}

} // namespace

TEST_P(StatusLineScript, PrintsModelContextAndLimit) {
    EXPECT_EQ(lineOf(dataFile(afterTurn)), "Opus 5.5 · ctx 1% · 5h 41%");
    EXPECT_EQ(lineOf(dataFile("agents/claude/statusline/before-first-prompt.json")), "Opus 5.5");
}

TEST_P(StatusLineScript, KeepsTheNewestStatusOfEachSession) {
    for (const std::string& path : dataFiles("agents/claude/statusline", ".json")) {
        EXPECT_EQ(run(dataFile(path)).status, 0);
    }
    EXPECT_THAT(room.names("statusline"), ElementsAre("43044874-ca7b-4fcf-8bd6-5b494a07e2e9.json",
                                                      "da8224bc-1648-426c-a0b1-073bf501a3a5.json"));
    EXPECT_EQ(
        room.read("statusline/da8224bc-1648-426c-a0b1-073bf501a3a5.json"),
        withoutFinalNewlines(dataFile("agents/claude/statusline/subscription.before-first-prompt.json")));
    EXPECT_EQ(room.mode("statusline"), 0700u);
    EXPECT_EQ(room.mode("statusline/da8224bc-1648-426c-a0b1-073bf501a3a5.json"), 0600u);
}

TEST_P(StatusLineScript, NothingIsKeptThroughALink) {
    std::filesystem::create_directory(room.path("elsewhere"));
    std::filesystem::create_directory_symlink("elsewhere", room.path("statusline"));
    EXPECT_EQ(lineOf(dataFile(afterTurn)), "Opus 5.5 · ctx 1% · 5h 41%");
    EXPECT_THAT(room.names("elsewhere"), IsEmpty());
}

TEST_P(StatusLineScript, AHostileModelNameGivesTheTerminalNoCommand) {
    EXPECT_EQ(lineOf(R"({"model":{"display_name":"\u001b[2J\u001b]0;x\u0007Opus\r\n\u009b1m"}})"),
              "[2J]0;xOpus  1m");
}

TEST_P(StatusLineScript, ASessionWithAnOddIdentifierIsUnknown) {
    for (const std::string id : {"../../etc/passwd", "a/b", "", "é", "a b", "a.b", "a_b", "a\\nb", "."}) {
        EXPECT_EQ(run(session(id)), silence) << id;
        EXPECT_EQ(room.read("statusline/unknown.json"), session(id)) << id;
    }
    EXPECT_EQ(run("{}"), silence);
    EXPECT_THAT(room.names("statusline"), ElementsAre("unknown.json"));
    EXPECT_EQ(run(session("aB-9")), silence);
    EXPECT_THAT(room.names("statusline"), ElementsAre("aB-9.json", "unknown.json"));
}

TEST_P(StatusLineScript, PercentagesLoseTheirFraction) {
    EXPECT_EQ(lineOf(percentages("41.7", R"("used_percentage":99.99)")), "M · ctx 41% · 5h 99%");
    EXPECT_EQ(lineOf(percentages("0", R"("used_percentage":0)")), "M · ctx 0% · 5h 0%");
    EXPECT_EQ(lineOf(percentages("100", R"("used_percentage":7)")), "M · ctx 100% · 5h 7%");
}

TEST_P(StatusLineScript, APercentageThatIsNoneAddsNothing) {
    for (const char* value : {"null", "\"4x\"", "\"\"", "-1", "1e1", "true", "[41]", "{}"}) {
        EXPECT_EQ(lineOf(percentages(value, "")), "M") << value;
    }
}

TEST_P(StatusLineScript, TheLimitMayHaveItsOlderName) {
    EXPECT_EQ(lineOf(percentages("null", R"("utilization":12.5)")), "M · 5h 12%");
    EXPECT_EQ(lineOf(percentages("null", R"("used_percentage":3,"utilization":12.5)")), "M · 5h 3%");
    EXPECT_EQ(lineOf(percentages("null", R"("used_percentage":null,"utilization":12.5)")), "M · 5h 12%");
}

TEST_P(StatusLineScript, TheUsersOwnLineGoesOnShowing) {
    wrap("printf '%s|' \"it's\" \"$(cat)\"\nprintf end\n");
    EXPECT_EQ(lineOf(dataFile(afterTurn)), "it's|" + withoutFinalNewlines(dataFile(afterTurn)) + "|end");
    EXPECT_EQ(room.names("statusline").size(), 1u);
}

TEST_P(StatusLineScript, TheUsersOwnCommandFindsThingsAsTheyWere) {
    wrap("umask; trap; echo \"$0 $#\"");
    EXPECT_EQ(run("{}"), (Result{0, "0022\n/bin/sh 0\n", ""}));
}

TEST_P(StatusLineScript, TheUsersOwnCommandMayFailAndComplain) {
    wrap("echo trouble >&2; exit 3");
    EXPECT_EQ(run("{}"), (Result{0, "", "trouble\n"}));
    wrap("if then");
    EXPECT_EQ(run("{}").status, 0);
    wrap("");
    EXPECT_EQ(run("{}"), silence);
}

TEST_P(StatusLineScript, TheUsersOwnCommandNeedNotReadItsInput) {
    wrap("echo short");
    EXPECT_EQ(run("{\"a\":\"" + std::string(2'000'000, 'x') + "\"}"), (Result{0, "short\n", ""}));
}

TEST_P(StatusLineScript, WithoutTheHelperTheUsersOwnLineStillShows) {
    std::filesystem::remove(room.path("json-value"));
    wrap("cat");
    EXPECT_EQ(lineOf(dataFile(afterTurn)), withoutFinalNewlines(dataFile(afterTurn)));
    EXPECT_EQ(room.read("statusline/unknown.json"), withoutFinalNewlines(dataFile(afterTurn)));
}

TEST_P(StatusLineScript, WithoutTheHelperAndALineOfTheUsersThereIsNone) {
    std::filesystem::remove(room.path("json-value"));
    EXPECT_EQ(run(dataFile(afterTurn)), silence);
}

TEST_P(StatusLineScript, InputOfAnySizeAndKindDoesNoHarm) {
    for (const std::string& input :
         {""s, "\n\n"s, "nonsense"s, "\xFF\xFE"s, "%s %d \\n -n"s, "-e x"s, std::string(3'000'000, '[')}) {
        EXPECT_EQ(run(input), silence);
        EXPECT_EQ(room.read("statusline/unknown.json"), withoutFinalNewlines(input));
    }
    EXPECT_EQ(run("{\"a\":1}\0x"s), silence);
}

TEST_P(StatusLineScript, AFullDiskKeepsTheOlderStatusAndStillShowsTheLine) {
    room.write("statusline/unknown.json", "older");
    EXPECT_EQ(run(percentages("5", ""), {.disk = FullDisk::writeFails}), (Result{0, "M · ctx 5%", ""}));
    EXPECT_THAT(room.names("statusline"), ElementsAre("unknown.json"));
    EXPECT_EQ(room.read("statusline/unknown.json"), "older");
}

TEST_P(StatusLineScript, ADirectoryThatMayNotBeWrittenStillShowsTheLine) {
    EXPECT_EQ(run(percentages("5", ""), {.user = User::stranger}), (Result{0, "M · ctx 5%", ""}));
    EXPECT_FALSE(room.exists("statusline"));
}

TEST_P(StatusLineScript, FindsItsDirectoryWhenStartedByItsNameAlone) {
    EXPECT_EQ(run(percentages("5", ""), {.byNameAlone = true}), (Result{0, "M · ctx 5%", ""}));
    EXPECT_EQ(room.names("statusline").size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Shells, StatusLineScript, testing::ValuesIn(shells()),
                         [](const auto& test) { return test.param.name; });
