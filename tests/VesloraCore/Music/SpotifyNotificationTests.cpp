// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/SpotifyNotification.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;
using SpotifyNotification::UserInfo;

namespace {

constexpr Timestamp received = 1'800'000'000;

UserInfo playing() {
    return {{"Player State", "Playing"},     {"Name", "Slow Harbour"},     {"Artist", "The Piers"},
            {"Album", "Low Tide"},           {"Duration", 180000.0},       {"Playback Position", 12.5},
            {"Track ID", "spotify:track:1"}, {"Something Else", "ignored"}};
}

std::optional<NowPlaying> read(const UserInfo& userInfo) {
    return SpotifyNotification::nowPlaying(userInfo, received);
}

std::optional<NowPlaying> readWith(std::string_view key, SpotifyNotification::Value value) {
    UserInfo userInfo = playing();
    userInfo.insert_or_assign(std::string(key), std::move(value));
    return read(userInfo);
}

std::optional<NowPlaying> readWithout(std::string_view key) {
    UserInfo userInfo = playing();
    userInfo.erase(userInfo.find(key));
    return read(userInfo);
}

} // namespace

TEST(SpotifyNotification, ReadsTheDurationInMillisecondsAndThePositionInSeconds) {
    EXPECT_EQ(read(playing()), (NowPlaying{.source = {MusicSource::Spotify{}},
                                           .title = "Slow Harbour",
                                           .artist = "The Piers",
                                           .album = "Low Tide",
                                           .duration = 180,
                                           .position = 12.5,
                                           .readAt = received,
                                           .isPlaying = true,
                                           .trackID = "spotify:track:1"}));
}

TEST(SpotifyNotification, OnlyPlayingIsPlaying) {
    for (const char* state : {"Paused", "playing", "", "Buffering"}) {
        const auto track = readWith("Player State", state);
        ASSERT_TRUE(track) << state;
        EXPECT_FALSE(track->isPlaying) << state;
    }
}

TEST(SpotifyNotification, APlayerThatStoppedPlaysNothing) {
    EXPECT_EQ(readWith("Player State", "Stopped"), std::nullopt);
}

TEST(SpotifyNotification, NeedsAStateAndAName) {
    EXPECT_EQ(read({}), std::nullopt);
    EXPECT_EQ(readWithout("Player State"), std::nullopt);
    EXPECT_EQ(readWith("Player State", 1.0), std::nullopt);
    EXPECT_EQ(readWithout("Name"), std::nullopt);
    EXPECT_EQ(readWith("Name", 1.0), std::nullopt);
    EXPECT_EQ(readWith("Name", ""), std::nullopt);
    EXPECT_EQ(read({{"Player State", "Paused"}, {"Name", ""}}), std::nullopt);
}

TEST(SpotifyNotification, DoesWithoutAllElse) {
    const NowPlaying bare{
        .source = {MusicSource::Spotify{}}, .title = "A", .readAt = received, .isPlaying = true};
    EXPECT_EQ(read({{"Player State", "Playing"}, {"Name", "A"}}), bare);
    EXPECT_EQ(read({{"Player State", "Playing"},
                    {"Name", "A"},
                    {"Artist", 1.0},
                    {"Album", 2.0},
                    {"Duration", "long"},
                    {"Playback Position", "late"},
                    {"Track ID", 3.0}}),
              bare);
}

TEST(SpotifyNotification, NumbersThatAreNotFiniteAreMissing) {
    for (const double odd :
         {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(readWith("Duration", odd)->duration, 0);
        EXPECT_EQ(readWith("Playback Position", -odd)->position, 0);
    }
}
