// SPDX-License-Identifier: MIT
// What the program reads of the helper's lines, against what the player does.
#include "MediaAdapter/PlayerReport.h"
#include "MediaAdapter/StreamWriter.h"
#include "VesloraCore/Music/AdapterState.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

constexpr Timestamp start = 1700000000.75;

class ReadingTests : public ::testing::Test {
  protected:
    ReadingTests() {
        player.name = "org.mpris.MediaPlayer2.spotify";
        player.status = PlaybackStatus::playing;
        player.track = {.id = "/1", .title = "Title", .artist = "Artist", .album = "Album", .length = 200};
        player.trackIdentifier = "/1";
        player.setPosition(0.5, start);
    }

    /// What the reader has after the next line, if there is one.
    std::optional<NowPlaying> read(const std::string& artwork = "") {
        if (const auto line = writer.lineTo(report.payload(player, artwork))) {
            EXPECT_TRUE(state.apply(*line)) << *line;
        }
        return state.nowPlaying(0);
    }

    Player player;
    PlayerReport report;
    StreamWriter writer;
    AdapterState state;
};

TEST_F(ReadingTests, ReadsATrackAsItIs) {
    const auto playing = read("QUJD");
    ASSERT_TRUE(playing);
    EXPECT_TRUE(playing->source.isSpotify());
    EXPECT_EQ(playing->title, "Title");
    EXPECT_EQ(playing->artist, "Artist");
    EXPECT_EQ(playing->album, "Album");
    EXPECT_EQ(playing->duration, 200);
    EXPECT_EQ(playing->trackID, "/1");
    EXPECT_EQ(state.artwork(), "ABC");
}

TEST_F(ReadingTests, ComesToThePlayersPositionAtEveryMoment) {
    for (const double position : {0.0, 0.5, 42.125, 199.0}) {
        player.setPosition(position, start);
        const auto playing = read();
        for (const double later : {0.0, 0.3, 60.0, 500.0}) {
            EXPECT_NEAR(playing->positionAt(start + later), player.positionAt(start + later), 0.001);
        }
    }
}

TEST_F(ReadingTests, FollowsAPauseAndForgetsWhatWentAway) {
    (void)read("QUJD");
    player.setStatus(PlaybackStatus::paused, start + 10);
    player.track.album.clear();
    const auto paused = read();
    EXPECT_FALSE(paused->isPlaying);
    EXPECT_NEAR(paused->positionAt(start + 99), 10.5, 0.001);
    EXPECT_EQ(paused->album, "");
    EXPECT_EQ(state.artwork(), std::nullopt);
}

TEST_F(ReadingTests, ReadsNothingOnceNothingPlays) {
    (void)read();
    player.setStatus(PlaybackStatus::stopped, start);
    player.track = {};
    EXPECT_EQ(read(), std::nullopt);
}

TEST_F(ReadingTests, ReadsWhatThePlayerLetsOthersDo) {
    (void)read();
    EXPECT_TRUE(state.controls().canGoNext) << "a player that tells nothing";
    player.canGoNext = false;
    player.canPlay = true;
    (void)read();
    EXPECT_FALSE(state.controls().canGoNext);
    EXPECT_TRUE(state.controls().canToggle);
}

} // namespace
} // namespace veslora
