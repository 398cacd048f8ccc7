// SPDX-License-Identifier: MIT
// What is shown, and where commands go. Covers and the adapter's process have tests of their own.
#include "tests/VesloraUI/Music/MusicScene.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

const std::string toggleScript = "tell application \"Spotify\" to playpause";
const std::string nextScript = "tell application \"Spotify\" to next track";
const std::string previousScript = "tell application \"Spotify\" to previous track";

using MusicModelTest = MusicScene;

TEST_F(MusicModelTest, BeginsWithNothing) {
    EXPECT_EQ(model.track(), std::nullopt);
    EXPECT_TRUE(model.artwork().isNull());
    EXPECT_FALSE(model.automationDenied());
    EXPECT_EQ(model.pausedSince(), std::nullopt);
    EXPECT_TRUE(model.canGoNext() && model.canGoPrevious() && model.canToggle());
    EXPECT_EQ(adapter.starts, 0);
    EXPECT_EQ(platform.time.pending(), 0u);
    EXPECT_EQ(changes, 0);
}

TEST_F(MusicModelTest, ListensToSpotifyOnce) {
    EXPECT_EQ(notifications.starts, 1);
    model.startObservingSpotify();
    EXPECT_EQ(notifications.starts, 1);
    spotify("A");
    EXPECT_EQ(changes, 1);
}

TEST_F(MusicModelTest, HearsNothingOfSpotifyBeforeItListens) {
    FakeSpotify others;
    const MusicModel silent(settings, {platform.time, others, scripts, adapter, web, apps});
    emit others.playbackStateChanged(track("A"));
    EXPECT_EQ(silent.track(), std::nullopt);
}

TEST_F(MusicModelTest, ShowsWhatSpotifyReportsAsOfNow) {
    platform.advance(5);
    spotify("A");
    ASSERT_TRUE(model.track());
    EXPECT_TRUE(model.track()->source.isSpotify());
    EXPECT_EQ(model.track()->title, "A");
    EXPECT_EQ(model.track()->readAt, platform.time.now());
    EXPECT_EQ(changes, 1);
}

TEST_F(MusicModelTest, ShowsWhatTheAdapterReports) {
    other("A");
    ASSERT_TRUE(model.track());
    EXPECT_EQ(model.track()->source, MusicSource::from("org.example.player"));
    EXPECT_EQ(model.track()->readAt, platform.time.now()) << "a line without a time is of now";
    EXPECT_EQ(changes, 1);
}

TEST_F(MusicModelTest, ALineOfAnotherFormIsIgnored) {
    other("A");
    model.receiveAdapterLine("music");
    model.receiveAdapterLine("");
    EXPECT_EQ(shown(), "A");
    EXPECT_EQ(changes, 1);
}

TEST_F(MusicModelTest, ASpotifyThatStoppedLeavesNothing) {
    spotify("A");
    spotify("A", "Paused");
    ASSERT_TRUE(model.pausedSince());
    spotifyStops();
    EXPECT_EQ(model.track(), std::nullopt);
    EXPECT_TRUE(model.artwork().isNull());
    EXPECT_EQ(model.pausedSince(), std::nullopt);
}

TEST_F(MusicModelTest, APauseBeginsOnceAndEndsWithPlaying) {
    spotify("A");
    platform.advance(5);
    const Timestamp paused = platform.time.now();
    spotify("A", "Paused");
    EXPECT_THAT(model.pausedSince(), Optional(paused));
    platform.advance(5);
    spotify("A", "Paused");
    EXPECT_THAT(model.pausedSince(), Optional(paused));
    spotify("B", "Paused");
    EXPECT_THAT(model.pausedSince(), Optional(paused)) << "nothing played between the two";
    spotify("B");
    EXPECT_EQ(model.pausedSince(), std::nullopt);
}

TEST_F(MusicModelTest, ATrackThatCameAsPausedHasNoBeginning) {
    spotify("A", "Paused");
    EXPECT_EQ(model.pausedSince(), std::nullopt);
    spotify("A", "Paused");
    EXPECT_EQ(model.pausedSince(), std::nullopt);
}

TEST_F(MusicModelTest, OnlyWhatDiffersIsTold) {
    spotify("A");
    const QSignalSpy tracks(&model, &MusicModel::trackChanged);
    const QSignalSpy pauses(&model, &MusicModel::pausedSinceChanged);
    const QSignalSpy controls(&model, &MusicModel::controlsChanged);
    spotify("A");
    model.settingsChanged();
    EXPECT_EQ(tracks.count() + pauses.count() + controls.count(), 0);
    EXPECT_EQ(changes, 3) << "everything that was looked at";
    platform.advance(1);
    spotify("A");
    EXPECT_EQ(tracks.count(), 1) << "a later position";
    EXPECT_EQ(pauses.count(), 0);
}

TEST_F(MusicModelTest, HidesOtherAppsAsTheSettingsSay) {
    other("A");
    settings.set(SettingsKeys::musicShowOtherApps, false);
    EXPECT_EQ(shown(), "A") << "until it is told";
    model.settingsChanged();
    EXPECT_EQ(shown(), "nothing");
    settings.set(SettingsKeys::musicShowOtherApps, true);
    model.settingsChanged();
    EXPECT_EQ(shown(), "A");
}

