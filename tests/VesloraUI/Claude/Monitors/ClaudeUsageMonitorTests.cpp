// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraUI/Claude/Monitors/ClaudeUsageMonitor.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Support/LocalCalendar.h"
#include "tests/VesloraUI/Claude/Transcripts/TranscriptWorld.h"
#include "tests/support/FaultInjectingFiles.h"

#include <gtest/gtest.h>

#include <memory>

namespace veslora {
namespace {

using test::TranscriptWorld;
using test::usageLine;

constexpr auto supportPath = "/home/me/.local/share/Veslora";
constexpr auto status = "/home/me/.local/share/Veslora/statusline";
constexpr auto today = "2027-01-15T08:00:00Z"; // what ManualScheduler begins with

class ClaudeUsageMonitorTest : public testing::Test {
  protected:
    void start() {
        monitor = std::make_unique<ClaudeUsageMonitor>(TranscriptSeams{world.time, files, world.watcher},
                                                       support, TranscriptWorld::folder, calendar,
                                                       [this] { return liveSessionIds; });
        QObject::connect(monitor.get(), &AgentUsageMonitor::changed, [this] { ++changes; });
    }
    void startAndLoad() {
        start();
        monitor->loadToday();
        settle();
    }
    /// As the monitor that owns this one refreshes it, and the background catches up.
    void settle() {
        for (int round = 0; round < 7; ++round) {
            monitor->refresh();
            world.time.runBackground();
        }
    }
    void putStatus(const std::string& session, const std::string& more = {}, double age = 0) {
        world.files.clock = world.time.now() - age;
        world.files.put(std::string(status) + "/" + session + ".json",
                        R"({"session_id":")" + session + "\"" + more + "}");
        world.files.clock = world.time.now();
    }
    [[nodiscard]] bool hasStatus(const std::string& session) const {
        return world.files.exists(std::string(status) + "/" + session + ".json");
    }
    [[nodiscard]] std::int64_t output() const { return monitor->today().output; }

