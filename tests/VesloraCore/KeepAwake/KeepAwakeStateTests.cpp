// SPDX-License-Identifier: MIT
#include "VesloraCore/KeepAwake/KeepAwakeState.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

constexpr Timestamp now = 5000;

KeepAwakeState timed(double seconds) {
    KeepAwakeState state;
    state.start(seconds, now);
    return state;
}

std::optional<double> adjusted(double secondsLeft, int steps) {
    KeepAwakeState state;
    state.endsAt = now + secondsLeft;
    state.adjust(steps, now);
    return state.remaining(now);
}

constexpr KeepAwakeHold manual(bool display) {
    return {display, KeepAwakeHold::Reason::manual};
}
constexpr KeepAwakeHold forClaude{false, KeepAwakeHold::Reason::claude};

} // namespace

TEST(KeepAwakeState, BeginsOff) {
    const KeepAwakeState state;
    EXPECT_FALSE(state.isManualActive(now));
    EXPECT_EQ(state.remaining(now), std::nullopt);
    EXPECT_EQ(state.hold(now), std::nullopt);
}

TEST(KeepAwakeState, OffersThreeLengthsAndNoEnd) {
    const std::array<std::optional<double>, 4> expected{1800.0, 3600.0, 7200.0, std::nullopt};
    EXPECT_EQ(KeepAwakeState::presets, expected);
}

TEST(KeepAwakeState, TimedSessionIsHeldToOneSecondUpToTwelveHours) {
    EXPECT_EQ(timed(1800).endsAt, now + 1800);
    EXPECT_EQ(timed(0).endsAt, now + 1);
    EXPECT_EQ(timed(-60).endsAt, now + 1);
    EXPECT_EQ(timed(100'000).endsAt, now + 43'200);
}

TEST(KeepAwakeState, NewSessionReplacesTheOldOne) {
    KeepAwakeState state = timed(1800);
    state.start(std::nullopt, now);
    EXPECT_TRUE(state.isIndefinite);
    EXPECT_EQ(state.endsAt, std::nullopt);
    state.start(60, now);
    EXPECT_FALSE(state.isIndefinite);
    EXPECT_EQ(state.endsAt, now + 60);
}

TEST(KeepAwakeState, StopEndsEitherKind) {
    KeepAwakeState state = timed(1800);
    state.stop();
    EXPECT_EQ(state, KeepAwakeState{});
    state.start(std::nullopt, now);
    state.stop();
    EXPECT_EQ(state, KeepAwakeState{});
}

TEST(KeepAwakeState, SessionIsOverAtItsEndBeforeAnybodyClearsIt) {
    const KeepAwakeState state = timed(10);
    EXPECT_TRUE(state.isManualActive(now + 9.9));
    EXPECT_FALSE(state.isManualActive(now + 10));
    EXPECT_EQ(state.remaining(now + 10), std::nullopt);
    EXPECT_EQ(state.hold(now + 10), std::nullopt);
}

TEST(KeepAwakeState, RemainingIsWholeSecondsAndAtLeastOne) {
    EXPECT_EQ(timed(10).remaining(now + 0.4), 10);
    EXPECT_EQ(timed(10).remaining(now + 0.6), 9);
    EXPECT_EQ(timed(10).remaining(now + 9.6), 1) << "Four tenths of a second left.";
    KeepAwakeState indefinite;
    indefinite.start(std::nullopt, now);
    EXPECT_EQ(indefinite.remaining(now), std::nullopt);
}

TEST(KeepAwakeState, AdjustSnapsToTheNearestQuarterOfAnHour) {
    EXPECT_EQ(adjusted(29 * 60 + 40, 1), 45 * 60);
    EXPECT_EQ(adjusted(29 * 60 + 40, -1), 15 * 60);
    EXPECT_EQ(adjusted(60 * 60, 2), 90 * 60);
    EXPECT_EQ(adjusted(7 * 60 + 30, 0), 15 * 60) << "Halves are rounded away from nothing.";
}

TEST(KeepAwakeState, AdjustStaysWithinAQuarterAndTwelveHours) {
    EXPECT_EQ(adjusted(10 * 60, -1), 15 * 60);
    EXPECT_EQ(adjusted(10 * 60, -100), 15 * 60);
    EXPECT_EQ(adjusted(11 * 3600 + 55 * 60, 1), 12 * 3600);
    EXPECT_EQ(adjusted(60, 2'000'000'000), 12 * 3600);
}

TEST(KeepAwakeState, AdjustLeavesEverythingElseAlone) {
    KeepAwakeState indefinite;
    indefinite.start(std::nullopt, now);
    const KeepAwakeState before = indefinite;
    indefinite.adjust(1, now);
    EXPECT_EQ(indefinite, before);

    KeepAwakeState over = timed(10);
    over.adjust(1, now + 10);
    EXPECT_EQ(over, timed(10));

    KeepAwakeState off;
    off.adjust(1, now);
    EXPECT_EQ(off, KeepAwakeState{});
}

TEST(KeepAwakeState, UsersSessionComesBeforeTheAgents) {
    KeepAwakeState state = timed(10);
    state.keepsDisplayOn = true;
    state.whileClaudeWorks = true;
    state.claudeIsWorking = true;
    EXPECT_EQ(state.hold(now), manual(true));
    EXPECT_EQ(state.hold(now + 10), forClaude) << "An agent never keeps the display on.";
    state.keepsDisplayOn = false;
    EXPECT_EQ(state.hold(now), manual(false));
}

TEST(KeepAwakeState, AgentHoldsOnlyWhileItWorksAndTheUserWantsIt) {
    KeepAwakeState state;
    state.claudeIsWorking = true;
    EXPECT_EQ(state.hold(now), std::nullopt);
    state.whileClaudeWorks = true;
    EXPECT_EQ(state.hold(now), forClaude);
    state.claudeIsWorking = false;
    EXPECT_EQ(state.hold(now), std::nullopt);
}
