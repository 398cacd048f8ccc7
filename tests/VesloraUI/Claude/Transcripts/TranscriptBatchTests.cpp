// SPDX-License-Identifier: MIT
// Transcripts read by two threads, whose work is done here one after the other or in the other order.
#include "VesloraUI/Claude/Transcripts/TranscriptBatch.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::LogRecorder;
using ::testing::SizeIs;

/// Holds the lines that it was given, in their order.
struct Lines {
    std::vector<std::string> lines;

    void add(std::string_view line) { lines.emplace_back(line); }
    [[nodiscard]] bool merge(Lines&& later) {
        std::ranges::move(later.lines, std::back_inserter(lines));
        return true;
    }
};

using Batch = TranscriptBatch<Lines>;

/// Background work that a test does in whatever order it likes.
class PickingScheduler final : public Scheduler {
  public:
    struct Work {
        std::function<void()> work;
        std::shared_ptr<TaskState> then;
    };
    std::vector<Work> works;

    [[nodiscard]] Timestamp now() const override { return m_time.now(); }
    [[nodiscard]] double steadyNow() const override { return m_time.steadyNow(); }
    [[nodiscard]] Task after(double seconds, std::function<void()> run) override {
        return m_time.after(seconds, std::move(run));
    }
    [[nodiscard]] Task at(Timestamp date, std::function<void()> run) override {
        return m_time.at(date, std::move(run));
    }
    [[nodiscard]] Task every(double seconds, Precision precision, std::function<void()> run) override {
        return m_time.every(seconds, precision, std::move(run));
    }
    [[nodiscard]] Task background(std::function<void()> work, std::function<void()> then) override {
        works.push_back({std::move(work), std::make_shared<TaskState>(TaskState{std::move(then)})});
        return Task(works.back().then);
    }
    [[nodiscard]] Task concurrently(std::function<void()> work, std::function<void()> then) override {
        return background(std::move(work), std::move(then));
    }

    void read(std::size_t index) const { works.at(index).work(); }
    /// What follows a piece of work on the main thread, unless it was cancelled.
    void follow(std::size_t index) const {
        if (const auto run = std::exchange(works.at(index).then->run, nullptr)) {
            run();
        }
    }

  private:
    ManualScheduler m_time;
};

class TranscriptBatchTest : public ::testing::Test {
  protected:
    static constexpr auto folder = "/home/me/transcripts/";

    [[nodiscard]] Batch::File file(const std::string& name, const std::string& bytes) {
        const std::string path = folder + name;
        disk.put(path, bytes);
        return {path, static_cast<std::int64_t>(bytes.size()), std::nullopt};
    }
    void start(std::vector<Batch::File> transcripts) {
        batch = std::make_unique<Batch>(time, files, markers, std::move(transcripts), Lines(),
                                        [this](Batch::Outcome outcome) {
                                            outcomes.push_back(std::move(outcome));
                                            batch.reset();
                                        });
    }
    void finishReading() {
        for (std::size_t index = 0; index < time.works.size(); ++index) {
            time.read(index);
        }
        for (std::size_t index = 0; index < time.works.size(); ++index) {
            time.follow(index);
        }
    }

    const std::vector<std::string_view> markers{"count"};
    PickingScheduler time;
    MemoryFiles disk;
    FaultInjectingFiles files{disk};
    std::unique_ptr<Batch> batch;
    std::vector<Batch::Outcome> outcomes;
};

TEST_F(TranscriptBatchTest, TwoThreadsShareTheBytesAndKeepTheOrderOfTheFiles) {
    start({file("a", "count 1\n"), file("b", "count 2\n"), file("c", "count 3\n"), file("d", "count 4\n")});
    ASSERT_THAT(time.works, SizeIs(2));
    EXPECT_THAT(outcomes, IsEmpty()) << "never within the call that begins it";
    time.read(1);
    time.follow(1);
    EXPECT_THAT(outcomes, IsEmpty()) << "the first half is not read yet";
    time.read(0);
    time.follow(0);
    ASSERT_THAT(outcomes, SizeIs(1));
    EXPECT_THAT(outcomes[0].tally.lines, ElementsAre("count 1", "count 2", "count 3", "count 4"));
    EXPECT_THAT(outcomes[0].positions, SizeIs(4));
}

TEST_F(TranscriptBatchTest, HowManyWereReadIsToldWithoutTheirNames) {
    const LogRecorder recorder;
    start({file("heliotrope", "count 1\n"), {std::string(folder) + "heliotrope 2", 1, std::nullopt}});
    finishReading();
    EXPECT_THAT(recorder.lines(),
                ElementsAre(LogRecorder::Line{QtInfoMsg, "veslora.transcripts",
                                              "read 1 transcripts, and 1 could not be opened"}));
    start({file("heliotrope", "count 1\n")});
    finishReading();
    EXPECT_THAT(recorder.lines(), SizeIs(1)) << "a single one that was read is worth no line";
}

TEST_F(TranscriptBatchTest, OneLargeFileLeavesTheOthersToTheSecondThread) {
    start({file("a", std::string(100, ' ') + "count 1\n"), file("b", "count 2\n")});
    ASSERT_THAT(time.works, SizeIs(2));
    time.read(0);
    time.read(1);
    time.follow(1);
    time.follow(0);
    EXPECT_THAT(outcomes, SizeIs(1)) << "told once, though both threads have ended";
}

TEST_F(TranscriptBatchTest, ASingleFileTakesOneThread) {
    start({file("a", "count 1\nother\n")});
    EXPECT_THAT(time.works, SizeIs(1));
    finishReading();
    ASSERT_THAT(outcomes, SizeIs(1));
    EXPECT_THAT(outcomes[0].tally.lines, ElementsAre("count 1"));
}

TEST_F(TranscriptBatchTest, GoesOnWhereAFileWasReadBefore) {
    Batch::File known = file("a", "count 1\ncount 2\n");
    known.from = TranscriptPosition{8, disk.stat(known.path, Links::refuse)->inode};
    start({known});
    finishReading();
    ASSERT_THAT(outcomes, SizeIs(1));
    EXPECT_THAT(outcomes[0].tally.lines, ElementsAre("count 2"));
    EXPECT_EQ(outcomes[0].positions.at(known.path)->offset, 16U);
}

TEST_F(TranscriptBatchTest, AFileThatCannotBeOpenedHasNoPositionAndHoldsNothingUp) {
    start({{std::string(folder) + "gone", 50, std::nullopt}, file("b", "count 2\n")});
    finishReading();
    ASSERT_THAT(outcomes, SizeIs(1));
    EXPECT_FALSE(outcomes[0].positions.at(std::string(folder) + "gone"));
    EXPECT_TRUE(outcomes[0].positions.at(std::string(folder) + "b"));
    EXPECT_THAT(outcomes[0].tally.lines, ElementsAre("count 2"));
}

TEST_F(TranscriptBatchTest, WhatIsCancelledReadsNoFurtherFileAndTellsNobody) {
    start({file("a", "count 1\n"), file("b", "count 2\n")});
    batch.reset();
    const int before = files.operations();
    finishReading();
    EXPECT_EQ(files.operations(), before);
    EXPECT_THAT(outcomes, IsEmpty());
}

} // namespace
} // namespace veslora
