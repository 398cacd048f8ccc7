// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeStatusSnapshot.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;

namespace {

ClaudeStatusSnapshot captured(const std::string& name) {
    const auto snapshot = ClaudeStatusSnapshot::parse(test::dataFile("agents/claude/statusline/" + name), 5);
    EXPECT_TRUE(snapshot) << name;
    return snapshot.value_or(ClaudeStatusSnapshot());
}

ClaudeStatusSnapshot with(const std::string& more) {
    const auto snapshot = ClaudeStatusSnapshot::parse(R"({"session_id":"a",)" + more + "}", 5);
    EXPECT_TRUE(snapshot) << more;
    return snapshot.value_or(ClaudeStatusSnapshot());
}

ClaudeStatusSnapshot withWindow(const std::string& window) {
    return with(R"("context_window":{)" + window + "}");
}

std::optional<ClaudeLimit> fiveHourOf(const std::string& limit) {
    return with(R"("rate_limits":{"five_hour":)" + limit + "}").fiveHour;
}

ClaudeStatusSnapshot withList(const std::string& list) {
    return with(R"("rate_limits":{"limits":)" + list + "}");
}

ClaudeStatusSnapshot bare() {
    ClaudeStatusSnapshot snapshot;
    snapshot.sessionId = "a";
    snapshot.receivedAt = 5;
    return snapshot;
}

} // namespace

TEST(ClaudeStatusSnapshot, ReadsTheCapturedFiles) {
    for (const char* name : {"before-first-prompt.json", "subscription.before-first-prompt.json"}) {
        const ClaudeStatusSnapshot before = captured(name);
        EXPECT_EQ(before.model, "Opus 5.5");
        EXPECT_EQ(before.contextSize, 1'000'000);
        EXPECT_FALSE(before.contextPercent);
        EXPECT_FALSE(before.fiveHour);
        EXPECT_FALSE(before.week);
        EXPECT_TRUE(before.limitsAvailable);
    }
    const ClaudeStatusSnapshot after = captured("subscription.after-turn.json");
    EXPECT_EQ(after.sessionId, "da8224bc-1648-426c-a0b1-073bf501a3a5");
    EXPECT_EQ(after.contextPercent, 1);
    EXPECT_EQ(after.fiveHour, (ClaudeLimit{41.7, 1795252605}));
    EXPECT_EQ(after.week, (ClaudeLimit{12.3, 1795545405}));
    EXPECT_EQ(after.receivedAt, 5);
}

TEST(ClaudeStatusSnapshot, NeedsASession) {
    for (const char* text : {"", " ", "null", "7", "[]", R"(["session_id"])", "{}", R"({"session_id":""})",
                             R"({"session_id":7})", R"({"session_id":"a")", R"({"session_id":"a"}})"}) {
        EXPECT_FALSE(ClaudeStatusSnapshot::parse(text, 5)) << text;
    }
    EXPECT_EQ(ClaudeStatusSnapshot::parse(R"({"session_id":"a"})", 5), bare());
}

TEST(ClaudeStatusSnapshot, NothingComesOfAHalfWrittenFile) {
    const std::string whole = test::dataFile("agents/claude/statusline/subscription.after-turn.json");
    const std::size_t length = whole.find_last_of('}') + 1;
    for (std::size_t kept = 0; kept < length; ++kept) {
        EXPECT_FALSE(ClaudeStatusSnapshot::parse(std::string_view(whole).substr(0, kept), 5)) << kept;
    }
}

TEST(ClaudeStatusSnapshot, OddFieldsAreAbsentAndTheRestStands) {
    EXPECT_EQ(with(R"("model":"Opus","context_window":[1],"rate_limits":"none")"), bare());
    EXPECT_EQ(with(R"("model":{"display_name":7},"context_window":7,"rate_limits":null)"), bare());
    EXPECT_EQ(with(R"("model":{"display_name":""})").model, "");
}

TEST(ClaudeStatusSnapshot, AWindowSizeThatDoesNotConvertIsAbsent) {
    EXPECT_EQ(withWindow(R"("context_window_size":200000.9)").contextSize, 200'000);
    EXPECT_EQ(withWindow(R"("context_window_size":-3)").contextSize, -3);
    EXPECT_EQ(withWindow(R"("context_window_size":9223372036854775807)").contextSize,
              std::numeric_limits<std::int64_t>::max());
    for (const char* size : {"9223372036854775808", "123456789012345678901234567890", "1e19", "-1e19",
                             "1e400", "true", "false", "null", R"("200000")", R"("NaN")"}) {
        const auto snapshot = withWindow(std::string(R"("used_percentage":7,"context_window_size":)") + size);
        EXPECT_FALSE(snapshot.contextSize) << size;
        EXPECT_EQ(snapshot.contextPercent, 7) << size;
    }
}

TEST(ClaudeStatusSnapshot, AUsedShareOutOfRangeFallsBackToTheComputedOne) {
    const std::string odd = R"("used_percentage":120,"context_window_size":1000,"current_usage":)";
    EXPECT_EQ(withWindow(odd + R"({"input_tokens":500})").contextPercent, 50);
    EXPECT_EQ(withWindow(odd + R"({"input_tokens":1000})").contextPercent, 100);
    // Never pulled down to 100.
    EXPECT_FALSE(withWindow(odd + R"({"input_tokens":1500})").contextPercent);
    EXPECT_FALSE(withWindow(odd + R"({"input_tokens":-1})").contextPercent);
    EXPECT_FALSE(withWindow(odd + "500").contextPercent);
    EXPECT_EQ(withWindow(R"("used_percentage":0)").contextPercent, 0);
    EXPECT_EQ(withWindow(R"("used_percentage":100)").contextPercent, 100);
    for (const char* percent : {"-0.001", "100.001", "true", "1e400", R"("5")", "null"}) {
        EXPECT_FALSE(withWindow(std::string(R"("used_percentage":)") + percent).contextPercent) << percent;
    }
}

TEST(ClaudeStatusSnapshot, TheComputedShareIsOfWhatWasSent) {
    EXPECT_EQ(withWindow(R"("context_window_size":1000,"current_usage":{"input_tokens":100,
                            "cache_creation_input_tokens":200,"cache_read_input_tokens":50.5,
                            "output_tokens":400})")
                  .contextPercent,
              35.05);
    EXPECT_EQ(withWindow(R"("context_window_size":1000,"current_usage":{"input_tokens":true,
                            "cache_creation_input_tokens":"9","cache_read_input_tokens":1e400})")
                  .contextPercent,
              0);
    EXPECT_EQ(withWindow(R"("context_window_size":1000,"current_usage":{})").contextPercent, 0);
    // The sum is beyond what a double holds.
    EXPECT_FALSE(withWindow(R"("context_window_size":1,"current_usage":{"input_tokens":1.7e308,
                               "cache_creation_input_tokens":1.7e308,"cache_read_input_tokens":-1.7e308})")
                     .contextPercent);
}

