// SPDX-License-Identifier: MIT
// What the metronome queues, and what it makes of tempo, signature, sound and settings.
#include "tests/VesloraUI/Metronome/MetronomeScene.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

#include <limits>

namespace veslora {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using Hit = FakeMetronomePlayer::Hit;

constexpr std::int64_t beatAt120 = 24000;

using MetronomeModelTest = MetronomeScene;

TEST_F(MetronomeModelTest, IsStoppedAtFirstWithTheUsualSettings) {
    EXPECT_EQ(metronome->bpm(), 120);
    EXPECT_EQ(metronome->signature(), TimeSignature::common);
    EXPECT_EQ(metronome->sound(), MetronomeSound::click);
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_EQ(metronome->currentBeat(), std::nullopt);
    EXPECT_EQ(metronome->beatPhase(), std::nullopt);
    EXPECT_EQ(player.starts, 0);
    EXPECT_EQ(platform.time.pending(), 0U) << "nothing wakes up for it";
}

TEST_F(MetronomeModelTest, TakesWhatIsStored) {
    const std::pair<int, int> tempos[] = {{0, 120}, {1000, 300}, {10, 30}, {-5, 30}, {137, 137}};
    for (const auto& [written, expected] : tempos) {
        settings.set(SettingsKeys::metronomeBPM, written);
        make();
        EXPECT_EQ(metronome->bpm(), expected) << written;
        EXPECT_EQ(settings.integerValue(SettingsKeys::metronomeBPM), written) << "it is not rewritten";
    }
    settings.set(SettingsKeys::metronomeSignature, "7/8");
    settings.set(SettingsKeys::metronomeSound, "beep");
    make();
    EXPECT_EQ(metronome->signature(), (TimeSignature{7, 8}));
    EXPECT_EQ(metronome->sound(), MetronomeSound::beep);
}

TEST_F(MetronomeModelTest, WhatDoesNotParseFallsBackAndStaysInTheStore) {
    settings.set(SettingsKeys::metronomeSignature, "9/8");
    settings.set(SettingsKeys::metronomeSound, "gong");
    make();
    EXPECT_EQ(metronome->signature(), TimeSignature::common);
    EXPECT_EQ(metronome->sound(), MetronomeSound::click);
    metronome->start();
    EXPECT_EQ(stored(SettingsKeys::metronomeSignature), "9/8");
    EXPECT_EQ(stored(SettingsKeys::metronomeSound), "gong");
    metronome->setSound(MetronomeSound::beep);
    settings.set(SettingsKeys::metronomeSound, "gong");
    EXPECT_EQ(metronome->sound(), MetronomeSound::click);
    EXPECT_EQ(stored(SettingsKeys::metronomeSound), "gong");
}

TEST_F(MetronomeModelTest, TempoAndSignatureThatSomebodyElseStoresAreTakenOver) {
    const QSignalSpy tempos(metronome.get(), &MetronomeModel::bpmChanged);
    metronome->start();
    settings.set(std::vector<Defaults::Change>{{SettingsKeys::metronomeBPM, 90},
                                               {SettingsKeys::metronomeSignature, "3/4"}});
    EXPECT_EQ(metronome->bpm(), 90);
    EXPECT_EQ(metronome->signature(), (TimeSignature{3, 4}));
    EXPECT_EQ(tempos.count(), 1);
    EXPECT_TRUE(metronome->isRunning());
    metronome->adjust(1);
    EXPECT_EQ(settings.integerValue(SettingsKeys::metronomeBPM), 91);
}

TEST_F(MetronomeModelTest, TheTempoIsHeldAndStored) {
    metronome->setBpm(29);
    EXPECT_EQ(metronome->bpm(), 30);
    EXPECT_EQ(settings.integerValue(SettingsKeys::metronomeBPM), 30);
    metronome->setBpm(std::numeric_limits<int>::max());
    EXPECT_EQ(metronome->bpm(), 300);
    EXPECT_EQ(settings.integerValue(SettingsKeys::metronomeBPM), 300);
    EXPECT_EQ(changes, 2);
}

TEST_F(MetronomeModelTest, AStepBeyondTheEndStillStoresAndTells) {
    settings.set(SettingsKeys::metronomeBPM, 1000);
    make();
    changes = 0; // the one before took the stored tempo over
    const QSignalSpy bpmChanged(metronome.get(), &MetronomeModel::bpmChanged);
    metronome->adjust(5);
    EXPECT_EQ(metronome->bpm(), 300);
    EXPECT_EQ(settings.integerValue(SettingsKeys::metronomeBPM), 300);
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(bpmChanged, IsEmpty()) << "the view has nothing to redraw";
    metronome->adjust(std::numeric_limits<int>::max());
    metronome->adjust(std::numeric_limits<int>::min());
    EXPECT_EQ(metronome->bpm(), 30);
}

TEST_F(MetronomeModelTest, StartQueuesHalfASecondAndTheRestAsTimePasses) {
    metronome->start();
    EXPECT_TRUE(metronome->isRunning());
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(player.hits, ElementsAre(Hit{MetronomeSound::click, true, 4800}));
    platform.advance(0.15);
    EXPECT_THAT(times(), ElementsAre(4800, 28800));
    platform.advance(9.9);
    EXPECT_EQ(times().back(), 4800 + 20 * beatAt120);
    EXPECT_THAT(gaps(), Each(beatAt120));
    EXPECT_EQ(accents(), "A...A...A...A...A...A");
}

TEST_F(MetronomeModelTest, StartingTwiceIsStartingOnce) {
    metronome->start();
    metronome->start();
    EXPECT_EQ(player.starts, 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(MetronomeModelTest, ADeviceThatTakesItsTimeLosesNoBeat) {
    player.beginsAfter = 0.35;
    metronome->start();
    EXPECT_THAT(times(), ElementsAre(4800, 28800)) << "half a second from the first beat on";
    platform.advance(0.3);
    EXPECT_THAT(player.hits, SizeIs(2));
    platform.advance(5);
    EXPECT_THAT(gaps(), Each(beatAt120));
    EXPECT_EQ(times().front(), 4800);
    EXPECT_THAT(player.hits, SizeIs(11));
}

TEST_F(MetronomeModelTest, StopEndsItAndTheNextStartCountsAnew) {
    metronome->start();
    platform.advance(1.3);
    metronome->toggle();
    EXPECT_FALSE(metronome->isRunning());
    EXPECT_FALSE(player.isStarted());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(platform.time.pending(), 0U);
    EXPECT_EQ(metronome->currentBeat(), std::nullopt);
    player.hits.clear();
    metronome->toggle();
    EXPECT_THAT(player.hits, ElementsAre(Hit{MetronomeSound::click, true, 4800}));
}

TEST_F(MetronomeModelTest, ATempoChangeLeavesQueuedBeatsAlone) {
    metronome->start();
    platform.advance(1.15);
    const std::vector<std::int64_t> queued = times();
    metronome->setBpm(240);
    EXPECT_EQ(times(), queued);
    platform.advance(2);
    EXPECT_TRUE(std::equal(queued.begin(), queued.end(), times().begin()));
    for (std::size_t index = queued.size() - 1; index < gaps().size(); ++index) {
        EXPECT_EQ(gaps()[index], beatAt120 / 2) << index;
    }
}

TEST_F(MetronomeModelTest, ATempoBeforeTheFirstBeatIsQueuedBeginsWithIt) {
    metronome->start();
    metronome->setBpm(60);
    metronome->setBpm(300);
    platform.advance(1);
    EXPECT_EQ(times().front(), 4800);
    EXPECT_THAT(gaps(), Each(9600));
}

TEST_F(MetronomeModelTest, ANewSignatureOpensABarWithTheNextBeat) {
    metronome->start();
    platform.advance(2.15);
    EXPECT_EQ(accents(), "A...A.");
    metronome->setSignature({3, 4});
    EXPECT_EQ(stored(SettingsKeys::metronomeSignature), "3/4");
    platform.advance(3.6);
    EXPECT_EQ(accents(), "A...A.A..A..A");
    EXPECT_THAT(gaps(), Each(beatAt120));
    const QSignalSpy signatureChanged(metronome.get(), &MetronomeModel::signatureChanged);
    metronome->cycleSignature();
    EXPECT_EQ(metronome->signature(), TimeSignature::common);
    EXPECT_EQ(stored(SettingsKeys::metronomeSignature), "4/4");
    EXPECT_THAT(signatureChanged, SizeIs(1));
}

TEST_F(MetronomeModelTest, ANewSoundIsHeardWithinHalfASecond) {
    metronome->start();
    platform.advance(1);
    const std::size_t queued = player.hits.size();
    metronome->setSound(MetronomeSound::woodblock);
    EXPECT_EQ(stored(SettingsKeys::metronomeSound), "woodblock");
    platform.advance(0.5);
    settings.set(SettingsKeys::metronomeSound, "hihat");
    platform.advance(0.5);
    ASSERT_THAT(player.hits, SizeIs(queued + 2));
    EXPECT_EQ(player.hits[queued - 1].sound, MetronomeSound::click);
    EXPECT_EQ(player.hits[queued].sound, MetronomeSound::woodblock);
    EXPECT_EQ(player.hits[queued + 1].sound, MetronomeSound::hihat);
}

TEST_F(MetronomeModelTest, SilentQueuesNothingAndItsLightsGoOn) {
    metronome->setSound(MetronomeSound::silent);
    metronome->start();
    platform.advance(1.7);
    EXPECT_THAT(player.hits, IsEmpty());
    EXPECT_THAT(metronome->currentBeat(), Optional(3));
    metronome->setSound(MetronomeSound::click);
    platform.advance(1);
    EXPECT_THAT(times(), ElementsAre(4800 + 5 * beatAt120, 4800 + 6 * beatAt120));
    EXPECT_EQ(accents(), "..") << "what was silent is not made up for";
}

TEST_F(MetronomeModelTest, AStallOfASecondLosesBeatsAndBurstsNothing) {
    metronome->start();
    platform.advance(1);
    const std::size_t queued = player.hits.size();
    // The device goes on while nobody queues anything.
    platform.time.suspend(1.25);
    const std::int64_t now = player.currentSample().value();
    platform.advance(0);
    ASSERT_GT(player.hits.size(), queued);
    EXPECT_GE(player.hits[queued].atSample, now) << "nothing is queued for a moment that has passed";
    EXPECT_THAT(player.hits, SizeIs(queued + 1));
    platform.advance(2);
    const std::vector<std::int64_t> all = times();
    for (std::size_t index = 1; index < all.size(); ++index) {
        EXPECT_EQ((all[index] - 4800) % beatAt120, 0) << "no beat was shifted";
        EXPECT_GE(all[index] - all[index - 1], beatAt120) << "no two of them at once";
    }
    EXPECT_EQ(all[queued] - all[queued - 1], 3 * beatAt120) << "two were lost";
}

TEST_F(MetronomeModelTest, ABeatOnThisVerySampleIsStillQueued) {
    metronome->setSound(MetronomeSound::silent);
    metronome->start();
    platform.advance(0.55);
    metronome->setSound(MetronomeSound::click);
    // Beat 2 lies at 1.1 seconds and was not queued by 0.5.
    platform.time.suspend(0.55);
    platform.advance(0);
    EXPECT_EQ(player.currentSample(), 4800 + 2 * beatAt120);
    EXPECT_THAT(times(), ElementsAre(4800 + 2 * beatAt120, 4800 + 3 * beatAt120));
}

TEST_F(MetronomeModelTest, AccentsCanBeTurnedOffForBeatsToCome) {
    metronome->start();
    platform.advance(1.25);
    EXPECT_EQ(accents(), "A...");
    settings.set(SettingsKeys::metronomeAccent, false);
    platform.advance(4);
    EXPECT_EQ(accents(), "A...........");
    settings.set(SettingsKeys::metronomeAccent, true);
    platform.advance(1);
    EXPECT_EQ(accents(), "A...........A.");
}

TEST_F(MetronomeModelTest, TheVolumeFollowsTheSettingWhileItRuns) {
    settings.set(SettingsKeys::metronomeVolume, 0.5);
    EXPECT_THAT(player.volumes, IsEmpty());
    metronome->start();
    EXPECT_THAT(player.volumes, ElementsAre(0.5F));
    settings.set(SettingsKeys::metronomeVolume, 0.25);
    EXPECT_EQ(player.volumes.back(), 0.25F);
    metronome->stop();
    player.volumes.clear();
    settings.set(SettingsKeys::metronomeVolume, 1.0);
    EXPECT_THAT(player.volumes, IsEmpty());
}

TEST_F(MetronomeModelTest, LightsFollowWhatIsHeard) {
    player.latency = 9600;
    metronome->start();
    platform.advance(0.29);
    EXPECT_EQ(metronome->currentBeat(), std::nullopt) << "the first beat is on its way";
    EXPECT_EQ(metronome->beatPhase(), std::nullopt);
    platform.advance(0.01);
    EXPECT_THAT(metronome->currentBeat(), Optional(0));
    platform.advance(0.49);
    EXPECT_THAT(metronome->currentBeat(), Optional(0));
    const auto phase = metronome->beatPhase();
    ASSERT_TRUE(phase);
    EXPECT_EQ(phase->inBar, 0);
    EXPECT_NEAR(phase->secondsIntoBeat, 0.49, 1e-4);
    platform.advance(0.01);
    EXPECT_THAT(metronome->currentBeat(), Optional(1));
    EXPECT_NEAR(metronome->beatPhase()->secondsIntoBeat, 0, 1e-4);
    platform.advance(1.5);
    EXPECT_THAT(metronome->currentBeat(), Optional(0)) << "the next bar";
}

TEST_F(MetronomeModelTest, TapsBecomeTheTempo) {
    metronome->tap();
    EXPECT_EQ(changes, 0);
    platform.advance(0.4);
    metronome->tap();
    EXPECT_EQ(metronome->bpm(), 150);
    EXPECT_EQ(settings.integerValue(SettingsKeys::metronomeBPM), 150);
    EXPECT_EQ(changes, 1);
    // A run of taps lives on through a start.
    metronome->start();
    platform.advance(0.5);
    metronome->tap();
    EXPECT_EQ(metronome->bpm(), 133);
    platform.advance(3);
    metronome->tap();
    EXPECT_EQ(metronome->bpm(), 133) << "a new run";
}

TEST_F(MetronomeModelTest, AClockThatIsSetBetweenTwoTapsIsNoTempo) {
    metronome->tap();
    platform.time.setClock(platform.time.now() + 1.5);
    platform.advance(0.4);
    metronome->tap();
    EXPECT_EQ(metronome->bpm(), 150);
}

TEST_F(MetronomeModelTest, NobodyNeedsToHearOfChanges) {
    metronome->onChange = nullptr;
    metronome->start();
    metronome->setBpm(60);
    metronome->stop();
    EXPECT_FALSE(metronome->isRunning());
}

} // namespace
} // namespace veslora
