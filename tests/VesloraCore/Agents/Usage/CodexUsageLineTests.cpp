// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/CodexUsageLine.h"
#include "tests/VesloraCore/TestData.h"

#include <gmock/gmock.h>

#include <limits>
#include <sstream>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Tokens = CodexUsageLine::Tokens;

constexpr Timestamp at = 1'700'000'000;

std::vector<CodexUsageLine> linesOf(const std::string& file) {
    std::istringstream text(test::dataFile("agents/codex/rollouts/" + file));
    std::vector<CodexUsageLine> all;
    for (std::string line; std::getline(text, line);) {
        const auto parsed = CodexUsageLine::parse(line);
        all.insert(all.end(), parsed.begin(), parsed.end());
    }
    return all;
}

std::string dated(const std::string& type, const std::string& payload) {
    return R"({"timestamp":"2023-11-14T22:13:20Z","type":")" + type + R"(","payload":)" + payload + "}";
}

std::vector<CodexUsageLine> tokenCount(const std::string& fields) {
    return CodexUsageLine::parse(dated("event_msg", R"({"type":"token_count",)" + fields + "}"));
}

std::vector<CodexUsageLine> withInfo(const std::string& window, const std::string& input) {
    return tokenCount(R"("info":{"model_context_window":)" + window +
                      R"(,"last_token_usage":{"input_tokens":)" + input + "}}");
}

CodexLimits limitsOf(const std::string& windows) {
    const auto records = tokenCount(R"("rate_limits":{)" + windows + "}");
    EXPECT_EQ(records.size(), 1) << windows;
    const auto* limits = records.empty() ? nullptr : std::get_if<CodexLimits>(&records.front().kind);
    EXPECT_TRUE(limits) << windows;
    return limits ? *limits : CodexLimits();
}

std::vector<CodexUsageLine> usageRecord(const std::string& usage, const std::string& key) {
    return CodexUsageLine::parse(dated("token_usage_record", "{" + key + R"("usage":)" + usage + "}"));
}

} // namespace

