// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonScanner.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace veslora {
namespace {

bool accepts(std::string_view document) {
    JsonScanner scanner(document);
    scanner.skip();
    return scanner.isComplete();
}

std::string nested(int depth) {
    const auto times = static_cast<std::size_t>(depth);
    return std::string(times, '[') + std::string(times, ']');
}

TEST(JsonScanner, TakesWhatIsWellFormed) {
    for (const std::string_view document :
         {"{}", "[]", " { } ", "[1,2 , 3]", R"({"a":{"b":[true,false,null]}})", R"("text")", "-1.5e+30",
          R"(["\"\\\/\b\f\n\r\té\ud800"])", "\xEF\xBB\xBF{}", R"({"":"","":1})"}) {
        EXPECT_TRUE(accepts(document)) << document;
    }
}

TEST(JsonScanner, RefusesWhatIsNot) {
    for (const std::string_view document : {"",
                                            " ",
                                            "{",
                                            "}",
                                            "[",
                                            "[1,]",
                                            "[,1]",
                                            "[1 2]",
                                            "{\"a\"}",
                                            "{\"a\":}",
                                            "{\"a\":1,}",
                                            "{a:1}",
                                            "01",
                                            "1.",
                                            "-",
                                            "+1",
                                            "tru",
                                            "truex",
                                            "\"",
                                            "\"\\\"",
                                            R"("\x")",
                                            R"("\u12g4")",
                                            R"("\u12)",
                                            "\"a\tb\"",
                                            "{} {}",
                                            "[]]",
                                            "{\"a\":1}x",
                                            "\"a\"x",
                                            "1 2",
                                            "'a'",
                                            "\xEF\xBB\xBF\xEF\xBB\xBF{}"}) {
        EXPECT_FALSE(accepts(document)) << document;
    }
}

TEST(JsonScanner, RefusesEachBareControlCharacterAnywhereInAString) {
    for (std::size_t place = 0; place < 40; ++place) {
        for (int byte = 0; byte < 0x80; ++byte) {
            std::string document = "\"" + std::string(40, 'x') + "\"";
            document[1 + place] = static_cast<char>(byte);
            const bool isPlain = byte >= 0x20 && byte != '"' && byte != '\\';
            EXPECT_EQ(accepts(document), isPlain) << "byte " << byte << " at " << place;
        }
    }
}

TEST(JsonScanner, NestsAsDeepAsADocumentMay) {
    EXPECT_TRUE(accepts(nested(Json::depthLimit)));
    EXPECT_FALSE(accepts(nested(Json::depthLimit + 1)));
    EXPECT_FALSE(accepts(nested(1'000'000)));
}

TEST(JsonScanner, ReadsMembersInAnyOrderAndDepth) {
    JsonScanner scanner(R"({"skip":[{"wanted":1}],"wanted":"a\"b","n":{"deep":7}})");
    std::optional<std::string> wanted;
    std::int64_t deep = 0;
    EXPECT_TRUE(scanner.object([&](JsonScanner::Key key) {
        if (key == "wanted")
            wanted = scanner.string();
        else if (key == "n")
            EXPECT_TRUE(scanner.object([&](JsonScanner::Key inner) {
                EXPECT_TRUE(inner == "deep");
                deep = scanner.count();
            }));
        else
            scanner.skip();
    }));
    EXPECT_TRUE(scanner.isComplete());
    EXPECT_EQ(wanted, "a\"b");
    EXPECT_EQ(deep, 7);
}

TEST(JsonScanner, KnowsAKeyWrittenWithEscapes) {
    JsonScanner scanner(R"({"\u0075s\u0061ge":5,"usage\u0000":6})");
    std::vector<std::int64_t> found;
    EXPECT_TRUE(scanner.object([&](JsonScanner::Key key) {
        const bool isUsage = key == "usage";
        const std::int64_t value = scanner.count();
        if (isUsage)
            found.push_back(value);
    }));
    EXPECT_EQ(found, std::vector<std::int64_t>{5});
}

TEST(JsonScanner, WhatIsNoObjectHasNoMembers) {
    JsonScanner scanner(R"([{"a":1}])");
    EXPECT_FALSE(scanner.object([](JsonScanner::Key) { FAIL(); }));
    EXPECT_TRUE(scanner.isComplete());
}

