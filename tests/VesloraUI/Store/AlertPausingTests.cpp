// SPDX-License-Identifier: MIT
// Pauses that the user begins, that the settings keep, that clocks end, and that the desktop asks for.
#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FixedCalendar.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

using AlertPause::For;
using AlertPause::hour;
using AlertPause::UntilTomorrow;

constexpr double day = 24 * hour;

class AlertPausingTest : public testing::Test {
  protected:
    void store(double until) { settings.set(SettingsKeys::alertsPausedUntil, until); }
    [[nodiscard]] double stored() const { return settings.doubleValue(SettingsKeys::alertsPausedUntil); }
    [[nodiscard]] double now() const { return platform.time.now(); }

    FakePlatform platform;
    FakeDefaults settings{platform};
    AlertPausing pausing{settings, platform.time, platform.quiet, test::fixedCalendar()};
    QSignalSpy changes{&pausing, &AlertPausing::changed};
};

TEST_F(AlertPausingTest, AtFirstNothingIsPausedAndNothingIsAwaited) {
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(pausing.pausedUntil(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0U);
    EXPECT_EQ(platform.disk.writes(), 0);
}

TEST_F(AlertPausingTest, APauseEndsAtItsMomentAndIsNotLookedAtBefore) {
    pausing.pause(For{hour});
    EXPECT_TRUE(pausing.isPaused());
    EXPECT_EQ(pausing.pausedUntil(), now() + hour);
    EXPECT_EQ(stored(), now() + hour);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(platform.time.nextDelay(), hour);
    platform.advance(hour - 1);
    EXPECT_TRUE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 1);
    platform.advance(1);
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(AlertPausingTest, UntilTomorrowIsByTheCalendar) {
    pausing.pause(UntilTomorrow{});
    EXPECT_EQ(pausing.pausedUntil(), AlertPause::endOf(UntilTomorrow{}, now(), *test::fixedCalendar()));
    EXPECT_GT(*pausing.pausedUntil(), now() + 3 * hour);
}

TEST_F(AlertPausingTest, TheUserEndsItAnyTime) {
    pausing.resume();
    EXPECT_EQ(changes.count(), 0);
    pausing.pause(For{hour});
    pausing.resume();
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(stored(), 0);
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(AlertPausingTest, AnotherLengthTakesTheFirstOnesPlace) {
    pausing.pause(For{2 * hour});
    pausing.pause(For{hour});
    EXPECT_EQ(pausing.pausedUntil(), now() + hour);
    EXPECT_EQ(changes.count(), 2);
    platform.advance(hour);
    EXPECT_FALSE(pausing.isPaused());
}

TEST_F(AlertPausingTest, OneThatIsInTheSettingsHoldsFromTheBeginning) {
    store(now() + hour);
    const AlertPausing next(settings, platform.time, platform.quiet, test::fixedCalendar());
    EXPECT_TRUE(next.isPaused());
    EXPECT_EQ(next.pausedUntil(), now() + hour);
}

TEST_F(AlertPausingTest, WhatIsNoMomentAheadIsNoPause) {
    for (const double none : {-1.0, 1.0, now(), now() + 7 * day + 1, 1e300}) {
        store(none);
        EXPECT_FALSE(pausing.isPaused()) << none;
    }
    for (const char* text : {R"({"alertsPausedUntil":"tomorrow"})", R"({"alertsPausedUntil":true})",
                             R"({"alertsPausedUntil":1e999})", R"({"alertsPausedUntil":null})"}) {
        platform.disk.put(platform.paths.configuration + "/settings.json", text);
        platform.watches.fire(platform.paths.configuration);
        EXPECT_FALSE(pausing.isPaused()) << text;
    }
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(AlertPausingTest, AnotherProgramMayBeginAndEndOne) {
    const auto write = [this](const std::string& text) {
        platform.disk.put(platform.paths.configuration + "/settings.json", text);
        platform.watches.fire(platform.paths.configuration);
    };
    write(R"({"alertsPausedUntil":)" + std::to_string(now() + hour) + "}");
    EXPECT_TRUE(pausing.isPaused());
    write("{}");
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(AlertPausingTest, TimeAsleepCounts) {
    pausing.pause(For{hour});
    platform.time.suspend(2 * hour);
    platform.advance(0);
    EXPECT_FALSE(pausing.isPaused());
}

TEST_F(AlertPausingTest, AClockThatIsSetForwardEndsIt) {
    pausing.pause(For{hour});
    platform.time.setClock(now() + 2 * hour);
    platform.advance(0);
    EXPECT_FALSE(pausing.isPaused());
}

TEST_F(AlertPausingTest, AClockThatIsSetBackMakesNoPauseOfWeeks) {
    pausing.pause(For{hour});
    platform.time.setClock(now() - 30 * day);
    platform.advance(hour);
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(AlertPausingTest, AClockThatIsSetBackALittleLeavesItItsEnd) {
    pausing.pause(For{hour});
    const Timestamp end = *pausing.pausedUntil();
    platform.time.setClock(now() - day);
    platform.advance(hour);
    EXPECT_EQ(pausing.pausedUntil(), end);
    EXPECT_EQ(changes.count(), 1);
    platform.advance(day);
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(AlertPausingTest, TheDesktopsDoNotDisturbPausesWhileItIsOn) {
    platform.quiet.turn(true);
    EXPECT_TRUE(pausing.isPaused());
    EXPECT_EQ(pausing.pausedUntil(), std::nullopt) << "it is not the user's own";
    EXPECT_EQ(changes.count(), 1);
    pausing.resume();
    EXPECT_TRUE(pausing.isPaused());
    platform.quiet.turn(false);
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(stored(), 0);
}

TEST_F(AlertPausingTest, AUserMayNotFollowIt) {
    settings.set(SettingsKeys::followDoNotDisturb, false);
    platform.quiet.turn(true);
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 0);
    settings.set(SettingsKeys::followDoNotDisturb, true);
    EXPECT_TRUE(pausing.isPaused());
    settings.set(SettingsKeys::followDoNotDisturb, false);
    EXPECT_FALSE(pausing.isPaused());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(AlertPausingTest, TheUsersPauseOutlastsTheDesktops) {
    pausing.pause(For{hour});
    platform.quiet.turn(true);
    platform.quiet.turn(false);
    EXPECT_TRUE(pausing.isPaused());
    platform.quiet.turn(true);
    platform.advance(hour);
    EXPECT_TRUE(pausing.isPaused());
    EXPECT_EQ(pausing.pausedUntil(), std::nullopt);
}

TEST_F(AlertPausingTest, ADesktopThatOnlyAnswersIsAskedEachTime) {
    platform.quiet.turnSilently(true);
    EXPECT_TRUE(pausing.isPaused());
    platform.quiet.turnSilently(false);
    EXPECT_FALSE(pausing.isPaused());
}

} // namespace
} // namespace veslora
