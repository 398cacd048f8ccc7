// SPDX-License-Identifier: MIT
// One grammar under every reader: `Json` takes exactly the damaged documents that `JsonScanner` takes. Since
// both share their code, simdjson's own parser, which the program never uses, is an independent witness.
#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/Utf8.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>
#include <simdjson.h>

#include <random>
#include <regex>

using namespace veslora;

namespace {

using Layout = Json::Layout;

/// Captured documents with one to three damages each, always the same ones.
class DamagedDocuments {
  public:
    DamagedDocuments() {
        for (const char* directory : {"agents/claude/hooks", "agents/claude/sessions",
                                      "agents/claude/statusline", "agents/codex/hooks"}) {
            for (const std::string& path : test::dataFiles(directory, ".json")) {
                m_whole.push_back(test::dataFile(path));
            }
        }
        m_whole.emplace_back(R"({"a":{"b":[1,-0.50,1e5,"\ud83d\ude00"],"":{}},"a":[true,false,null]})");
    }

    std::string next() {
        std::string document = m_whole[pick(m_whole.size())];
        for (std::size_t count = 1 + pick(3); count > 0 && !document.empty(); --count) {
            damage(document, pick(document.size()));
        }
        return document;
    }

  private:
    std::size_t pick(std::size_t count) { return m_random() % count; }

    void damage(std::string& document, std::size_t at) {
        switch (pick(6)) {
        case 0:
            document[at] = static_cast<char>(document[at] ^ (1 << pick(8)));
            break;
        case 1:
            document.resize(at);
            break;
        case 2:
            document.erase(at, 1 + pick(3));
            break;
        case 3:
            document.insert(at, document.substr(at, pick(40)));
            break;
        case 4:
            document.insert(at, m_pieces[pick(m_pieces.size())]);
            break;
        default:
            // In place of a token, where a reader has to decide.
            at = std::min(document.find_first_of("{}[]:,\"", at), document.size());
            document.replace(at, pick(2), m_pieces[pick(m_pieces.size())]);
            break;
        }
    }

    std::vector<std::string> m_whole;
    const std::vector<std::string> m_pieces = {
        "{",   "}",       "[",       "]",    ",",       ":",        "\"",
        "\\",  "\\u00e9", "\\u12g4", "\\x",  "\\ud83d", "true",     "null",
        "nul", "01",      "1.",      "-",    "0.5E-3",  "+1",       " \n",
        "\f",  "\t",      "\xFF",    "é",    "{}",      "\"a\":1,", "\xEF\xBB\xBF",
        "//",  "'",       "[[],",    "\"\"", "\"a\":{}"};
    std::mt19937 m_random{20240229};
};

bool isScanned(std::string_view document) {
    JsonScanner scanner(document);
    scanner.skip();
    return scanner.isComplete() && Utf8::isValid(document);
}

// The witness alone refuses half of a surrogate pair, and a number that neither a double nor 64 bits hold.
bool isTooStrict(simdjson::error_code error, const std::string& document) {
    static const std::regex halfOfPair(R"(\\u[dD][89a-fA-F])");
    static const std::regex largeNumber(R"(\d{19}|[eE]\+?\d{3})");
    return (error == simdjson::STRING_ERROR && std::regex_search(document, halfOfPair)) ||
           (error == simdjson::NUMBER_ERROR && std::regex_search(document, largeNumber));
}

/// Whether the witness takes the document; nothing where it is known to be too strict.
std::optional<bool> isWitnessed(const std::string& document) {
    simdjson::dom::parser parser;
    const std::string_view text = JsonText::withoutByteOrderMark(document);
    const simdjson::error_code error = parser.parse(text.data(), text.size()).error();
    return isTooStrict(error, document) ? std::nullopt : std::optional(error == simdjson::SUCCESS);
}

} // namespace

TEST(JsonGrammar, EveryReaderTakesTheSameDamagedDocuments) {
    DamagedDocuments documents;
    int accepted = 0;
    int witnessed = 0;
    constexpr int rounds = 20'000;
    for (int round = 0; round < rounds; ++round) {
        const std::string document = documents.next();
        const bool isAccepted = Json::parse(document).has_value();
        ASSERT_EQ(isAccepted, isScanned(document)) << document;
        if (const std::optional<bool> expected = isWitnessed(document)) {
            ASSERT_EQ(isAccepted, *expected) << document;
            ++witnessed;
        }
        accepted += isAccepted ? 1 : 0;
    }
    EXPECT_GT(accepted, rounds / 10);
    EXPECT_LT(accepted, rounds / 2);
    EXPECT_GT(witnessed, rounds * 9 / 10);
}

TEST(JsonGrammar, PrintingWhatWasReadIsStable) {
    DamagedDocuments documents;
    for (int round = 0; round < 5'000; ++round) {
        const std::string document = documents.next();
        const std::optional<Json> value = Json::parse(document);
        const std::optional<Json> lossless = Json::parse(document, Json::Reading::lossless);
        ASSERT_TRUE(!lossless || lossless == value) << document;
        for (const Layout layout : {Layout::compact, Layout::pretty}) {
            const std::string printed = value ? value->print(layout) : "null";
            const std::optional<Json> again = Json::parse(printed, Json::Reading::lossless);
            ASSERT_TRUE(again) << document;
            ASSERT_EQ(again, value.value_or(Json())) << document;
            ASSERT_EQ(again->print(layout), printed) << document;
        }
    }
}

TEST(JsonGrammar, NothingComesOfAHostileDocument) {
    constexpr std::size_t length = 2'000'000;
    const std::string text(length, 'x');
    const std::vector<std::string> documents = {std::string(length, '['),
                                                std::string(length, '{'),
                                                std::string(length, '"'),
                                                std::string(length, '\\'),
                                                std::string(length, '\0'),
                                                std::string(length, ' '),
                                                std::string(length, '-'),
                                                "\"" + text,
                                                "\"" + text + '\0' + "\"",
                                                "{\"" + text,
                                                std::string(length, '0'),
                                                std::string(length, '1') + ".",
                                                "[" + std::string(length, ',') + "]"};
    for (const std::string& document : documents) {
        EXPECT_FALSE(Json::parse(document)) << document.substr(0, 8);
        EXPECT_FALSE(isScanned(document)) << document.substr(0, 8);
    }
    EXPECT_FALSE(Json::parse("\"" + text + "\xC3\""));
    EXPECT_TRUE(Json::parse("\"" + text + "\xC3\xA9\""));
}

TEST(JsonGrammar, ALongNumberKeepsEachDigit) {
    const std::string number = "-" + std::string(2'000'000, '7') + "e" + std::string(1'000, '8');
    const std::optional<Json> value = Json::parse(number);
    ASSERT_TRUE(value);
    EXPECT_EQ(*value->numberText(), number);
    EXPECT_FALSE(value->number());
}
