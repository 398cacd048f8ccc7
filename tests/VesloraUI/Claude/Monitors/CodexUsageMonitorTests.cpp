// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/CodexUsageMonitor.h"
#include "tests/VesloraUI/Claude/Transcripts/TranscriptWorld.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using test::TranscriptWorld;

constexpr Timestamp eight = ManualScheduler::defaultStart; // 2027-01-15T08:00:00Z

std::string time(const std::string& minutes) {
    return "\"2027-01-15T07:" + minutes + ":00.000Z\"";
}

std::string limits(const std::string& minutes, int percent) {
    return R"({"timestamp":)" + time(minutes) +
           R"(,"type":"event_msg","payload":{"type":"token_count","rate_limits":{"primary":{"used_percent":)" +
           std::to_string(percent) + R"(,"window_minutes":300}}}})" + "\n";
}

std::string context(const std::string& minutes, int input) {
    return R"({"timestamp":)" + time(minutes) +
           R"(,"type":"event_msg","payload":{"type":"token_count","info":{"model_context_window":1000,)" +
           R"("last_token_usage":{"input_tokens":)" + std::to_string(input) + "}}}}\n";
}

std::string tokens(const std::string& minutes, const std::string& response, int output) {
    return R"({"timestamp":)" + time(minutes) + R"(,"type":"token_usage_record","payload":{"response_id":")" +
           response + R"(","usage":{"input_tokens":0,"output_tokens":)" + std::to_string(output) + "}}}\n";
}

class CodexUsageMonitorTest : public testing::Test {
  protected:
    CodexUsageMonitorTest() {
        QObject::connect(&monitor, &AgentUsageMonitor::changed, [this] { ++changes; });
    }
    void load() {
        monitor.loadToday();
        settle();
    }
    void settle() {
        for (int round = 0; round < 7; ++round) {
            monitor.refresh();
            world.time.runBackground();
        }
    }

    TranscriptWorld world;
    CodexUsageMonitor monitor{world.seams(), TranscriptWorld::folder, test::fixedCalendar()};
    int changes = 0;
};

TEST_F(CodexUsageMonitorTest, ReadsWhatTheDaysLogsTell) {
    world.append("2027/01/15/rollout-a.jsonl", limits("10", 40) + context("11", 250) + tokens("12", "r", 5));
    load();
    EXPECT_EQ(monitor.limits()->fiveHour->percent, 40);
    EXPECT_EQ(monitor.context()->percent, 25);
    EXPECT_EQ(monitor.today().output, 5);
    EXPECT_EQ(monitor.lastActivity(), eight - 48 * 60);
    EXPECT_EQ(monitor.usage().agent, AgentKind::codex);
}

TEST_F(CodexUsageMonitorTest, NothingMovesBeforeTheFirstReadHasEnded) {
    world.append("2027/01/15/rollout-a.jsonl", limits("10", 40));
    monitor.loadToday();
    monitor.refresh();
    EXPECT_FALSE(monitor.limits());
    world.time.runBackground();
    world.time.runBackground();
    EXPECT_TRUE(monitor.limits());
}

TEST_F(CodexUsageMonitorTest, AnOlderReadingIsIgnoredYetCountsAsActivity) {
    world.append("2027/01/15/rollout-a.jsonl", context("30", 100));
    load();
    EXPECT_FALSE(monitor.lastActivity());
    world.append("2027/01/15/rollout-a.jsonl", limits("20", 40));
    settle();
    world.append("2027/01/15/rollout-a.jsonl", limits("10", 30) + context("20", 900));
    settle();
    EXPECT_EQ(monitor.limits()->fiveHour->percent, 40);
    EXPECT_EQ(monitor.context()->percent, 10);
    EXPECT_EQ(monitor.lastActivity(), eight - 40 * 60);
}

TEST_F(CodexUsageMonitorTest, OfTwoSessionsTheNewestLineStands) {
    world.append("2027/01/15/rollout-a.jsonl", context("10", 100));
    world.append("2027/01/15/rollout-b.jsonl", context("20", 200));
    load();
    EXPECT_EQ(monitor.context()->percent, 20);
    world.append("2027/01/15/rollout-a.jsonl", context("30", 300));
    settle();
    EXPECT_EQ(monitor.context()->percent, 30);
    world.append("2027/01/15/rollout-b.jsonl", context("30", 400));
    settle();
    EXPECT_EQ(monitor.context()->percent, 40);
}

TEST_F(CodexUsageMonitorTest, AReadingThatIsNewInTheBackgroundDoesNotReplaceANewerOne) {
    world.append("2027/01/15/rollout-a.jsonl", context("30", 300) + tokens("30", "r", 5));
    load();
    world.append("2027/01/15/rollout-b.jsonl", context("20", 200) + tokens("20", "s", 7));
    settle();
    EXPECT_EQ(monitor.context()->percent, 30);
    EXPECT_EQ(monitor.today().output, 12);
}

TEST_F(CodexUsageMonitorTest, ADayChangeClearsTheTokensAndKeepsTheReadings) {
    world.append("2027/01/15/rollout-a.jsonl", limits("10", 40) + tokens("12", "r", 5));
    load();
    world.pass(86'400);
    monitor.refresh();
    EXPECT_EQ(monitor.today(), ClaudeTokenTotals::zero);
    EXPECT_EQ(monitor.limits()->fiveHour->percent, 40);
    EXPECT_TRUE(monitor.usage().limitsStale);
}

TEST_F(CodexUsageMonitorTest, AReadingIsStaleAfterAQuarterOfAnHour) {
    EXPECT_FALSE(monitor.isStale(eight - 900));
    EXPECT_TRUE(monitor.isStale(eight - 900.5));
}

TEST_F(CodexUsageMonitorTest, AFileWrittenAgainCountsItsResponsesOnce) {
    world.append("2027/01/15/rollout-a.jsonl", tokens("12", "r", 5));
    load();
    world.replace("2027/01/15/rollout-a.jsonl", tokens("12", "r", 5) + tokens("13", "s", 7));
    settle();
    EXPECT_EQ(monitor.today().output, 12);
    const int before = changes;
    settle();
    EXPECT_EQ(changes, before);
}

} // namespace
} // namespace veslora
