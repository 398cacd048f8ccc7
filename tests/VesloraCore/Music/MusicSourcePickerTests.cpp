// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/MusicSourcePicker.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

enum class Playback { playing, paused };

constexpr Timestamp atTen = 36'000;
constexpr double minute = 60;

NowPlaying spotify(Playback playback, Timestamp readAt) {
    return {.source = {MusicSource::Spotify{}},
            .title = "Slow Harbour",
            .readAt = readAt,
            .isPlaying = playback == Playback::playing};
}

NowPlaying other(Playback playback, Timestamp readAt) {
    NowPlaying track = spotify(playback, readAt);
    track.source = MusicSource::from("org.example.player");
    return track;
}

using MusicSourcePicker::pick;

} // namespace

TEST(MusicSourcePicker, NothingOfNothing) {
    EXPECT_EQ(pick({}, {}, true), std::nullopt);
    EXPECT_EQ(pick({}, {}, false), std::nullopt);
}

TEST(MusicSourcePicker, APlayingSpotifyComesFirst) {
    const NowPlaying first = spotify(Playback::playing, atTen);
    EXPECT_EQ(pick(first, other(Playback::playing, atTen + minute), true), first);
    EXPECT_EQ(pick(first, {}, false), first);
}

TEST(MusicSourcePicker, APausedSpotifyStaysUntilAnotherReportsAsLateOrLater) {
    const NowPlaying paused = spotify(Playback::paused, atTen);
    EXPECT_EQ(pick(paused, {}, true), paused);
    EXPECT_EQ(pick(paused, other(Playback::playing, atTen - minute), true), paused);
    for (const Timestamp time : {atTen, atTen + minute}) {
        for (const Playback playback : {Playback::playing, Playback::paused}) {
            EXPECT_EQ(pick(paused, other(playback, time), true), other(playback, time));
        }
    }
}

TEST(MusicSourcePicker, NothingButSpotifyWhileOthersAreHidden) {
    const NowPlaying paused = spotify(Playback::paused, atTen);
    EXPECT_EQ(pick(paused, other(Playback::playing, atTen + minute), false), paused);
    EXPECT_EQ(pick({}, other(Playback::playing, atTen), false), std::nullopt);
    EXPECT_EQ(pick({}, other(Playback::playing, atTen), true), other(Playback::playing, atTen));
}

TEST(MusicSourcePicker, TheAdaptersViewOfSpotifyOnlyFillsIn) {
    const NowPlaying seen = spotify(Playback::playing, atTen + minute);
    const NowPlaying told = spotify(Playback::paused, atTen);
    for (const bool showOtherApps : {false, true}) {
        EXPECT_EQ(pick({}, seen, showOtherApps), seen);
        EXPECT_EQ(pick(told, seen, showOtherApps), told);
    }
}
