// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/UpgradeWatch.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LogRecorder;

constexpr auto folder = "/usr/lib/veslora";
constexpr auto program = "/usr/lib/veslora/veslora";

class UpgradeWatchTests : public ::testing::Test {
  protected:
    FakePlatform machine;
    bool isAtRest = true;
    int takeovers = 0;
    UpgradeWatch watch{{machine.time, machine.disk, machine.watches, machine.programs},
                       program,
                       {[this] { return isAtRest; }, [this] { ++takeovers; }}};

    UpgradeWatchTests() {
        install("old");
        watch.follow();
    }

    /// As an installer does: beside it, then renamed.
    void put(const std::string& bytes) {
        machine.disk.put("/usr/lib/veslora/veslora.new", bytes, 0755);
        machine.disk.giveAway("/usr/lib/veslora/veslora.new");
        machine.disk.move("/usr/lib/veslora/veslora.new", program);
    }
    /// The same, with the word of it.
    void install(const std::string& bytes) {
        put(bytes);
        machine.watches.fire(folder);
    }
    void answerTrial(bool isDone) {
        machine.programs.end(machine.programs.runs.size() - 1, {isDone, isDone ? "Veslora 0.2.0\n" : ""});
    }
    [[nodiscard]] std::size_t trials() const { return machine.programs.runs.size(); }
};

TEST_F(UpgradeWatchTests, LetsTheNewProgramTakeOverOnceItHasTriedIt) {
    install("new");
    machine.advance(UpgradeWatch::settling - 1);
    EXPECT_EQ(trials(), 0U) << "the installer is given time";
    machine.advance(1);
    ASSERT_EQ(trials(), 1U);
    EXPECT_EQ(machine.programs.runs.front().arguments, (std::vector<std::string>{program, "--version"}));
    EXPECT_EQ(takeovers, 0);
    answerTrial(true);
    EXPECT_EQ(takeovers, 1);
    machine.advance(10 * UpgradeWatch::patience);
    machine.watches.fire(folder);
    machine.advance(10 * UpgradeWatch::patience);
    EXPECT_EQ(takeovers, 1);
    EXPECT_EQ(trials(), 1U);
}

TEST_F(UpgradeWatchTests, WaitsUntilNothingGoesOn) {
    isAtRest = false;
    install("new");
    machine.advance(100 * UpgradeWatch::settling);
    EXPECT_EQ(trials(), 0U);
    isAtRest = true;
    machine.advance(UpgradeWatch::settling);
    ASSERT_EQ(trials(), 1U);
    // A prompt comes while the new program is tried.
    isAtRest = false;
    answerTrial(true);
    EXPECT_EQ(takeovers, 0);
    isAtRest = true;
    machine.advance(UpgradeWatch::settling);
    ASSERT_EQ(trials(), 2U);
    answerTrial(true);
    EXPECT_EQ(takeovers, 1);
}

TEST_F(UpgradeWatchTests, AProgramThatDoesNotStartDoesNotTakeOver) {
    install("broken");
    machine.advance(UpgradeWatch::settling);
    const LogRecorder log;
    answerTrial(false);
    EXPECT_EQ(takeovers, 0);
    EXPECT_THAT(log.warnings(), ElementsAre(Field(&LogRecorder::Line::text, HasSubstr("does not start"))));
    machine.advance(UpgradeWatch::patience - 1);
    EXPECT_EQ(trials(), 1U);
    machine.advance(1);
    ASSERT_EQ(trials(), 2U);
    answerTrial(true);
    EXPECT_EQ(takeovers, 1);
}

TEST_F(UpgradeWatchTests, AnUpgradeOfTheUpgradeBeginsAnew) {
    install("new");
    machine.advance(UpgradeWatch::settling);
    install("newer");
    EXPECT_FALSE(machine.programs.isAwaited(0)) << "the trial of what is gone is given up";
    machine.advance(UpgradeWatch::settling - 1);
    EXPECT_EQ(trials(), 1U);
    machine.advance(1);
    answerTrial(true);
    EXPECT_EQ(takeovers, 1);
}

TEST_F(UpgradeWatchTests, WhatWasReplacedDuringItsTrialIsTriedAgainSoon) {
    for (const bool isDone : {true, false}) {
        install("new");
        machine.advance(UpgradeWatch::settling);
        const std::size_t before = trials();
        const LogRecorder log;
        // The word of it is still on its way.
        put("newer");
        answerTrial(isDone);
        EXPECT_EQ(takeovers, 0) << "what has answered is not what lies there";
        EXPECT_THAT(log.warnings(), IsEmpty()) << "nor does its failure say anything of that";
        machine.advance(UpgradeWatch::settling - 1);
        EXPECT_EQ(trials(), before);
        machine.advance(1);
        EXPECT_EQ(trials(), before + 1);
        answerTrial(false);
    }
    machine.advance(UpgradeWatch::patience);
    answerTrial(true);
    EXPECT_EQ(takeovers, 1);
}

TEST_F(UpgradeWatchTests, WhatWasRemovedDuringItsTrialIsNoFailure) {
    install("new");
    machine.advance(UpgradeWatch::settling);
    const LogRecorder log;
    machine.disk.remove(program);
    answerTrial(false);
    machine.advance(10 * UpgradeWatch::patience);
    EXPECT_EQ(trials(), 1U);
    EXPECT_EQ(machine.time.pending(), 0U);
    EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(UpgradeWatchTests, GoesOnAfterARemoval) {
    machine.disk.remove(program);
    machine.watches.fire(folder);
    machine.advance(UpgradeWatch::patience);
    EXPECT_EQ(machine.time.pending(), 0U);
    EXPECT_EQ(trials(), 0U);

    install("new");
    machine.disk.remove(program);
    machine.advance(UpgradeWatch::patience);
    EXPECT_EQ(trials(), 0U) << "removed before it was tried";
}

TEST_F(UpgradeWatchTests, OtherFilesInTheFolderAreNoUpgrade) {
    machine.disk.put("/usr/lib/veslora/veslora-media-adapter", "new", 0755);
    machine.watches.fire(folder);
    EXPECT_EQ(machine.time.pending(), 0U);
}

TEST_F(UpgradeWatchTests, AProgramOfOnesOwnIsLeftAlone) {
    FakePlatform other;
    other.disk.put(program, "built here", 0755);
    UpgradeWatch own({other.time, other.disk, other.watches, other.programs}, program,
                     {[] { return true; }, [] { FAIL(); }});
    own.follow();
    EXPECT_TRUE(other.watches.watched().empty());
}

TEST_F(UpgradeWatchTests, AFolderThatCantBeWatchedIsLeftAlone) {
    FakePlatform other;
    other.disk.put(program, "installed", 0755);
    other.disk.giveAway(program);
    other.watches.refused.insert(folder);
    UpgradeWatch blind({other.time, other.disk, other.watches, other.programs}, program,
                       {[] { return true; }, [] { FAIL(); }});
    blind.follow();
    EXPECT_EQ(other.time.pending(), 0U);
}

} // namespace
} // namespace veslora
