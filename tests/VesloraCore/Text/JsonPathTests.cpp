// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonPath.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace veslora;

namespace {

// The same answer by way of the whole document.
std::optional<std::string> byDocument(std::string_view document, const std::string& path) {
    const std::optional<Json> root = Json::parse(document);
    const Json* value = root ? &*root : nullptr;
    for (std::size_t at = 0; value && at <= path.size();) {
        const std::size_t end = std::min(path.find('.', at), path.size());
        value = value->find(path.substr(at, end - at));
        at = end + 1;
    }
    if (value && value->string()) {
        return *value->string();
    }
    if (value && value->numberText()) {
        return *value->numberText();
    }
    const std::optional<bool> truth = value ? value->boolean() : std::nullopt;
    return truth ? std::optional<std::string>(*truth ? "true" : "false") : std::nullopt;
}

const std::vector<std::string> paths = {"session_id",
                                        "model.display_name",
                                        "context_window.used_percentage",
                                        "rate_limits.five_hour.used_percentage",
                                        "rate_limits.five_hour.utilization",
                                        "exceeds_200k_tokens",
                                        "model",
                                        "model.display_name.more",
                                        "nowhere"};

} // namespace

TEST(JsonPath, FindsTheValuesOfTheStatusLine) {
    const std::string document = test::dataFile("agents/claude/statusline/subscription.after-turn.json");
    EXPECT_EQ(JsonPath::valueAt(document, "session_id"), "da8224bc-1648-426c-a0b1-073bf501a3a5");
    EXPECT_EQ(JsonPath::valueAt(document, "model.display_name"), "Opus 5.5");
    EXPECT_EQ(JsonPath::valueAt(document, "context_window.used_percentage"), "1");
    EXPECT_EQ(JsonPath::valueAt(document, "rate_limits.five_hour.used_percentage"), "41.7");
    EXPECT_EQ(JsonPath::valueAt(document, "exceeds_200k_tokens"), "false");
    EXPECT_FALSE(JsonPath::valueAt(document, "rate_limits"));
    EXPECT_FALSE(JsonPath::valueAt(document, "prompt_cache.last_miss_at"));
}

TEST(JsonPath, KeepsNumbersAsTheyAreAndResolvesStrings) {
    EXPECT_EQ(JsonPath::valueAt(R"({"a":1.0,"b":1e400,"c":123456789012345678901234567890})", "c"),
              "123456789012345678901234567890");
    EXPECT_EQ(JsonPath::valueAt(R"({"a":1.0,"b":1e400})", "b"), "1e400");
    EXPECT_EQ(JsonPath::valueAt(R"({"\u0061":"x\ny\ud83d"})", "a"), "x\ny\xEF\xBF\xBD");
    EXPECT_EQ(JsonPath::valueAt(R"({"a":""})", "a"), "");
}

TEST(JsonPath, OfEqualKeysTheLastCounts) {
    EXPECT_EQ(JsonPath::valueAt(R"({"a":1,"a":2})", "a"), "2");
    EXPECT_EQ(JsonPath::valueAt(R"({"a":{"b":1},"a":{"b":2}})", "a.b"), "2");
    EXPECT_FALSE(JsonPath::valueAt(R"({"a":1,"a":null})", "a"));
    EXPECT_FALSE(JsonPath::valueAt(R"({"a":{"b":1},"a":{}})", "a.b"));
    EXPECT_FALSE(JsonPath::valueAt(R"({"a":{"b":1},"a":[]})", "a.b"));
}

TEST(JsonPath, OddPathsLeadNowhere) {
    for (const char* path : {"", ".", "a.", ".a", "a..b", "ab", "a.b.c", "b"}) {
        EXPECT_FALSE(JsonPath::valueAt(R"({"a":{"b":1},"abc":2})", path)) << path;
    }
    EXPECT_FALSE(JsonPath::valueAt("[1]", "0"));
}

