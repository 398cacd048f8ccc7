// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Json.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/VesloraCore/TestJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace veslora;
using namespace std::string_literals;

namespace {

using Layout = Json::Layout;
using Reading = Json::Reading;

std::string compact(std::string_view text) {
    const auto value = Json::parse(text);
    return value ? value->print(Layout::compact) : "nothing";
}

std::string nested(int depth) {
    return std::string(static_cast<std::size_t>(depth), '[') +
           std::string(static_cast<std::size_t>(depth), ']');
}

} // namespace

TEST(Json, ReadsEveryKindOfValue) {
    const auto value =
        Json::parse(R"( {"n":null,"t":true,"f":false,"i":-12,"s":"x","a":[1,2],"o":{"k":1}} )");
    ASSERT_TRUE(value && value->isObject());
    EXPECT_TRUE(value->find("n")->isNull());
    EXPECT_EQ(value->find("t")->boolean(), true);
    EXPECT_EQ(value->find("f")->boolean(), false);
    EXPECT_EQ(value->find("i")->integer(), -12);
    EXPECT_EQ(*value->stringAt("s"), "x");
    EXPECT_EQ(value->find("a")->items().size(), 2u);
    EXPECT_EQ(value->objectAt("o")->find("k")->integer32(), 1);
}

TEST(Json, ReadsBareValuesToo) {
    EXPECT_EQ(compact("5"), "5");
    EXPECT_EQ(compact(" \"a\" \n"), "\"a\"");
    EXPECT_EQ(compact("null"), "null");
    EXPECT_EQ(compact("[]"), "[]");
}

TEST(Json, KeepsEachNumbersOwnText) {
    const std::string text = "[0,-0,1.0,1e400,-1E-400,123456789012345678901234567890,0.1000,1e+5]";
    EXPECT_EQ(compact(text), text);
}

TEST(Json, RefusesWhatIsNoNumber) {
    for (const char* text : {"01", "-", "+1", ".5", "5.", "1e", "1e+", "0x10", "1_000", "NaN", "Infinity",
                             "--1", "1.2.3", "1 2", "1a", "-01", "1\"a\"", "00"}) {
        EXPECT_EQ(compact(text), "nothing") << text;
    }
}

TEST(Json, RefusesBrokenStructure) {
    for (const char* text : {"{",           "}",           "[",
                             "]",           "[1",          "[1,",
                             "[1,]",        "[,1]",        "[1 2]",
                             "{\"a\"}",     "{\"a\":}",    "{\"a\":1,}",
                             "{a:1}",       "{\"a\" 1}",   "{\"a\":1 \"b\":2}",
                             "{,}",         "{\"a\"x:1}",  "{\"a\":1]",
                             "[1}",         "tru",         "nul",
                             "truee",       "True",        "\"a",
                             "\"a\"b",      "\"a\" \"b\"", "1,2",
                             "1],[2",       "] [",         "],[",
                             "{} {}",       "[] x",        "{1:2}",
                             "{\"a\"::1}",  "[1]]",        "[[1]",
                             "'a'",         "// c\n1",     "{\"a\",\"b\"}",
                             "{:1}",        "[\"a\":1]",   "[true false]",
                             "{\"a\":1:2}", "\"\\\""}) {
        EXPECT_EQ(compact(text), "nothing") << text;
    }
}

// A string value with a colon behind it was once passed over as if it were a key, and a brace too many with
// it.
TEST(Json, RefusesAStringValueThatLooksLikeAKey) {
    EXPECT_EQ(compact(R"({"a": "b":1},"c":2})"), "nothing");
    EXPECT_EQ(compact(R"({"x":{"a":1},"a": "b":"c"},"d":{"e":1}})"), "nothing");
    EXPECT_EQ(compact(R"([ "a":1],2])"), "nothing");
    EXPECT_EQ(compact(R"("a":1)"), "nothing");
}

TEST(Json, RefusesEmptyText) {
    EXPECT_FALSE(Json::parse(""));
    EXPECT_FALSE(Json::parse(" \n\t\r"));
    EXPECT_FALSE(Json::parse("\xEF\xBB\xBF"));
}

TEST(Json, DropsOneByteOrderMark) {
    EXPECT_EQ(compact("\xEF\xBB\xBF{\"a\":1}"), R"({"a":1})");
    EXPECT_EQ(compact("\xEF\xBB\xBF\xEF\xBB\xBF{}"), "nothing");
    EXPECT_EQ(compact("\xEF\xBB"), "nothing");
}

TEST(Json, ResolvesEscapes) {
    const auto value = Json::parse(R"("\"\\\/\b\f\n\r\t\u0041\u00e9\u20AC\ud83d\ude00\u0000")");
    ASSERT_TRUE(value);
    EXPECT_EQ(*value->string(), "\"\\/\b\f\n\r\tAé€😀\0"s);
}