    TranscriptWorld world;
    FaultInjectingFiles files{world.files};
    SupportDirectory support{files, supportPath, supportPath};
    std::shared_ptr<const Calendar> calendar = test::fixedCalendar();
    std::optional<std::set<std::string>> liveSessionIds;
    std::unique_ptr<ClaudeUsageMonitor> monitor;
    int changes = 0;
};

constexpr auto limits = R"(,"rate_limits":{"five_hour":{"used_percentage":40}})";
constexpr auto otherLimits = R"(,"rate_limits":{"seven_day":{"used_percentage":50}})";
constexpr auto noLimits = R"(,"rate_limits_available":false)";

TEST_F(ClaudeUsageMonitorTest, WithoutAnyFileNothingIsKnown) {
    startAndLoad();
    EXPECT_FALSE(monitor->limits());
    EXPECT_FALSE(monitor->context());
    EXPECT_EQ(monitor->today(), ClaudeTokenTotals::zero);
    EXPECT_EQ(changes, 0);
}

TEST_F(ClaudeUsageMonitorTest, ReadsTheStatusBeforeAnythingElseIsLoaded) {
    putStatus("a", limits);
    start();
    monitor->refresh();
    EXPECT_EQ(monitor->limits()->fiveHour->percent, 40);
    EXPECT_EQ(monitor->limits()->receivedAt, world.time.now());
    EXPECT_EQ(monitor->context()->sessionId, "a");
}

TEST_F(ClaudeUsageMonitorTest, TheNewestStatusTellsOfTheContextAndTheNewestWithLimitsOfThem) {
    putStatus("old", otherLimits, 200);
    putStatus("older", limits, 300);
    putStatus("new", {}, 100);
    start();
    monitor->refresh();
    EXPECT_EQ(monitor->context()->sessionId, "new");
    EXPECT_EQ(monitor->limits()->sessionId, "old");
    EXPECT_EQ(monitor->usage().week->percent, 50);
}

TEST_F(ClaudeUsageMonitorTest, ThatThereAreNoLimitsIsAReadingToo) {
    putStatus("old", limits, 200);
    putStatus("new", noLimits, 100);
    start();
    monitor->refresh();
    EXPECT_EQ(monitor->limits()->sessionId, "new");
    EXPECT_FALSE(monitor->usage().limitsAvailable);
}

TEST_F(ClaudeUsageMonitorTest, OddStatusFilesArePassedOver) {
    putStatus("good", limits, 50);
    const std::string folder = std::string(status) + "/";
    world.files.put(folder + "tmp.abc123", R"({"session_id":"tmp"})");
    world.files.put(folder + "empty.json", "");
    world.files.put(folder + "half.json", R"({"session_id":"ha)");
    world.files.put(folder + "huge.json",
                    R"({"session_id":"huge"})" + std::string(std::size_t{2} << 20, ' '));
    world.files.put(folder + "theirs.json", R"({"session_id":"theirs"})");
    world.files.giveAway(folder + "theirs.json");
    world.files.put("/elsewhere", R"({"session_id":"link"})");
    ASSERT_FALSE(world.files.makeLink("/elsewhere", folder + "link.json"));
    liveSessionIds = std::set<std::string>();
    start();
    monitor->refresh();
    EXPECT_EQ(monitor->context()->sessionId, "good");
    world.pass(1000);
    monitor->refresh();
    EXPECT_FALSE(hasStatus("good"));
    for (const auto name :
         {"tmp.abc123", "empty.json", "half.json", "huge.json", "theirs.json", "link.json"}) {
        EXPECT_TRUE(world.files.exists(folder + name)) << name;
    }
}

TEST_F(ClaudeUsageMonitorTest, AStatusIsReadAgainWhenItWasReplaced) {
    putStatus("a", limits);
    start();
    monitor->refresh();
    world.pass(10);
    putStatus("a", otherLimits);
    monitor->refresh();
    EXPECT_FALSE(monitor->limits()->fiveHour);
    EXPECT_EQ(monitor->limits()->week->percent, 50);
}

TEST_F(ClaudeUsageMonitorTest, AStatusAtRestIsReadOnce) {
    putStatus("a", limits);
    start();
    world.pass(10);
    monitor->refresh();
    files.readError = std::errc::io_error;
    monitor->refresh();
    EXPECT_EQ(monitor->limits()->fiveHour->percent, 40);
    EXPECT_EQ(changes, 2);
}

TEST_F(ClaudeUsageMonitorTest, ALiveSessionsStatusIsKeptHoweverOldItIs) {
    putStatus("a", limits, 100'000);
    liveSessionIds = std::set<std::string>{"a"};
    start();
    monitor->refresh();
    EXPECT_TRUE(hasStatus("a"));
    EXPECT_EQ(monitor->limits()->sessionId, "a");
}

TEST_F(ClaudeUsageMonitorTest, AGoneSessionsStatusIsRemovedAfterFiveMinutes) {
    putStatus("a", limits);
    liveSessionIds = std::set<std::string>{"b"};
    start();
    world.pass(300);
    monitor->refresh();
    EXPECT_EQ(monitor->limits()->sessionId, "a");
    world.pass(1);
    monitor->refresh();
    EXPECT_FALSE(hasStatus("a"));
    EXPECT_FALSE(monitor->limits());
    EXPECT_FALSE(monitor->context());
}

TEST_F(ClaudeUsageMonitorTest, NothingIsRemovedWhileNothingIsKnownOfTheSessions) {
    putStatus("a", limits, 100'000);
    start();
    monitor->refresh();
    EXPECT_TRUE(hasStatus("a"));
    EXPECT_TRUE(monitor->limits());
}

TEST_F(ClaudeUsageMonitorTest, AReadingIsStaleAfterAQuarterOfAnHour) {
    putStatus("a", limits);
    start();
    monitor->refresh();
    world.pass(900);
    EXPECT_FALSE(monitor->isStale(*monitor->limits()));
    EXPECT_FALSE(monitor->usage().limitsStale);
    world.pass(0.5);
    EXPECT_TRUE(monitor->isStale(*monitor->limits()));
    EXPECT_TRUE(monitor->usage().limitsStale);
}

TEST_F(ClaudeUsageMonitorTest, NothingIsCountedBeforeTheFirstReadHasEnded) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    start();
    monitor->refresh();
    monitor->loadToday();
    monitor->refresh();
    EXPECT_EQ(output(), 0);
    world.time.runBackground();
    monitor->refresh();
    EXPECT_EQ(output(), 0);
    world.time.runBackground();
    EXPECT_EQ(output(), 5);
    EXPECT_EQ(changes, 1);
}

TEST_F(ClaudeUsageMonitorTest, FollowsWhatIsAppended) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    startAndLoad();
    world.append("p/a.jsonl", usageLine("n", 7, today));
    world.pass(0.1);
    EXPECT_EQ(output(), 12);
    world.append("p/a.jsonl", usageLine("n", 6, today) + R"({"type":"assistant)");
    monitor->refresh();
    EXPECT_EQ(output(), 11);
    EXPECT_EQ(monitor->usage().today, 11);
}

TEST_F(ClaudeUsageMonitorTest, FollowsFilesAndFoldersThatAreNew) {
    startAndLoad();
    world.append("p/a.jsonl", usageLine("m", 5, today));
    settle();
    EXPECT_EQ(output(), 5);
    world.append("p/s/subagents/agent-1.jsonl", usageLine("n", 7, today));
    world.append("p/b.jsonl", usageLine("o", 20, today));
    world.pass(0.1);
    world.time.runBackground();
    world.pass(0.1);
    world.time.runBackground();
    EXPECT_EQ(output(), 32);
}

TEST_F(ClaudeUsageMonitorTest, ANewFileIsFollowedFromItsFirstReadOn) {
    startAndLoad();
    world.append("p/a.jsonl", usageLine("m", 5, today));
    settle();
    world.append("p/b.jsonl", usageLine("n", 7, today));
    monitor->refresh();
    // Its first read is under way, and the file grows meanwhile.
    world.append("p/b.jsonl", usageLine("o", 9, today));
    monitor->refresh();
    EXPECT_EQ(output(), 5);
    world.time.runBackground();
    world.append("p/b.jsonl", usageLine("q", 100, today));
    world.pass(0.1);
    EXPECT_EQ(output(), 121);
}

TEST_F(ClaudeUsageMonitorTest, ADayChangeBeginsAtZeroAndReadsNothingAgain) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    startAndLoad();
    world.pass(86'400);
    monitor->refresh();
    EXPECT_EQ(output(), 0);
    world.append("p/a.jsonl", usageLine("n", 7, "2027-01-16T08:00:00Z"));
    settle();
    EXPECT_EQ(output(), 7);
}

TEST_F(ClaudeUsageMonitorTest, ADayEndsWhenThePlacesClocksSaySo) {
    struct Case {
        const char* zone;
        std::string_view lastOfDay;
        std::string_view firstOfNext;
    };
    for (const Case& each : {
             Case{"America/Los_Angeles", "2027-01-15T23:59:59-08:00", "2027-01-16T00:00:00-08:00"},
             Case{"Asia/Kolkata", "2027-01-15T23:59:59+05:30", "2027-01-16T00:00:00+05:30"},
             Case{"Europe/Berlin", "2027-03-28T23:59:59+02:00", "2027-03-29T00:00:00+02:00"}, // 23 hours
             Case{"Europe/Berlin", "2027-10-31T23:59:59+01:00", "2027-11-01T00:00:00+01:00"}, // 25 hours
         }) {
        const Timestamp last = Iso8601::parse(each.lastOfDay).value();
        TranscriptWorld place;
        place.time.setClock(last - 3600);
        place.files.clock = place.time.now();
        place.append("p/a.jsonl", usageLine("m", 5, std::string(each.lastOfDay)) +
                                      usageLine("n", 70, std::string(each.firstOfNext)));
        const SupportDirectory folder(place.files, supportPath, supportPath);
        ClaudeUsageMonitor local(place.seams(), folder, TranscriptWorld::folder,
                                 std::make_shared<LocalCalendar>(QTimeZone(each.zone)),
                                 [] { return std::nullopt; });
        local.loadToday();
        place.time.runBackground();
        place.time.runBackground();
        EXPECT_EQ(local.today().output, 5) << each.zone;
        place.pass(3600);
        local.refresh();
        EXPECT_EQ(local.today().output, 5) << each.zone;
        place.pass(1);
        local.refresh();
        EXPECT_EQ(local.today().output, 0) << each.zone;
    }
}

TEST_F(ClaudeUsageMonitorTest, ARefreshWithNothingNewLooksAtNoTranscript) {
    for (int number = 0; number < 50; ++number) {
        world.append("p" + std::to_string(number) + "/a.jsonl",
                     usageLine("m" + std::to_string(number), 1, today));
    }
    startAndLoad();
    EXPECT_EQ(output(), 50);
    const int before = files.operations();
    monitor->refresh();
    // The support folder, in which there is none of status files.
    EXPECT_EQ(files.operations() - before, 1);
    EXPECT_EQ(world.time.pendingBackground(), 0U);
}

TEST_F(ClaudeUsageMonitorTest, AFolderThatIsNotThereCostsNoWork) {
    startAndLoad();
    monitor->refresh();
    EXPECT_EQ(world.time.pendingBackground(), 0U);
    EXPECT_EQ(world.time.pending(), 0U);
}

TEST_F(ClaudeUsageMonitorTest, WhereWatchesRanOutEachRefreshLooksOnce) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    world.watcher.refused = {TranscriptWorld::path("p")};
    startAndLoad();
    world.append("p/a.jsonl", usageLine("n", 7, today));
    monitor->refresh();
    EXPECT_EQ(world.time.runBackground(), 1U);
    world.pass(0.1);
    EXPECT_EQ(output(), 12);
    // What it found makes no further look.
    EXPECT_EQ(world.time.pendingBackground(), 0U);
    EXPECT_EQ(world.time.pending(), 0U);
}

