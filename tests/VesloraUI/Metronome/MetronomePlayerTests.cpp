// SPDX-License-Identifier: MIT
// The metronome and its player: failures, another device, sleep, and a preview of the sound.
#include "tests/VesloraUI/Metronome/MetronomeScene.h"

#include <gmock/gmock.h>

namespace veslora {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Hit = FakeMetronomePlayer::Hit;

constexpr std::int64_t beatAt120 = 24000;

using MetronomePlayerTest = MetronomeScene;

TEST_F(MetronomePlayerTest, AFailedStartLeavesItStoppedWithoutAWord) {
    player.canStart = false;
    metronome->start();
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(platform.time.pending(), 0U);
    player.canStart = true;
    metronome->toggle();
    EXPECT_TRUE(metronome->isRunning());
}

TEST_F(MetronomePlayerTest, AFailureThatShowsLaterStopsIt) {
    metronome->start();
    player.fail();
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(platform.time.pending(), 0U);
    EXPECT_EQ(player.starts, 1) << "it does not try again by itself";
    player.fail();
    EXPECT_EQ(changes, 2) << "a stopped metronome has nothing to lose";
}

TEST_F(MetronomePlayerTest, AMachineThatGoesToSleepStopsIt) {
    metronome->start();
    emit platform.sleep.willSleep();
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_FALSE(player.isStarted());
    emit platform.sleep.didWake();
    platform.advance(1);
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(player.starts, 1);
}

TEST_F(MetronomePlayerTest, AnotherDeviceStartsItAgainFromTheFirstBeat) {
    metronome->start();
    platform.advance(1.3);
    player.hits.clear();
    player.changeConfiguration();
    EXPECT_TRUE(metronome->isRunning());
    EXPECT_TRUE(player.isStarted());
    EXPECT_THAT(player.hits, ElementsAre(Hit{MetronomeSound::click, true, 4800}));
    platform.advance(2);
    EXPECT_THAT(gaps(), Each(beatAt120));
    EXPECT_EQ(platform.time.pending(), 1U) << "one loop keeps it going";
}

TEST_F(MetronomePlayerTest, WithoutAnyDeviceLeftItStops) {
    metronome->start();
    player.canStart = false;
    player.changeConfiguration();
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(MetronomePlayerTest, AnotherDeviceIsNothingToAStoppedMetronome) {
    player.changeConfiguration();
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(player.starts, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(MetronomePlayerTest, PreviewPlaysAnAccentAndABeat) {
    settings.set(SettingsKeys::metronomeSound, "beep");
    metronome->preview();
    EXPECT_THAT(player.hits, ElementsAre(Hit{MetronomeSound::beep, true, 4800},
                                         Hit{MetronomeSound::beep, false, 4800 + 16800}));
    EXPECT_FLOAT_EQ(player.volumes.back(), 0.8F);
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(metronome->currentBeat(), std::nullopt);
    platform.advance(0.89);
    EXPECT_TRUE(player.isStarted());
    platform.advance(0.01);
    EXPECT_FALSE(player.isStarted());
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(MetronomePlayerTest, PreviewHasNoAccentWhereThereAreNone) {
    settings.set(SettingsKeys::metronomeAccent, false);
    metronome->preview();
    EXPECT_EQ(accents(), "..");
}

TEST_F(MetronomePlayerTest, PreviewDoesNothingWhereThereIsNothingToHear) {
    metronome->setSound(MetronomeSound::silent);
    metronome->preview();
    EXPECT_EQ(player.starts, 0);
    metronome->setSound(MetronomeSound::click);
    player.canStart = false;
    metronome->preview();
    EXPECT_THAT(player.hits, IsEmpty());
    EXPECT_EQ(platform.time.pending(), 0U);
    player.canStart = true;
    metronome->start();
    player.hits.clear();
    metronome->preview();
    EXPECT_THAT(player.hits, IsEmpty());
    platform.advance(1);
    EXPECT_TRUE(player.isStarted());
}

TEST_F(MetronomePlayerTest, AStartDuringAPreviewKeepsThePlayerRunning) {
    metronome->preview();
    platform.advance(0.5);
    metronome->start();
    EXPECT_TRUE(metronome->isRunning());
    player.hits.clear();
    platform.advance(5);
    EXPECT_TRUE(player.isStarted());
    EXPECT_EQ(player.stops, 0);
    EXPECT_THAT(gaps(), Each(beatAt120));
}

TEST_F(MetronomePlayerTest, ASecondPreviewIsHeardToItsEnd) {
    metronome->preview();
    platform.advance(0.8);
    metronome->preview();
    platform.advance(0.8);
    EXPECT_TRUE(player.isStarted());
    platform.advance(0.2);
    EXPECT_FALSE(player.isStarted());
    EXPECT_THAT(player.hits, SizeIs(4));
}

TEST_F(MetronomePlayerTest, APreviewWaitsForASlowPlayerButNotForEver) {
    player.beginsAfter = 1.5;
    metronome->preview();
    platform.advance(1.9);
    EXPECT_TRUE(player.isStarted()) << "the second of the two is yet to come";
    platform.advance(0.3);
    EXPECT_FALSE(player.isStarted());
    player.beginsAfter = 3600;
    metronome->preview();
    platform.advance(7);
    EXPECT_FALSE(player.isStarted());
    EXPECT_EQ(platform.time.pending(), 0U);
}

TEST_F(MetronomePlayerTest, TheEndOfTheModelIsTheEndOfTheSound) {
    metronome->start();
    metronome.reset();
    EXPECT_FALSE(player.isStarted());
    EXPECT_EQ(platform.time.pending(), 0U);
    player.changeConfiguration();
    player.fail();
}

} // namespace
} // namespace veslora