TEST(CodexUsageLine, ReadsALogWithLimits) {
    const Timestamp first = 1795246050.211;
    const Timestamp second = 1795246052.525;
    const Timestamp third = 1795246052.552;
    const ClaudeTokenTotals totals{1'500, 42, 0, 8'000};
    const double percent = 9'500 / 258'400.0 * 100;
    EXPECT_THAT(linesOf("with-limits.denied-by-hook.jsonl"),
                ElementsAre(CodexUsageLine{Tokens{"resp_mock4386584d11af4968", totals, first}},
                            CodexUsageLine{CodexLimits{{{41.5, 1795253250}}, {{12.25, 1795546050}}, second}},
                            CodexUsageLine{CodexContext{percent, 258'400, second}},
                            CodexUsageLine{Tokens{"resp_mock83b3045e40bc4931", totals, third}},
                            CodexUsageLine{CodexLimits{{{41.5, 1795253252}}, {{12.25, 1795546052}}, third}},
                            CodexUsageLine{CodexContext{percent, 258'400, third}}));
}

TEST(CodexUsageLine, ALogWithoutLimitHeadersHasEmptyOnes) {
    for (const char* file : {"no-limits.allowed-in-terminal.jsonl", "interrupted.jsonl"}) {
        int limits = 0;
        for (const CodexUsageLine& line : linesOf(file)) {
            if (const auto* read = std::get_if<CodexLimits>(&line.kind)) {
                EXPECT_FALSE(read->fiveHour || read->week) << file;
                ++limits;
            }
        }
        EXPECT_GT(limits, 0) << file;
    }
}

TEST(CodexUsageLine, NeedsAPayloadAndADate) {
    const std::string payload = R"("payload":{"type":"token_count","rate_limits":{}})";
    EXPECT_EQ(
        CodexUsageLine::parse(R"({"timestamp":"2023-11-14T22:13:20Z","type":"event_msg",)" + payload + "}")
            .size(),
        1);
    for (const std::string& line :
         {std::string(R"("type":"event_msg",)") + payload, R"("timestamp":7,"type":"event_msg",)" + payload,
          R"("timestamp":"today","type":"event_msg",)" + payload,
          R"("timestamp":"2023-11-14","type":"event_msg",)" + payload,
          std::string(R"("timestamp":"2023-11-14T22:13:20Z","type":"event_msg")"),
          std::string(R"("timestamp":"2023-11-14T22:13:20Z","type":"event_msg","payload":"token_count")")}) {
        EXPECT_THAT(CodexUsageLine::parse("{" + line + "}"), IsEmpty()) << line;
    }
}

TEST(CodexUsageLine, OtherLinesGiveNothing) {
    for (const std::string& line : {std::string(), std::string("null"), std::string("[]"), std::string("{"),
                                    dated("event_msg", R"({"type":"agent_message","rate_limits":{}})"),
                                    dated("event_msg", R"({"type":7,"rate_limits":{}})"),
                                    dated("response_item", R"({"type":"token_count","rate_limits":{}})"),
                                    dated("event_msg", R"({"type":"token_count"})")}) {
        EXPECT_THAT(CodexUsageLine::parse(line), IsEmpty()) << line;
    }
}

TEST(CodexUsageLine, ReadsADateWithAndWithoutAFraction) {
    for (const auto& [stamp, seconds] : std::vector<std::pair<std::string, Timestamp>>{
             {"2023-11-14T22:13:20Z", at}, {"2023-11-14T22:13:20.250Z", at + 0.25}}) {
        const auto records = CodexUsageLine::parse(
            R"({"type":"event_msg","payload":{"type":"token_count","rate_limits":{}},"timestamp":")" + stamp +
            R"("})");
        EXPECT_THAT(records, ElementsAre(CodexUsageLine{CodexLimits{{}, {}, seconds}})) << stamp;
    }
}

TEST(CodexUsageLine, LimitsComeWithoutInfoAndWhateverTheyHold) {
    EXPECT_EQ(limitsOf(""), (CodexLimits{{}, {}, at}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":5},"secondary":7)"), (CodexLimits{{{5, {}}}, {}, at}));
    EXPECT_THAT(tokenCount(R"("rate_limits":[])"), IsEmpty());
    EXPECT_THAT(tokenCount(R"("rate_limits":null,"info":null)"), IsEmpty());
}

TEST(CodexUsageLine, TheLengthOfAWindowSaysWhichItIs) {
    EXPECT_EQ(limitsOf(R"("secondary":{"used_percent":5,"window_minutes":300})"),
              (CodexLimits{{{5, {}}}, {}, at}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":5,"window_minutes":10080})"),
              (CodexLimits{{}, {{5, {}}}, at}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":5,"window_minutes":60})"), (CodexLimits{{}, {}, at}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":5,"window_minutes":300.9})"),
              (CodexLimits{{{5, {}}}, {}, at}));
    for (const char* odd : {"true", R"("60")", "null", "1e400", "123456789012345678901234567890"}) {
        EXPECT_EQ(limitsOf(R"("secondary":{"used_percent":5,"window_minutes":)" + std::string(odd) + "}"),
                  (CodexLimits{{}, {{5, {}}}, at}))
            << odd;
    }
}

TEST(CodexUsageLine, OfTwoWindowsOfOneLengthTheLaterStands) {
    const std::string first = R"("primary":{"used_percent":5},)";
    EXPECT_EQ(limitsOf(first + R"("secondary":{"used_percent":6,"window_minutes":300})"),
              (CodexLimits{{{6, {}}}, {}, at}));
    EXPECT_EQ(limitsOf(first + R"("secondary":{"window_minutes":300})"), (CodexLimits{{}, {}, at}));
}

TEST(CodexUsageLine, AShareOutOfRangeLeavesTheLimitAbsent) {
    for (const char* share : {"true", "-0.1", "100.1", "1e400", R"("5")", "null"}) {
        EXPECT_FALSE(
            limitsOf(R"("primary":{"resets_at":9,"used_percent":)" + std::string(share) + "}").fiveHour)
            << share;
    }
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":100,"resets_at":9.5})").fiveHour,
              (ClaudeLimit{100, 9.5}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":0,"resets_at":"9"})").fiveHour, (ClaudeLimit{0, {}}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":0,"resets_at":1e400})").fiveHour, (ClaudeLimit{0, {}}));
    EXPECT_EQ(limitsOf(R"("primary":{"used_percent":0,"resets_at":true})").fiveHour, (ClaudeLimit{0, {}}));
}

TEST(CodexUsageLine, TheContextIsTheLastInputAsAShareOfTheWindow) {
    EXPECT_THAT(withInfo("1000", "250.9"), ElementsAre(CodexUsageLine{CodexContext{25, 1000, at}}));
    EXPECT_THAT(withInfo("1000", "0"), ElementsAre(CodexUsageLine{CodexContext{0, 1000, at}}));
    EXPECT_THAT(withInfo("1000", "1000"), ElementsAre(CodexUsageLine{CodexContext{100, 1000, at}}));
    EXPECT_THAT(withInfo("1000", "1001"), IsEmpty());
    EXPECT_THAT(withInfo("1000", "-1"), IsEmpty());
    EXPECT_THAT(tokenCount(R"("info":{"model_context_window":1000})"), IsEmpty());
    EXPECT_THAT(tokenCount(R"("info":{"model_context_window":1000,"last_token_usage":7})"), IsEmpty());
    EXPECT_THAT(tokenCount(R"("info":{"last_token_usage":{"input_tokens":7}})"), IsEmpty());
}

TEST(CodexUsageLine, AContextOfNumbersThatDoNotFitIsAbsent) {
    for (const char* odd : {"0", "-5", "0.9", "true", "null", R"("1000")", "1e400", "9223372036854775808",
                            "123456789012345678901234567890"}) {
        EXPECT_THAT(withInfo(odd, "0"), IsEmpty()) << odd;
    }
    for (const char* odd :
         {"true", "null", R"("7")", R"("NaN")", "1e400", "123456789012345678901234567890"}) {
        EXPECT_THAT(withInfo("1000", odd), IsEmpty()) << odd;
    }
    EXPECT_EQ(withInfo("9223372036854775807", "9223372036854775807").size(), 1);
}

TEST(CodexUsageLine, TheLimitsStandBeforeTheContext) {
    const auto records = tokenCount(
        R"("info":{"model_context_window":10,"last_token_usage":{"input_tokens":5}},"rate_limits":{})");
    EXPECT_THAT(records, ElementsAre(CodexUsageLine{CodexLimits{{}, {}, at}},
                                     CodexUsageLine{CodexContext{50, 10, at}}));
}

TEST(CodexUsageLine, CachedInputIsCountedApart) {
    const std::string usage = R"({"input_tokens":100,"output_tokens":7,"cache_write_input_tokens":3,
                                  "cached_input_tokens":)";
    const std::string key = R"("response_id":"r",)";
    EXPECT_THAT(usageRecord(usage + "40}", key),
                ElementsAre(CodexUsageLine{Tokens{"r", {60, 7, 3, 40}, at}}));
    EXPECT_THAT(usageRecord(usage + "140}", key),
                ElementsAre(CodexUsageLine{Tokens{"r", {0, 7, 3, 140}, at}}));
    EXPECT_THAT(usageRecord(usage + "true}", key),
                ElementsAre(CodexUsageLine{Tokens{"r", {100, 7, 3, 0}, at}}));
    EXPECT_THAT(usageRecord(R"({"input_tokens":100,"output_tokens":7})", key),
                ElementsAre(CodexUsageLine{Tokens{"r", {100, 7, 0, 0}, at}}));
}

TEST(CodexUsageLine, AUsageRecordNeedsInputAndOutput) {
    const std::string key = R"("response_id":"r",)";
    for (const char* usage :
         {"7", "null", "{}", R"({"input_tokens":1})", R"({"output_tokens":1})",
          R"({"input_tokens":true,"output_tokens":1})", R"({"input_tokens":1,"output_tokens":"1"})",
          R"({"input_tokens":1e400,"output_tokens":1})",
          R"({"input_tokens":1,"output_tokens":123456789012345678901234567890})"}) {
        EXPECT_THAT(usageRecord(usage, key), IsEmpty()) << usage;
    }
}

TEST(CodexUsageLine, NoNumberOverflows) {
    using Limits = std::numeric_limits<std::int64_t>;
    const std::string key = R"("response_id":"r",)";
    EXPECT_THAT(usageRecord(R"({"input_tokens":9223372036854775807,"output_tokens":1,
                                "cached_input_tokens":-9223372036854775808})",
                            key),
                ElementsAre(CodexUsageLine{Tokens{"r", {Limits::max(), 1, 0, Limits::min()}, at}}));
    EXPECT_THAT(usageRecord(R"({"input_tokens":-9223372036854775808,"output_tokens":-1,
                                "cached_input_tokens":9223372036854775807})",
                            key),
                ElementsAre(CodexUsageLine{Tokens{"r", {0, -1, 0, Limits::max()}, at}}));
}

TEST(CodexUsageLine, AResponseGoesByItsIdOrByItsTurn) {
    const std::string usage = R"({"input_tokens":1,"output_tokens":1})";
    const auto keyOf = [&](const std::string& fields) {
        const auto records = usageRecord(usage, fields);
        return records.empty() ? "none" : std::get<Tokens>(records.front().kind).key;
    };
    EXPECT_EQ(keyOf(R"("response_id":"r","turn_id":"t",)"), "r");
    EXPECT_EQ(keyOf(R"("turn_id":"t",)"), "t");
    EXPECT_EQ(keyOf(R"("response_id":7,"turn_id":"t",)"), "t");
    EXPECT_EQ(keyOf(R"("response_id":"",)"), "");
    EXPECT_EQ(keyOf(R"("response_id":7,"turn_id":null,)"), "none");
    EXPECT_EQ(keyOf(""), "none");
}
