// SPDX-License-Identifier: MIT
// The helper of the status-line script, run alone from another directory.
#include "VesloraCore/Text/ShellQuote.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/hooks/HookRoom.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace veslora;
using namespace veslora::test;

namespace {

// The helper takes the place of the shell, and the path it is asked for that of the script.
class JsonValue : public testing::Test {
  protected:
    Result ask(const std::string& path, std::string_view input) {
        return room.run(path, input, {.byNameAlone = true});
    }

    HookRoom room{{"helper", {VESLORA_BINARIES "/json-value"}, false}};
};

const Result nothing = {1, "", ""};

} // namespace

TEST_F(JsonValue, PrintsTheValueAlone) {
    EXPECT_EQ(ask("a.b", R"({"a":{"b":41.70}})"), (Result{0, "41.70", ""}));
    EXPECT_EQ(ask("a", R"({"a":"x\ny "})"), (Result{0, "x y ", ""}));
    EXPECT_EQ(ask("a", R"({"a":true})"), (Result{0, "true", ""}));
    EXPECT_EQ(ask("a", R"({"a":""})"), silence);
    EXPECT_EQ(ask("model.display_name", dataFile("agents/claude/statusline/before-first-prompt.json")),
              (Result{0, "Opus 5.5", ""}));
}

TEST_F(JsonValue, AHostileNameGivesTheTerminalNoCommand) {
    EXPECT_EQ(ask("a", R"({"a":"\u001b[2J\u001b]0;x\u0007Opus\r\u009b1mx\u202ey\u007f"})"),
              (Result{0, "[2J]0;xOpus 1mxy", ""}));
    EXPECT_EQ(ask("a", "{\"a\":\"O\u009bp\x9bus\"}"), (Result{0, "Opus", ""}));
}

TEST_F(JsonValue, PrintsNothingWhereThereIsNone) {
    EXPECT_EQ(ask("b", R"({"a":1})"), nothing);
    EXPECT_EQ(ask("a", R"({"a":null})"), nothing);
    EXPECT_EQ(ask("a", R"({"a":{}})"), nothing);
    EXPECT_EQ(ask("a", ""), nothing);
    EXPECT_EQ(ask("a", R"({"a":1)"), nothing);
    EXPECT_EQ(ask("", R"({"a":1})"), nothing);
}

TEST_F(JsonValue, ReadsUpToOneMebibyte) {
    constexpr std::size_t limit = 1 << 20;
    const std::string start = R"({"a":1,"b":")";
    const std::string longest = start + std::string(limit - start.size() - 2, 'x') + "\"}";
    ASSERT_EQ(longest.size(), limit);
    EXPECT_EQ(ask("a", longest), (Result{0, "1", ""}));
    EXPECT_EQ(ask("a", longest + " "), nothing);
}

TEST_F(JsonValue, StartsWithNothingButTheCLibrary) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer brings libraries of its own";
#endif
    // The loader lists what a program needs instead of starting it.
    const Result loaded = room.run("a", "", {.environment = {{"LD_TRACE_LOADED_OBJECTS", "1"}}});
    EXPECT_NE(loaded.out.find("libc.so"), std::string::npos) << loaded.out;
    EXPECT_EQ(loaded.out.find("libstdc++"), std::string::npos) << loaded.out;
    EXPECT_EQ(loaded.out.find("libsimdjson"), std::string::npos) << loaded.out;
    EXPECT_EQ(loaded.out.find("libutf8proc"), std::string::npos) << loaded.out;
}