TEST(ClaudeStatusSnapshot, WithoutAWindowThereIsNoShare) {
    for (const char* size : {"0", "-1000", "0.9", "null", "1e400"}) {
        const auto snapshot =
            withWindow(R"("current_usage":{"input_tokens":5},"context_window_size":)" + std::string(size));
        EXPECT_FALSE(snapshot.contextPercent) << size;
    }
    EXPECT_FALSE(withWindow(R"("current_usage":{"input_tokens":5})").contextPercent);
}

TEST(ClaudeStatusSnapshot, LimitsAreAvailableUnlessItIsSaidThatTheyAreNot) {
    const auto none = with(R"("rate_limits_available":false)");
    EXPECT_FALSE(none.limitsAvailable);
    EXPECT_FALSE(none.fiveHour);
    EXPECT_FALSE(none.week);
    for (const char* flag : {"true", "0", "null", R"("false")", "[]"}) {
        EXPECT_TRUE(with(std::string(R"("rate_limits_available":)") + flag).limitsAvailable) << flag;
    }
}

TEST(ClaudeStatusSnapshot, TheFirstUsableShareOfALimitCounts) {
    EXPECT_EQ(fiveHourOf(R"({"utilization":1,"used_percentage":2,"percent":3})"), (ClaudeLimit{1, {}}));
    EXPECT_EQ(fiveHourOf(R"({"utilization":true,"used_percentage":30})"), (ClaudeLimit{30, {}}));
    EXPECT_EQ(fiveHourOf(R"({"utilization":100.5,"used_percentage":-1,"percent":3.5})"),
              (ClaudeLimit{3.5, {}}));
    EXPECT_FALSE(fiveHourOf(R"({"utilization":101,"resets_at":1700000000})"));
    EXPECT_FALSE(fiveHourOf(R"({"resets_at":1700000000})"));
    EXPECT_FALSE(fiveHourOf("50"));
    EXPECT_FALSE(fiveHourOf("null"));
}

TEST(ClaudeStatusSnapshot, AResetIsADateOrANumberOfSeconds) {
    const auto resetOf = [](const std::string& date) {
        const auto limit = fiveHourOf(R"({"percent":3,"resets_at":)" + date + "}");
        EXPECT_TRUE(limit) << date;
        return limit ? limit->resetsAt : std::nullopt;
    };
    EXPECT_EQ(resetOf(R"("2023-11-14T22:13:20Z")"), 1'700'000'000);
    EXPECT_EQ(resetOf(R"("2023-11-14T22:13:20.500Z")"), 1'700'000'000.5);
    EXPECT_EQ(resetOf("1700000000"), 1'700'000'000);
    EXPECT_EQ(resetOf("1700000000.25"), 1'700'000'000.25);
    for (const char* date : {R"("tomorrow")", R"("1700000000")", R"("")", "true", "null", "{}", "1e400"}) {
        EXPECT_FALSE(resetOf(date)) << date;
    }
}

TEST(ClaudeStatusSnapshot, TheListFillsWhatIsNotThere) {
    const auto listed = withList(R"([{"kind":"weekly_opus","percent":9},{"kind":7,"percent":8},
                                     {"kind":"session","percent":101},{"kind":"session","percent":1},
                                     {"kind":"session","percent":2},{"kind":"weekly_all","percent":3},
                                     {"kind":"weekly_all","percent":4},{}])");
    EXPECT_EQ(listed.fiveHour, (ClaudeLimit{1, {}}));
    EXPECT_EQ(listed.week, (ClaudeLimit{3, {}}));

    const auto both = with(R"("rate_limits":{"limits":[{"kind":"session","percent":1},
                              {"kind":"weekly_all","percent":2,"resets_at":9}],"five_hour":{"percent":50},
                              "seven_day":{"percent":true}})");
    EXPECT_EQ(both.fiveHour, (ClaudeLimit{50, {}}));
    EXPECT_EQ(both.week, (ClaudeLimit{2, 9}));
}

TEST(ClaudeStatusSnapshot, AListOfAnythingButObjectsIsNone) {
    EXPECT_EQ(withList(R"([{"kind":"session","percent":1},7])"), bare());
    EXPECT_EQ(withList(R"({"kind":"session","percent":1})"), bare());
    EXPECT_EQ(withList("[]"), bare());
}
