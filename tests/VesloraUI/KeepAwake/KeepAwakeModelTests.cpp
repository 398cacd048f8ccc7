// SPDX-License-Identifier: MIT
#include "VesloraUI/KeepAwake/KeepAwakeModel.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

constexpr double minute = 60;
constexpr double hour = 60 * minute;

constexpr KeepAwakeHold manual(bool display) {
    return {display, KeepAwakeHold::Reason::manual};
}
constexpr KeepAwakeHold forClaude{false, KeepAwakeHold::Reason::claude};

class KeepAwakeModelTest : public testing::Test {
  protected:
    KeepAwakeModelTest() { listen(model); }

    void listen(KeepAwakeModel& to) {
        to.onChange = [this] { ++changes; };
    }
    [[nodiscard]] const std::vector<std::optional<KeepAwakeHold>>& applied() const {
        return platform.energy.applied;
    }

    FakePlatform platform;
    FakeDefaults settings{platform};
    KeepAwakeModel model{settings, platform.energy, platform.time};
    int changes = 0;
};

TEST_F(KeepAwakeModelTest, BeginsOffWithTheWishesOfTheSettings) {
    EXPECT_FALSE(model.isOn());
    EXPECT_EQ(model.hold(), std::nullopt);
    EXPECT_FALSE(model.state().keepsDisplayOn);
    EXPECT_TRUE(model.state().whileClaudeWorks);
    EXPECT_THAT(applied(), IsEmpty());
    EXPECT_EQ(platform.time.pending(), 0u) << "nothing ticks";
    settings.set(SettingsKeys::keepAwakeDisplay, true);
    settings.set(SettingsKeys::keepAwakeWhileClaude, false);
    const KeepAwakeModel other(settings, platform.energy, platform.time);
    EXPECT_TRUE(other.state().keepsDisplayOn);
    EXPECT_FALSE(other.state().whileClaudeWorks);
}

TEST_F(KeepAwakeModelTest, ATimedSessionEndsByItself) {
    model.start(3.0);
    EXPECT_TRUE(model.isOn());
    EXPECT_THAT(model.remaining(), Optional(3));
    EXPECT_THAT(model.end(), Optional(platform.time.now() + 3));
    platform.advance(2);
    EXPECT_THAT(model.remaining(), Optional(1));
    EXPECT_THAT(applied(), ElementsAre(manual(false)));
    platform.advance(1);
    EXPECT_FALSE(model.isOn());
    EXPECT_EQ(model.state().endsAt, std::nullopt);
    EXPECT_EQ(model.end(), std::nullopt);
    EXPECT_THAT(applied(), ElementsAre(manual(false), std::nullopt));
    EXPECT_EQ(platform.time.pending(), 0u) << "the tick rests";
}

TEST_F(KeepAwakeModelTest, OfferedLengthsAreHeldToOneSecondUpToTwelveHours) {
    for (const auto& [asked, given] : {std::pair(0.0, 1.0), {-60.0, 1.0}, {100'000.0, 43'200.0}}) {
        model.start(asked);
        EXPECT_THAT(model.remaining(), Optional(given)) << asked;
    }
}