TEST(Json, RefusesBadEscapesAndBareControlCharacters) {
    for (const char* text : {R"("\x")", R"("\u12")", R"("\u12g4")", R"("\ud83d\u12")", R"("\U0041")",
                             "\"a\nb\"", "\"a\tb\"", "\"\x01\"", R"({"\x":1})", R"("\')"}) {
        EXPECT_EQ(compact(text), "nothing") << text;
    }
    EXPECT_FALSE(Json::parse("\"a\0b\""s));
    EXPECT_FALSE(Json::parse("{}\0"s));
    EXPECT_FALSE(Json::parse("\0"s));
    EXPECT_FALSE(Json::parse("[1\0]"s));
}

TEST(Json, MakesHalfASurrogatePairAReplacementCharacter) {
    EXPECT_EQ(compact(R"("a\ud83d")"), "\"a\xEF\xBF\xBD\"");
    EXPECT_EQ(compact(R"("\ude00a")"), "\"\xEF\xBF\xBD"
                                       "a\"");
    EXPECT_EQ(compact(R"("\ud83d\ud83d\ude00")"), "\"\xEF\xBF\xBD😀\"");
    EXPECT_EQ(compact(R"("\ud83d\u0041")"), "\"\xEF\xBF\xBD"
                                            "A\"");
    EXPECT_FALSE(Json::parse(R"(["\ud83d"])", Reading::lossless));
    EXPECT_FALSE(Json::parse(R"({"\ud83d":1})", Reading::lossless));
    EXPECT_TRUE(Json::parse(R"(["\ud83d\ude00"])", Reading::lossless));
}

TEST(Json, RefusesBadUtf8) {
    for (const char* text :
         {"\"\xFF\"", "\"\xC3\"", "\"\xED\xA0\x80\"", "\"\xC0\x80\"", "\"\xF5\x80\x80\x80\"", "\"\x80\""}) {
        EXPECT_FALSE(Json::parse(text));
    }
}

TEST(Json, TakesTheLastOfEqualKeysUnlessNothingMayBeLost) {
    const char* text = R"({"a":1,"b":2,"a":3,"a":4})";
    EXPECT_EQ(compact(text), R"({"a":4,"b":2})");
    EXPECT_FALSE(Json::parse(text, Reading::lossless));
    EXPECT_FALSE(Json::parse(R"([{"x":{"k":1,"\u006b":2}}])", Reading::lossless));
    EXPECT_TRUE(Json::parse(R"([{"k":1},{"k":2}])", Reading::lossless));
}

TEST(Json, CapsTheDepth) {
    EXPECT_EQ(compact(nested(Json::depthLimit)), nested(Json::depthLimit));
    EXPECT_FALSE(Json::parse(nested(Json::depthLimit + 1)));
    EXPECT_FALSE(Json::parse(nested(2000)));
    EXPECT_FALSE(Json::parse(nested(1'000'000)));
    EXPECT_FALSE(Json::parse(std::string(1'000'000, '[')));
    std::string objects;
    for (int i = 0; i < 300; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_FALSE(Json::parse(objects + "1" + std::string(300, '}')));
}

TEST(Json, ReadsALargeDocument) {
    std::string text = "[0";
    for (int i = 1; i < 200'000; ++i) {
        text += "," + std::to_string(i);
    }
    const auto value = Json::parse(text + "]");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->items().size(), 200'000u);
    EXPECT_EQ(value->items().back().integer(), 199'999);
    const auto string = Json::parse("\"" + std::string(3'000'000, 'x') + "\"");
    ASSERT_TRUE(string);
    EXPECT_EQ(string->string()->size(), 3'000'000u);
}

TEST(Json, NothingComesOfATruncatedDocument) {
    for (const std::string& path : test::dataFiles("agents/claude/hooks", ".json")) {
        const std::string whole(test::dataFile(path));
        const std::size_t length = whole.find_last_of('}') + 1;
        ASSERT_TRUE(Json::parse(whole)) << path;
        for (std::size_t kept = 0; kept < length; ++kept) {
            ASSERT_FALSE(Json::parse(std::string_view(whole).substr(0, kept))) << path << " at " << kept;
        }
    }
}

TEST(Json, SurvivesDamageAtEveryByte) {
    const std::string whole = test::dataFile("agents/claude/hooks/PermissionRequest.Bash.json");
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '"', '\\', '{', '}', '[', ']', ',', ':', ' ', '\xFF', '1'}) {
            std::string damaged = whole;
            damaged[at] = byte;
            const auto value = Json::parse(damaged);
            if (value) {
                ASSERT_EQ(Json::parse(value->print(Layout::compact)), value);
            }
        }
    }
}

TEST(Json, PrintsWhatItReads) {
    test::JsonGenerator generator;
    for (int round = 0; round < 2000; ++round) {
        const Json value = generator.value(5);
        ASSERT_EQ(Json::parse(value.print(Layout::compact), Reading::lossless), value);
        ASSERT_EQ(Json::parse(value.print(Layout::pretty), Reading::lossless), value);
    }
}

