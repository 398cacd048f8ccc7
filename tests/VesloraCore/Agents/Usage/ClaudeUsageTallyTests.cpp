// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeUsageTally.h"
#include "tests/VesloraCore/TestData.h"
#include "tests/support/FixedCalendar.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace veslora {
namespace {

constexpr Timestamp noon = 1'795'262'400; // 2026-11-21T12:00:00Z

std::string usage(std::int64_t input, std::int64_t output) {
    return R"({"input_tokens":)" + std::to_string(input) + R"(,"output_tokens":)" + std::to_string(output) +
           R"(,"cache_creation_input_tokens":300,"cache_read_input_tokens":4000})";
}

std::string line(const std::string& rest, const std::string& time = "2026-11-21T12:00:00.250Z") {
    return R"({"type":"assistant","timestamp":")" + time + R"(",)" + rest + "}";
}

std::string message(const std::string& id, std::int64_t output, const std::string& request = "req_1",
                    const std::string& time = "2026-11-21T12:00:00.250Z") {
    return line(R"("requestId":")" + request + R"(","message":{"id":")" + id + R"(","usage":)" +
                    usage(1, output) + "}",
                time);
}

ClaudeUsageTally tally() {
    return {noon, test::fixedCalendar()};
}

ClaudeTokenTotals totalsOf(const std::vector<std::string>& lines) {
    ClaudeUsageTally made = tally();
    for (const std::string& each : lines) {
        made.add(each);
    }
    return made.totals();
}

TEST(ClaudeUsageTally, DayIsTheStartOfTheDay) {
    EXPECT_EQ(tally().day(), 1'795'219'200);
    EXPECT_EQ(ClaudeUsageTally(noon, test::fixedCalendar(3600)).day(), 1'795'219'200 + 3600);
}

TEST(ClaudeUsageTally, CountsTheFourKinds) {
    EXPECT_EQ(totalsOf({message("m", 20)}), (ClaudeTokenTotals{1, 20, 300, 4000}));
}

TEST(ClaudeUsageTally, TheLastLineOfAMessageStandsEvenIfItIsLower) {
    EXPECT_EQ(totalsOf({message("m", 10), message("m", 25)}).output, 25);
    EXPECT_EQ(totalsOf({message("m", 10), message("m", 25), message("m", 5)}).output, 5);
    EXPECT_EQ(totalsOf({message("m", 10), message("m", 25), message("m", 5)}).input, 1);
}

TEST(ClaudeUsageTally, OneMessageInTwoRequestsCountsTwice) {
    EXPECT_EQ(totalsOf({message("m", 10, "a"), message("m", 25, "b")}).output, 35);
}

TEST(ClaudeUsageTally, AMessageWithoutARequestHasAKeyOfItsOwn) {
    const std::string none = line(R"("message":{"id":"m","usage":)" + usage(1, 7) + "}");
    const std::string odd = line(R"("requestId":5,"message":{"id":"m","usage":)" + usage(1, 9) + "}");
    EXPECT_EQ(totalsOf({none, message("m", 10, "a")}).output, 17);
    EXPECT_EQ(totalsOf({none, odd}).output, 9);
    EXPECT_EQ(ClaudeUsageLine::parse(none)->key, "m|");
}

TEST(ClaudeUsageTally, WithoutAMessageIdTheLineItselfIsTheKey) {
    const auto of = [](const std::string& uuid, int output) {
        return line(R"("uuid":")" + uuid + R"(","requestId":"r","message":{"usage":)" + usage(1, output) +
                    "}");
    };
    EXPECT_EQ(totalsOf({of("a", 3), of("b", 4), of("a", 5)}).output, 9);
    EXPECT_EQ(totalsOf({line(R"("message":{"id":7,"usage":)" + usage(1, 5) + "}")}).output, 0);
}

TEST(ClaudeUsageTally, AnEmptyIdIsOneLikeAnyOther) {
    EXPECT_EQ(ClaudeUsageLine::parse(message("", 5))->key, "|req_1");
}

TEST(ClaudeUsageTally, LinesOfOtherDaysArePassedOver) {
    EXPECT_EQ(totalsOf({message("m", 10, "a", "2026-11-20T23:59:59.999Z")}), ClaudeTokenTotals::zero);
    EXPECT_EQ(totalsOf({message("m", 10, "a", "2026-11-22T00:00:00Z")}), ClaudeTokenTotals::zero);
    EXPECT_EQ(totalsOf({message("m", 10, "a", "2026-11-21T00:00:00Z")}).output, 10);
    EXPECT_EQ(totalsOf({message("m", 10, "a", "2026-11-22T01:30:00+02:00")}).output, 10);
}

TEST(ClaudeUsageTally, LinesThatDontCount) {
    const std::string counts = R"("message":{"id":"m","usage":)" + usage(1, 5) + "}";
    EXPECT_EQ(totalsOf({line(counts)}).output, 5);
    for (const std::string& each : std::vector<std::string>{
             "",
             "\"usage\"",
             "[" + line(counts) + "]",
             line(counts) + "x",
             line(counts).substr(0, 150),
             line(counts, "yesterday"),
             R"({"type":"user","timestamp":"2026-11-21T12:00:00Z",)" + counts + "}",
             R"({"type":5,"timestamp":"2026-11-21T12:00:00Z",)" + counts + "}",
             R"({"type":"assistant","timestamp":1795262400,)" + counts + "}",
             R"({"type":"assistant",)" + counts + "}",
             line(R"("message":[{"id":"m","usage":{}}])"),
             line(R"("message":{"id":"m","usage":[5]})"),
             line(R"("message":{"id":"m"},"usage":)" + usage(1, 5)),
             line(R"("message":{"usage":)" + usage(1, 5) + "}"),
         }) {
        EXPECT_FALSE(ClaudeUsageLine::parse(each).has_value()) << each;
    }
}

TEST(ClaudeUsageTally, TheMarkerMustStandAsItIs) {
    EXPECT_FALSE(ClaudeUsageLine::parse(line(R"("message":{"id":"m","\u0075sage":)" + usage(1, 5) + "}")));
}

TEST(ClaudeUsageTally, BooleansCountAndOddNumbersDont) {
    const std::string odd = line(R"("message":{"id":"m","usage":{"input_tokens":true,"output_tokens":"9",)"
                                 R"("cache_creation_input_tokens":1e400,"cache_read_input_tokens":2.9}})");
    EXPECT_EQ(totalsOf({odd}), (ClaudeTokenTotals{1, 0, 0, 2}));
    const std::string huge = line(R"("message":{"id":"m","usage":{"input_tokens":99999999999999999999}})");
    EXPECT_EQ(totalsOf({huge}), ClaudeTokenTotals::zero);
}

TEST(ClaudeUsageTally, OfEqualKeysTheLastCounts) {
    const std::string twice = line(R"("message":{"id":"m","usage":)" + usage(1, 5) +
                                   R"(},"message":{"id":"n","usage":{"output_tokens":6}})");
    EXPECT_EQ(ClaudeUsageLine::parse(twice)->key, "n|");
    EXPECT_EQ(totalsOf({twice}), (ClaudeTokenTotals{0, 6, 0, 0}));
}

TEST(ClaudeUsageTally, SumsRestAtTheEndsOf64BitsAndComeBack) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    ClaudeUsageTally made = tally();
    made.add(message("a", largest));
    made.add(message("b", largest));
    EXPECT_EQ(made.totals().output, largest);
    made.add(message("a", 0));
    made.add(message("b", 5));
    EXPECT_EQ(made.totals().output, 5);
}

TEST(ClaudeUsageTally, ANewDayBeginsAtZero) {
    ClaudeUsageTally made = tally();
    made.add(message("m", 5));
    made.roll(noon + 3600);
    EXPECT_EQ(made.totals().output, 5);
    made.roll(noon + 86400);
    EXPECT_EQ(made.totals(), ClaudeTokenTotals::zero);
    EXPECT_EQ(made.day(), 1'795'305'600);
    made.add(message("m", 7, "req_1", "2026-11-22T08:00:00Z"));
    EXPECT_EQ(made.totals().output, 7);
}

TEST(ClaudeUsageTally, MergingEqualsCountingInOrder) {
    ClaudeUsageTally first = tally();
    first.add(message("a", 5));
    first.add(message("b", 6));
    ClaudeUsageTally later = first.emptied();
    EXPECT_EQ(later.totals(), ClaudeTokenTotals::zero);
    later.add(message("b", 2));
    later.add(message("c", 9));
    EXPECT_TRUE(first.merge(std::move(later)));
    EXPECT_EQ(first.totals(), totalsOf({message("a", 5), message("b", 6), message("b", 2), message("c", 9)}));
}

TEST(ClaudeUsageTally, AnotherDaysTallyIsNotMerged) {
    ClaudeUsageTally first = tally();
    ClaudeUsageTally later = first.emptied();
    later.add(message("a", 5));
    first.roll(noon + 86400);
    EXPECT_FALSE(first.merge(std::move(later)));
    EXPECT_EQ(first.totals(), ClaudeTokenTotals::zero);
}

TEST(ClaudeUsageTally, ATallyOfAnotherSecretIsNotMerged) {
    ClaudeUsageTally first(noon, test::fixedCalendar(), {1, 2});
    ClaudeUsageTally later = tally();
    later.add(message("a", 5));
    EXPECT_FALSE(first.merge(std::move(later)));
    EXPECT_EQ(first.totals(), ClaudeTokenTotals::zero);
    EXPECT_TRUE(first.merge(first.emptied()));
}

TEST(ClaudeUsageTally, ReadsWhatTheAgentWrites) {
    std::istringstream lines(test::dataFile("agents/claude/transcripts/two-tools-in-one-reply.jsonl"));
    ClaudeUsageTally made = tally();
    for (std::string each; std::getline(lines, each);) {
        made.add(each);
    }
    // Two replies; the first one is spread over three lines.
    EXPECT_EQ(made.totals(), (ClaudeTokenTotals{2400, 84, 600, 16000}));
}

} // namespace
} // namespace veslora