// An object was once taken for the value of the empty key in it.
TEST(JsonPath, AnEmptyKeyInAnObjectIsNotTheObjectsOwnValue) {
    EXPECT_FALSE(JsonPath::valueAt(R"({"a":{"":7}})", "a"));
    EXPECT_FALSE(JsonPath::valueAt(R"({"":{"a":{"":1}}})", ".a"));
    EXPECT_FALSE(JsonPath::valueAt(R"({"":{"":1}})", ""));
    EXPECT_FALSE(JsonPath::valueAt(R"({"a":1,"a":{"":7}})", "a"));
}

// It was once found at the start of a path and never at its end.
TEST(JsonPath, AnEmptyKeyIsFoundAtTheEndOfAPathToo) {
    EXPECT_EQ(JsonPath::valueAt(R"({"a":{"":7}})", "a."), "7");
    EXPECT_EQ(JsonPath::valueAt(R"({"a":{"":{"":8}}})", "a.."), "8");
    EXPECT_EQ(JsonPath::valueAt(R"({"":{"a":1}})", ".a"), "1");
    EXPECT_EQ(JsonPath::valueAt(R"({"":5})", ""), "5");
}

// A document without keys was once found at the path of the empty key.
TEST(JsonPath, ABareValueHasNoPath) {
    for (const char* document : {"5", "\"text\"", "true"}) {
        EXPECT_FALSE(JsonPath::valueAt(document, "")) << document;
    }
}

TEST(JsonPath, FindsAKeyThatContainsADot) {
    EXPECT_EQ(JsonPath::valueAt(R"({"a.b":1})", "a.b"), "1");
    EXPECT_EQ(JsonPath::valueAt(R"({"a.b":{"c":1},"a":{"b.c":2}})", "a.b.c"), "2");
    EXPECT_FALSE(JsonPath::valueAt(R"({"a.b":1,"a":{}})", "a.b"));
}

TEST(JsonPath, CapsTheDepth) {
    const std::string deep(300, '[');
    EXPECT_FALSE(JsonPath::valueAt(R"({"a":1,"b":)" + deep + std::string(300, ']') + "}", "a"));
    EXPECT_FALSE(JsonPath::valueAt(std::string(1'000'000, '['), "a"));
    const std::string allowed = std::string(255, '[') + std::string(255, ']');
    EXPECT_EQ(JsonPath::valueAt(R"({"a":1,"b":)" + allowed + "}", "a"), "1");
}

TEST(JsonPath, NothingComesOfADocumentThatIsNone) {
    for (const char* document :
         {"", " ", "nonsense", "{\"a\":1", "{\"a\":1}}", "{\"a\":1,}", "{\"a\":01}", "{\"a\":\"\n\"}",
          "{\"a\":1 \"b\":2}", "{a:1}", "{\"a\":1}x", "{\"a\":truth}", "{\"a\":}"}) {
        EXPECT_FALSE(JsonPath::valueAt(document, "a")) << document;
    }
}

TEST(JsonPath, AgreesWithTheWholeReaderOnTheCapturedDocuments) {
    for (const std::string& file : test::dataFiles("agents/claude/statusline", ".json")) {
        const std::string document = test::dataFile(file);
        for (const std::string& path : paths) {
            EXPECT_EQ(JsonPath::valueAt(document, path), byDocument(document, path)) << file << " " << path;
        }
    }
}

TEST(JsonPath, AgreesWithTheWholeReaderOnDamagedDocuments) {
    const std::string whole = test::dataFile("agents/claude/statusline/before-first-prompt.json");
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char byte :
             {'\0', '"', '\\', '{', '}', '[', ']', ',', ':', ' ', '1', '-', '.', 'e', '\n', 't'}) {
            std::string damaged = whole;
            damaged[at] = byte;
            ASSERT_EQ(JsonPath::valueAt(damaged, "model.display_name"),
                      byDocument(damaged, "model.display_name"))
                << "byte " << static_cast<int>(byte) << " at " << at;
        }
        const std::string cut = whole.substr(0, at);
        ASSERT_EQ(JsonPath::valueAt(cut, "session_id"), byDocument(cut, "session_id")) << "cut at " << at;
    }
}