TEST_F(MusicModelTest, AnotherPlayerOvertakesAPausedSpotifyOnly) {
    spotify("A");
    other("B");
    EXPECT_EQ(shown(), "A");
    spotify("A", "Paused");
    EXPECT_EQ(shown(), "B") << "at the same moment";
    platform.advance(1);
    spotify("A", "Paused");
    EXPECT_EQ(shown(), "A");
    platform.advance(1);
    other("B", R"(,"playing":false)");
    EXPECT_EQ(shown(), "B");
}

TEST_F(MusicModelTest, ACommandToSpotifyIsAScript) {
    spotify("A");
    model.togglePlayPause();
    model.next();
    model.previous();
    EXPECT_THAT(scripts.ran, ElementsAre(toggleScript, nextScript, previousScript));
    EXPECT_THAT(adapter.sent, IsEmpty());
}

TEST_F(MusicModelTest, ACommandToAnotherPlayerGoesThroughTheAdapter) {
    other("A");
    model.togglePlayPause();
    model.next();
    model.previous();
    EXPECT_THAT(adapter.sent,
                ElementsAre(AdapterCommand::togglePlayPause, AdapterCommand::next, AdapterCommand::previous));
    EXPECT_EQ(static_cast<int>(AdapterCommand::togglePlayPause), 2);
    EXPECT_EQ(static_cast<int>(AdapterCommand::next), 4);
    EXPECT_EQ(static_cast<int>(AdapterCommand::previous), 5);
    EXPECT_THAT(scripts.ran, IsEmpty());
}

TEST_F(MusicModelTest, WithoutATrackACommandGoesNowhere) {
    model.togglePlayPause();
    model.next();
    model.previous();
    EXPECT_THAT(scripts.ran, IsEmpty());
    EXPECT_THAT(adapter.sent, IsEmpty());
}

TEST_F(MusicModelTest, ADeniedCommandIsToldUntilOneSucceeds) {
    spotify("A");
    scripts.results[toggleScript] = MusicError::automationDenied;
    model.togglePlayPause();
    EXPECT_FALSE(model.automationDenied()) << "Spotify has not answered yet";
    platform.advance(1);
    EXPECT_TRUE(model.automationDenied());
    model.next();
    platform.advance(1);
    EXPECT_TRUE(model.automationDenied()) << "any other failure changes nothing";
    scripts.results[previousScript] = std::string();
    model.previous();
    platform.advance(1);
    EXPECT_FALSE(model.automationDenied());
    model.next();
    platform.advance(1);
    EXPECT_FALSE(model.automationDenied());
}

TEST_F(MusicModelTest, EveryAnswerCountsHoweverManyCommandsWait) {
    spotify("A");
    scripts.answerTime = 1;
    scripts.results[toggleScript] = MusicError::automationDenied;
    model.togglePlayPause();
    model.next();
    platform.advance(2);
    EXPECT_TRUE(model.automationDenied()) << "the second one's failure says nothing about permission";
}

TEST_F(MusicModelTest, AnAnswerThatComesTooLateForTheModelIsDropped) {
    {
        MusicModel brief(settings, {platform.time, notifications, scripts, adapter, web, apps});
        brief.startObservingSpotify();
        brief.setNeeded(true);
        spotify("A");
        brief.next();
        EXPECT_GT(platform.time.pending(), 0u);
    }
    EXPECT_EQ(platform.time.pending(), 0u);
    EXPECT_FALSE(adapter.isRunning()) << "what it was given calls the model";
}

TEST_F(MusicModelTest, OpensSpotify) {
    model.openSpotify();
    EXPECT_THAT(apps.opened, ElementsAre("com.spotify.client"));
}

TEST_F(MusicModelTest, AControlIsThereUnlessThePlayerSaysOtherwise) {
    const QSignalSpy told(&model, &MusicModel::controlsChanged);
    other("A", R"(,"canGoNext":false,"canGoPrevious":false,"canPlay":false)");
    EXPECT_FALSE(model.canGoNext() || model.canGoPrevious() || model.canToggle());
    EXPECT_EQ(told.count(), 1);
    otherDiff(R"({"canGoNext":true,"canPlay":null})");
    EXPECT_TRUE(model.canGoNext() && model.canToggle());
    EXPECT_FALSE(model.canGoPrevious());
    EXPECT_EQ(told.count(), 2);
}

TEST_F(MusicModelTest, SpotifyHasEveryControl) {
    other("A", R"(,"canGoNext":false,"canPlay":false)");
    spotify("B");
    EXPECT_TRUE(model.canGoNext() && model.canToggle());
    spotifyStops();
    EXPECT_FALSE(model.canGoNext());
    other("A", R"(,"canGoNext":false)", "com.spotify.client");
    EXPECT_TRUE(model.canGoNext()) << "by whomever it is reported";
}

TEST_F(MusicModelTest, TheAdaptersViewOfSpotifyFillsInAndIsToldByScript) {
    settings.set(SettingsKeys::musicShowOtherApps, false);
    other("A", "", "com.spotify.client");
    EXPECT_EQ(shown(), "A");
    model.next();
    EXPECT_THAT(scripts.ran, ElementsAre(nextScript));
    spotify("B");
    EXPECT_EQ(shown(), "B");
}

} // namespace
} // namespace veslora
