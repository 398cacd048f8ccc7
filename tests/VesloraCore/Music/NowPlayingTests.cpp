// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/NowPlaying.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

NowPlaying playing(double duration, double position) {
    return {.title = "Slow Harbour",
            .duration = duration,
            .position = position,
            .readAt = 100,
            .isPlaying = true};
}

std::string nameOf(std::string_view bundleID) {
    return std::get<MusicSource::App>(MusicSource::from(bundleID).kind).name;
}

} // namespace

TEST(MusicSource, OnlyTheExactIdentifierIsSpotify) {
    EXPECT_TRUE(MusicSource::from("com.spotify.client").isSpotify());
    EXPECT_FALSE(MusicSource::from("com.spotify.Client").isSpotify());
    EXPECT_FALSE(MusicSource::from("com.spotify.client.").isSpotify());
}

TEST(MusicSource, PlayerIsNamedAfterTheLastPieceOfItsIdentifier) {
    EXPECT_EQ(nameOf("org.example.music"), "Music");
    EXPECT_EQ(nameOf("org.example.vlcPlayer.."), "VlcPlayer");
    EXPECT_EQ(nameOf("firefox"), "Firefox");
    EXPECT_EQ(nameOf("org.mpv"), "Mpv");
    EXPECT_EQ(nameOf("..."), "...");
    EXPECT_EQ(nameOf("org.éclair"), "Éclair");
    EXPECT_EQ(nameOf("org.\xff\xfe"), "\xff\xfe") << "Broken text stays as it is.";
}

TEST(MusicSource, KeepsTheWholeIdentifier) {
    EXPECT_EQ(MusicSource::from("org.example.music"),
              (MusicSource{MusicSource::App{"org.example.music", "Music"}}));
    EXPECT_EQ(MusicSource::from(""), (MusicSource{MusicSource::App{"", ""}}));
}

TEST(NowPlaying, PausedPositionStandsStill) {
    NowPlaying track = playing(200, 250);
    track.isPlaying = false;
    EXPECT_EQ(track.positionAt(10000), 250);
}

TEST(NowPlaying, PlayingPositionMovesUpToTheEnd) {
    EXPECT_EQ(playing(200, 50).positionAt(103.5), 53.5);
    EXPECT_EQ(playing(200, 199).positionAt(110), 200);
    EXPECT_EQ(playing(200, 5).positionAt(90), 0);
}

TEST(NowPlaying, PositionWithoutADurationIsNotHeld) {
    EXPECT_EQ(playing(0, 50).positionAt(1100), 1050);
    EXPECT_EQ(playing(0, 5).positionAt(90), -5);
}

TEST(NowPlaying, ReportsOfOneTrackAMomentApartDiffer) {
    NowPlaying later = playing(200, 50);
    later.readAt += 1;
    EXPECT_NE(later, playing(200, 50));
}