TEST(Json, PrintsSortedAndSpacedForPeople) {
    const auto value = Json::parse(R"({"b":[1,{"z":null}],"a":{},"é":[],"B":"/tmp/\u007f\u0001"})");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->print(Layout::pretty),
              "{\n  \"B\" : \"/tmp/\x7f\\u0001\",\n  \"a\" : {},\n  \"b\" : [\n    1,\n    {\n"
              "      \"z\" : null\n    }\n  ],\n  \"é\" : []\n}");
    EXPECT_EQ(value->print(Layout::compact),
              "{\"B\":\"/tmp/\x7f\\u0001\",\"a\":{},\"b\":[1,{\"z\":null}],\"é\":[]}");
}

TEST(Json, TellsBooleansFromNumbers) {
    EXPECT_FALSE(Json::makeBoolean(true).number());
    EXPECT_FALSE(Json::makeBoolean(true).integer());
    EXPECT_FALSE(Json::parse("1")->boolean());
    EXPECT_FALSE(Json::parse("\"1\"")->number());
    EXPECT_FALSE(Json().number());
}

TEST(Json, ANumberBeyondADoubleIsAbsent) {
    EXPECT_EQ(Json::parse("41.7")->number(), 41.7);
    EXPECT_EQ(Json::parse("-0")->number(), 0.0);
    EXPECT_EQ(Json::parse("1e308")->number(), 1e308);
    EXPECT_FALSE(Json::parse("1e309")->number());
    EXPECT_FALSE(Json::parse("-1e400")->number());
    EXPECT_FALSE(Json::parse("1" + std::string(400, '0'))->number());
    EXPECT_TRUE(Json::parse("123456789012345678901234567890")->number());
}

TEST(Json, IntegersLoseTheirFractionAndAreAbsentBeyondTheirRange) {
    const auto integer = [](const char* text) { return Json::parse(text)->integer(); };
    EXPECT_EQ(integer("12.9"), 12);
    EXPECT_EQ(integer("-12.9"), -12);
    EXPECT_EQ(integer("1e3"), 1000);
    EXPECT_EQ(integer("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(integer("-9223372036854775808"), INT64_MIN);
    EXPECT_FALSE(integer("9223372036854775808"));
    EXPECT_FALSE(integer("-9223372036854775809")) << "the double next to it is one that converts";
    EXPECT_FALSE(integer("-9223372036854775999"));
    EXPECT_FALSE(integer("-9223372036854777000"));
    EXPECT_FALSE(integer("123456789012345678901234567890"));
    EXPECT_FALSE(integer("1e400"));
    EXPECT_EQ(Json::parse("2147483647")->integer32(), INT32_MAX);
    EXPECT_FALSE(Json::parse("2147483648")->integer32());
    EXPECT_EQ(Json::parse("-2147483648")->integer32(), INT32_MIN);
    EXPECT_FALSE(Json::parse("-2147483649")->integer32());
}

TEST(Json, AccessToTheWrongKindGivesNothing) {
    const Json text = Json::makeString("a");
    EXPECT_EQ(text.find("a"), nullptr);
    EXPECT_EQ(text.stringAt("a"), nullptr);
    EXPECT_EQ(text.objectAt("a"), nullptr);
    EXPECT_TRUE(text.items().empty());
    EXPECT_TRUE(text.members().empty());
    EXPECT_FALSE(text.number());
    const auto object = Json::parse(R"({"a":1,"b":"x"})");
    EXPECT_EQ(object->stringAt("a"), nullptr);
    EXPECT_EQ(object->objectAt("b"), nullptr);
    EXPECT_EQ(object->find("c"), nullptr);
    EXPECT_EQ(object->string(), nullptr);
}

TEST(Json, IsBuiltAndEdited) {
    Json root;
    root.set("b", Json::makeInteger(-5));
    root.set("a", Json::makeArray({Json::makeString("x"), Json::makeBoolean(false)}));
    root.set("b", Json::makeInteger(7));
    root.find("a")->append(Json());
    EXPECT_EQ(root.print(Layout::compact), R"({"a":["x",false,null],"b":7})");
    root.remove("a");
    root.remove("missing");
    EXPECT_EQ(root.print(Layout::compact), R"({"b":7})");
    Json list = Json::makeString("no list yet");
    list.append(Json::makeInteger(1));
    EXPECT_EQ(list.print(Layout::compact), "[1]");
}

TEST(Json, ReadsEveryCapturedDocument) {
    for (const char* directory : {"agents/claude/hooks", "agents/claude/sessions", "agents/claude/statusline",
                                  "agents/codex/hooks"}) {
        for (const std::string& path : test::dataFiles(directory, ".json")) {
            const auto value = Json::parse(test::dataFile(path), Reading::lossless);
            ASSERT_TRUE(value && value->isObject()) << path;
            EXPECT_EQ(Json::parse(value->print(Layout::pretty)), value) << path;
        }
    }
}