TEST_F(KeepAwakeModelTest, ASessionWithoutAnEndRunsUntilStopped) {
    model.start(std::nullopt);
    platform.advance(100 * hour);
    EXPECT_TRUE(model.isOn());
    EXPECT_EQ(model.remaining(), std::nullopt);
    EXPECT_EQ(model.end(), std::nullopt);
    model.stop();
    EXPECT_FALSE(model.isOn());
    EXPECT_THAT(applied(), ElementsAre(manual(false), std::nullopt));
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(KeepAwakeModelTest, ANewChoiceReplacesTheOldOneAndItsTick) {
    model.start(10.0);
    model.start(std::nullopt);
    EXPECT_EQ(platform.time.pending(), 1u);
    platform.advance(20);
    EXPECT_TRUE(model.isOn());
    model.start(1800.0);
    EXPECT_FALSE(model.state().isIndefinite);
    EXPECT_EQ(platform.time.pending(), 1u);
    EXPECT_THAT(applied(), ElementsAre(manual(false))) << "the same is held throughout";
}

TEST_F(KeepAwakeModelTest, TellsOfEverySecondOfASessionAndOfNoneAfterwards) {
    model.start(3.0);
    EXPECT_EQ(changes, 1);
    platform.advance(2);
    EXPECT_EQ(changes, 3);
    platform.advance(1);
    EXPECT_EQ(changes, 4) << "the end";
    platform.advance(10);
    EXPECT_EQ(changes, 4);
    model.start(std::nullopt);
    platform.advance(5);
    EXPECT_EQ(changes, 10) << "a session without an end ticks too";
}

TEST_F(KeepAwakeModelTest, BetweenTwoTicksTheEndCountsAtOnceButTheHoldGoesAtTheTick) {
    platform.advance(0.5);
    model.start(1.2);
    platform.advance(1.3);
    EXPECT_FALSE(model.isOn());
    EXPECT_EQ(model.remaining(), std::nullopt);
    EXPECT_THAT(model.hold(), Optional(manual(false)));
    platform.advance(0.2);
    EXPECT_EQ(model.hold(), std::nullopt);
}

TEST_F(KeepAwakeModelTest, ASessionThatEndedDuringSuspensionEndsAtOnceOnResume) {
    model.start(30 * minute);
    platform.time.suspend(hour);
    platform.advance(0);
    EXPECT_FALSE(model.isOn());
    EXPECT_EQ(model.hold(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(KeepAwakeModelTest, ASessionThatOutlastsSuspensionGoesOn) {
    model.start(2 * hour);
    platform.time.suspend(hour);
    platform.advance(0);
    EXPECT_THAT(model.remaining(), Optional(hour));
    platform.advance(hour);
    EXPECT_EQ(model.hold(), std::nullopt);
}

TEST_F(KeepAwakeModelTest, AClockSetForwardEndsTheSessionAndOneSetBackProlongsIt) {
    model.start(30 * minute);
    const Timestamp begin = platform.time.now();
    platform.time.setClock(begin - hour);
    platform.advance(1);
    EXPECT_TRUE(model.isOn());
    EXPECT_THAT(model.remaining(), Optional(90 * minute - 1));
    platform.advance(90 * minute - 1);
    EXPECT_EQ(model.hold(), std::nullopt);

    model.start(30 * minute);
    platform.time.setClock(platform.time.now() + hour);
    platform.advance(1);
    EXPECT_FALSE(model.isOn());
    EXPECT_EQ(model.hold(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(KeepAwakeModelTest, ClockSetToAnotherAgeStrandsNothing) {
    model.start(30 * minute);
    platform.time.setClock(0);
    platform.advance(1);
    EXPECT_TRUE(model.isOn());
    platform.time.setClock(4e9);
    platform.advance(1);
    EXPECT_EQ(model.hold(), std::nullopt);
}

TEST_F(KeepAwakeModelTest, AdjustMovesTheEndAndHoldsTheSame) {
    model.start(29 * minute + 40);
    model.adjust(1);
    EXPECT_THAT(model.remaining(), Optional(45 * minute));
    model.start(10 * minute);
    model.adjust(-1);
    EXPECT_THAT(model.remaining(), Optional(15 * minute));
    model.start(11 * hour + 55 * minute);
    model.adjust(1);
    EXPECT_THAT(model.remaining(), Optional(12 * hour));
    EXPECT_THAT(applied(), SizeIs(1));
    platform.advance(12 * hour);
    EXPECT_EQ(model.hold(), std::nullopt) << "the later end is kept";
}

TEST_F(KeepAwakeModelTest, AdjustDoesNothingWithoutATimedSession) {
    model.adjust(1);
    EXPECT_FALSE(model.isOn());
    model.start(std::nullopt);
    const KeepAwakeState before = model.state();
    model.adjust(1);
    EXPECT_EQ(model.state(), before);
    EXPECT_EQ(changes, 3) << "heard of each time all the same";
}

TEST_F(KeepAwakeModelTest, AnAgentAtWorkHoldsWithoutTheDisplay) {
    settings.set(SettingsKeys::keepAwakeDisplay, true);
    model.setClaudeIsWorking(true);
    EXPECT_THAT(applied(), ElementsAre(forClaude));
    EXPECT_FALSE(model.isOn());
    EXPECT_EQ(platform.time.pending(), 0u) << "an agent's hold needs no tick";
    changes = 0;
    model.setClaudeIsWorking(true);
    EXPECT_EQ(changes, 0) << "the same again is nothing";
    model.setClaudeIsWorking(false);
    EXPECT_THAT(applied(), ElementsAre(forClaude, std::nullopt));
    EXPECT_EQ(changes, 1);
}

TEST_F(KeepAwakeModelTest, AnAgentHoldsNothingAgainstTheUsersWish) {
    settings.set(SettingsKeys::keepAwakeWhileClaude, false);
    model.setClaudeIsWorking(true);
    EXPECT_EQ(model.hold(), std::nullopt);
    EXPECT_THAT(applied(), IsEmpty());
    settings.set(SettingsKeys::keepAwakeWhileClaude, true);
    EXPECT_THAT(applied(), ElementsAre(forClaude));
}

TEST_F(KeepAwakeModelTest, TheUsersSessionGoesFirstAndLeavesTheAgentsBehind) {
    settings.set(SettingsKeys::keepAwakeDisplay, true);
    model.setClaudeIsWorking(true);
    model.start(2.0);
    platform.advance(2);
    EXPECT_THAT(applied(), ElementsAre(forClaude, manual(true), forClaude));
    model.start(std::nullopt);
    model.stop();
    EXPECT_EQ(applied().back(), forClaude);
}

TEST_F(KeepAwakeModelTest, TheDisplaySettingActsWithinASession) {
    model.start(std::nullopt);
    settings.set(SettingsKeys::keepAwakeDisplay, true);
    EXPECT_THAT(applied(), ElementsAre(manual(false), manual(true)));
    settings.set(SettingsKeys::keepAwakeDisplay, false);
    EXPECT_EQ(applied().back(), manual(false));
}

TEST_F(KeepAwakeModelTest, OtherSettingsAreNoMatter) {
    settings.set(SettingsKeys::hoverDelay, 0.4);
    EXPECT_EQ(changes, 0);
}

TEST_F(KeepAwakeModelTest, WhatAnotherProgramWritesIntoTheSettingsCounts) {
    model.start(std::nullopt);
    const std::string path = platform.paths.configuration + "/settings.json";
    platform.disk.put(path, R"({"keepAwakeDisplay": true, "keepAwakeWhileClaude": "no"})");
    platform.watches.fire(platform.paths.configuration);
    EXPECT_THAT(model.hold(), Optional(manual(true)));
    EXPECT_TRUE(model.whileClaudeWorks()) << "a value of another type counts as none";
}

TEST_F(KeepAwakeModelTest, TheWishForAgentsIsWrittenToTheSettings) {
    model.setWhileClaudeWorks(false);
    EXPECT_FALSE(settings.boolValue(SettingsKeys::keepAwakeWhileClaude));
    EXPECT_FALSE(model.whileClaudeWorks()) << "and comes back from there";
    EXPECT_EQ(changes, 1);
}

TEST_F(KeepAwakeModelTest, ChangesAreTold) {
    const QSignalSpy states(&model, &KeepAwakeModel::stateChanged);
    const QSignalSpy holds(&model, &KeepAwakeModel::holdChanged);
    model.start(60.0);
    EXPECT_EQ(states.count(), 1);
    EXPECT_EQ(holds.count(), 1);
    platform.advance(5);
    EXPECT_EQ(states.count(), 1) << "a second that passes is no change of state";
    model.adjust(1);
    EXPECT_EQ(states.count(), 2);
    EXPECT_EQ(holds.count(), 1);
    model.stop();
    model.stop();
    EXPECT_EQ(states.count(), 3);
    EXPECT_EQ(holds.count(), 2);
}

TEST_F(KeepAwakeModelTest, NoSessionOutlivesTheProgram) {
    model.start(std::nullopt);
    const KeepAwakeModel next(settings, platform.energy, platform.time);
    EXPECT_FALSE(next.isOn());
}

} // namespace
} // namespace veslora