TEST_F(ClaudeUsageMonitorTest, WhatCannotBeOpenedIsTriedAgainAtTheNextRefreshAndNotBefore) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    startAndLoad();
    ASSERT_FALSE(world.files.setMode(TranscriptWorld::path("p/a.jsonl"), 0));
    world.append("p/a.jsonl", usageLine("n", 7, today));
    world.pass(0.1);
    EXPECT_EQ(world.time.pending(), 0U);
    EXPECT_EQ(output(), 5);
    ASSERT_FALSE(world.files.setMode(TranscriptWorld::path("p/a.jsonl"), 0600));
    monitor->refresh();
    EXPECT_EQ(output(), 12);
}

TEST_F(ClaudeUsageMonitorTest, LargeGrowthIsReadInTheBackground) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    startAndLoad();
    world.append("p/a.jsonl", std::string(std::size_t{2} << 20, 'x') + "\n" + usageLine("n", 7, today));
    monitor->refresh();
    EXPECT_EQ(output(), 5);
    EXPECT_GT(world.time.runBackground(), 0U);
    EXPECT_EQ(output(), 12);
}

// Lines of the new day that a read of the old day's passed over.
TEST_F(ClaudeUsageMonitorTest, AReadOverMidnightLosesNothing) {
    startAndLoad();
    world.append("p/z.jsonl", "\n");
    settle();
    world.append("p/a.jsonl",
                 usageLine("m", 5, "2027-01-15T23:59:59Z") + usageLine("n", 7, "2027-01-16T00:00:01Z"));
    monitor->refresh();
    ASSERT_GT(world.time.pendingBackground(), 0U);
    world.pass(16.0 * 3600 + 10);
    world.touch("p/a.jsonl");
    world.time.runBackground();
    settle();
    EXPECT_EQ(output(), 7);
}

TEST_F(ClaudeUsageMonitorTest, AClockSetBackToYesterdayCountsYesterdaysFilesAgain) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    world.pass(86'400);
    startAndLoad();
    EXPECT_EQ(output(), 0);
    world.time.setClock(world.time.now() - 86'400);
    settle();
    EXPECT_EQ(output(), 5);
}

TEST_F(ClaudeUsageMonitorTest, EndingItWhileItReadsIsSafe) {
    world.append("p/a.jsonl", usageLine("m", 5, today));
    start();
    monitor->loadToday();
    world.time.runBackground();
    ASSERT_GT(world.time.pendingBackground(), 0U);
    monitor.reset();
    world.time.runBackground();
    world.pass(10);
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace veslora
