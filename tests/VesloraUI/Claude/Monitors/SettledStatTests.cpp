// SPDX-License-Identifier: MIT
// What a file's stat alone tells of it, and the folders of small files that rely on that.
#include "VesloraUI/Claude/Monitors/ClaudeSessionDirectory.h"
#include "VesloraUI/Claude/Monitors/ClaudeStatusDirectory.h"
#include "VesloraUI/Claude/Monitors/SettledStat.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

constexpr Timestamp now = 1'800'000'000;

FileStat statOf(Timestamp modified) {
    return {.device = 1,
            .inode = 2,
            .size = 3,
            .modified = modified,
            .modifiedNanoseconds = static_cast<std::int64_t>(modified) * 1'000'000'000,
            .mode = 0600,
            .isRegular = true,
            .isOurs = true};
}

TEST(SettledStat, NothingIsKnownOfAFileThatWasNeverRead) {
    const SettledStat stat;
    EXPECT_FALSE(stat.isSame(statOf(now - 60)));
    EXPECT_FALSE(stat.isSame({}));
}

TEST(SettledStat, AFileAtRestIsTheSame) {
    SettledStat stat;
    stat.remember(statOf(now - 60), now);
    EXPECT_TRUE(stat.isSame(statOf(now - 60)));
}

TEST(SettledStat, AnyDifferenceMakesItAnother) {
    const FileStat known = statOf(now - 60);
    SettledStat stat;
    stat.remember(known, now);
    const std::vector<void (*)(FileStat&)> differences{
        [](FileStat& other) { ++other.device; },    [](FileStat& other) { ++other.inode; },
        [](FileStat& other) { ++other.size; },      [](FileStat& other) { ++other.modifiedNanoseconds; },
        [](FileStat& other) { other.mode = 0644; }, [](FileStat& other) { other.isOurs = false; },
    };
    for (std::size_t i = 0; i < differences.size(); ++i) {
        FileStat other = known;
        differences[i](other);
        EXPECT_FALSE(stat.isSame(other)) << i;
    }
}

TEST(SettledStat, AFreshFileTellsNothingUntilItHasRested) {
    SettledStat stat;
    const FileStat fresh = statOf(now);
    for (const double age : {0.0, 0.5, SettledStat::settlingTime}) {
        stat.remember(fresh, now + age);
        EXPECT_FALSE(stat.isSame(fresh)) << age;
    }
    stat.remember(fresh, now + SettledStat::settlingTime + 0.001);
    EXPECT_TRUE(stat.isSame(fresh));
}

TEST(SettledStat, AFreshReadTakesBackWhatWasKnown) {
    SettledStat stat;
    stat.remember(statOf(now - 60), now);
    stat.remember(statOf(now), now);
    EXPECT_FALSE(stat.isSame(statOf(now - 60)));
}

TEST(SettledStat, AStampOfTheFutureIsNeverAtRest) {
    SettledStat stat;
    stat.remember(statOf(now + 3600), now);
    EXPECT_FALSE(stat.isSame(statOf(now + 3600)));
}

/// A folder of such files, on a disk on which reads can fail.
class SettledFilesTest : public testing::Test {
  protected:
    void put(const std::string& text) {
        disk.put("/files/1.json", text);
        disk.put("/support/statusline/1.json", text);
    }

    /// How often the file is read while `look` is called that often.
    template <class Look>
    int readsOf(Look look, int times) {
        const int before = disk.reads();
        for (int i = 0; i < times; ++i) {
            look();
        }
        return disk.reads() - before;
    }

    MemoryFiles disk;
    FaultInjectingFiles files{disk};
    SupportDirectory support{files, "/support", "/support"};
};

TEST_F(SettledFilesTest, ASessionIsReadOnceAndOnceMoreWhenItChanges) {
    ClaudeSessionDirectory sessions(files, "/files");
    put(R"({"sessionId":"s1","pid":10})");
    const auto look = [&] { EXPECT_THAT(sessions.read(now + 60), SizeIs(1)); };
    EXPECT_EQ(readsOf(look, 3), 1);
    disk.clock = now + 1;
    disk.rewrite("/files/1.json", R"({"sessionId":"s2","pid":10})");
    EXPECT_EQ(readsOf(look, 3), 1);
    EXPECT_EQ(sessions.read(now + 60).front().sessionId, "s2");
}

TEST_F(SettledFilesTest, AStatusIsReadOnceAndOnceMoreWhenItChanges) {
    ClaudeStatusDirectory statuses(support);
    put(R"({"session_id":"s1"})");
    const auto look = [&] { EXPECT_THAT(statuses.read(now + 60, std::nullopt), SizeIs(1)); };
    EXPECT_EQ(readsOf(look, 3), 1);
    disk.clock = now + 1;
    disk.rewrite("/support/statusline/1.json", R"({"session_id":"s2"})");
    EXPECT_EQ(readsOf(look, 3), 1);
    EXPECT_EQ(statuses.read(now + 60, std::nullopt).front().sessionId, "s2");
}

TEST_F(SettledFilesTest, AReadThatFailedIsTriedAgain) {
    ClaudeSessionDirectory sessions(files, "/files");
    ClaudeStatusDirectory statuses(support);
    put(R"({"sessionId":"s1","session_id":"s1","pid":10})");
    files.readError = std::errc::too_many_files_open;
    EXPECT_THAT(sessions.read(now + 60), IsEmpty());
    EXPECT_THAT(statuses.read(now + 60, std::nullopt), IsEmpty());
    files.readError.reset();
    EXPECT_THAT(sessions.read(now + 62), SizeIs(1));
    EXPECT_THAT(statuses.read(now + 62, std::nullopt), SizeIs(1));
}

} // namespace
} // namespace veslora