TEST(JsonScanner, ReadsItemsInTheirOrder) {
    JsonScanner scanner(R"([1, {"a":[2]} ,3,[],"4"])");
    std::vector<std::int64_t> found;
    EXPECT_TRUE(scanner.array([&] { found.push_back(scanner.count()); }));
    EXPECT_TRUE(scanner.isComplete());
    EXPECT_EQ(found, (std::vector<std::int64_t>{1, 0, 3, 0, 0}));
}

TEST(JsonScanner, WhatIsNoArrayHasNoItems) {
    JsonScanner scanner(R"({"a":[1]})");
    EXPECT_FALSE(scanner.array([] { FAIL(); }));
    EXPECT_TRUE(scanner.isComplete());
}

TEST(JsonScanner, AnItemThatIsNotSteppedOverBreaksTheDocument) {
    JsonScanner scanner("[1,2]");
    int calls = 0;
    EXPECT_FALSE(scanner.array([&] { ++calls; }));
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(scanner.isComplete());
}

TEST(JsonScanner, TellsTheNextValuesKindAndLeavesIt) {
    using Kind = JsonScanner::Kind;
    const std::vector<std::pair<std::string_view, Kind>> cases = {
        {" {}", Kind::object}, {"[]", Kind::array},     {"\n\"a\"", Kind::string},
        {"-1", Kind::scalar},  {"false", Kind::scalar}, {"null ", Kind::scalar}};
    for (const auto& [document, kind] : cases) {
        JsonScanner scanner(document);
        EXPECT_EQ(scanner.next(), kind) << document;
        EXPECT_EQ(scanner.next(), kind) << document;
        scanner.skip();
        EXPECT_TRUE(scanner.isComplete()) << document;
    }
    for (const std::string_view document : {"", "}", "]", ","}) {
        EXPECT_EQ(JsonScanner(document).next(), Kind::scalar) << document;
    }
}

TEST(JsonScanner, AStringIsAbsentWhereSomethingElseStands) {
    for (const std::string_view document : {"1", "null", "{}", "[\"a\"]"}) {
        JsonScanner scanner(document);
        EXPECT_FALSE(scanner.string().has_value()) << document;
        EXPECT_TRUE(scanner.isComplete()) << document;
    }
}

TEST(JsonScanner, CountsNumbersAndBooleansAndNothingElse) {
    const std::vector<std::pair<std::string_view, std::int64_t>> cases = {
        {"12", 12},
        {"-3", -3},
        {"2.9", 2},
        {"1e3", 1000},
        {"true", 1},
        {"false", 0},
        {"null", 0},
        {"\"12\"", 0},
        {"[12]", 0},
        {"{}", 0},
        {"9223372036854775807", 9223372036854775807},
        {"9223372036854775808", 0},
        {"123456789012345678901234567890", 0},
        {"1e400", 0},
    };
    for (const auto& [document, count] : cases) {
        JsonScanner scanner(document);
        EXPECT_EQ(scanner.count(), count) << document;
        EXPECT_TRUE(scanner.isComplete()) << document;
    }
}

// Documents made of pieces that often fit and often don't.
TEST(JsonScanner, TakesExactlyWhatTheParserTakes) {
    const std::vector<std::string> pieces = {
        "{", "}",    "[",    "]",     ",",    ":",   "\"a\"",   "\"\\n\"", "12", "-0",  "1e5", "true",
        " ", "null", "\"\"", "\"é\"", "\"\\", "\"x", "\\u00e9", "false",   "\t", "0.5", "{}",  "[]"};
    std::mt19937 random(7);
    int accepted = 0;
    for (int round = 0; round < 200'000; ++round) {
        std::string document;
        for (std::size_t length = random() % 9; length > 0; --length) {
            document += pieces[random() % pieces.size()];
        }
        const bool isTaken = accepts(document);
        ASSERT_EQ(isTaken, Json::parse(document).has_value()) << document;
        accepted += isTaken ? 1 : 0;
    }
    EXPECT_GT(accepted, 1'000);
}

} // namespace
} // namespace veslora
