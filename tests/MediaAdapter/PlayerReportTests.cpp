// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerReport.h"
#include "VesloraCore/Music/AdapterState.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

/// 2023-11-14T22:13:20Z and a quarter.
constexpr Timestamp start = 1700000000.25;

Player playing() {
    Player player;
    player.name = "org.mpris.MediaPlayer2.vlc";
    player.status = PlaybackStatus::playing;
    player.track = {.id = "/1", .title = "Title", .artist = "Artist", .album = "Album", .length = 200.5};
    player.trackIdentifier = "/1";
    player.setPosition(12, start);
    return player;
}

std::string text(const Json& payload) {
    return payload.print(Json::Layout::compact);
}

TEST(PlayerReportTests, SaysAllThatIsKnown) {
    Player player = playing();
    player.canGoNext = true;
    player.canGoPrevious = false;
    player.canPlay = true;
    EXPECT_EQ(text(PlayerReport().payload(player, "QUJD")),
              R"({"album":"Album","artist":"Artist","artworkData":"QUJD","bundleIdentifier":"vlc",)"
              R"("canGoNext":true,"canGoPrevious":false,"canPlay":true,"contentItemIdentifier":"/1",)"
              R"("duration":200.5,"elapsedTime":12.75,"playing":true,"timestamp":"2023-11-14T22:13:21Z",)"
              R"("title":"Title"})");
}

TEST(PlayerReportTests, LeavesOutWhatIsUnknown) {
    Player player;
    player.status = PlaybackStatus::playing;
    EXPECT_EQ(text(PlayerReport().payload(player, "")),
              R"({"elapsedTime":0,"playing":true,"timestamp":"1970-01-01T00:00:00Z"})");
}

TEST(PlayerReportTests, TakesAPausedPositionAsItIs) {
    Player player = playing();
    player.setStatus(PlaybackStatus::paused, start + 2);
    EXPECT_EQ(*PlayerReport().payload(player, "").find("elapsedTime")->numberText(), "14");
}

TEST(PlayerReportTests, ATrackThatHasJustBegunIsNeverBehindItsStart) {
    Player player = playing();
    player.setPosition(0, start);
    EXPECT_EQ(*PlayerReport().payload(player, "").find("elapsedTime")->numberText(), "0.75");
}

TEST(PlayerReportTests, OfTwoWithinASecondTheLaterIsNotToldToBeTheEarlier) {
    // Another source's news has its exact moment; this one's has whole seconds.
    const Timestamp pausedElsewhere = start + 0.5;
    Player player = playing();
    player.setPosition(0, start + 0.6);
    AdapterState state;
    ASSERT_TRUE(state.apply(R"({"type":"data","payload":)" + text(PlayerReport().payload(player, "")) + "}"));
    const auto told = state.nowPlaying(0);
    ASSERT_TRUE(told);
    EXPECT_GE(told->readAt, pausedElsewhere);
    EXPECT_NEAR(told->positionAt(start + 1.6), 1, 0.001);
}

TEST(PlayerReportTests, SaysTheSameWhileThePositionMovesAsExpected) {
    PlayerReport report;
    Player player = playing();
    const Json before = report.payload(player, "");
    player.setPosition(17.05, start + 5);
    EXPECT_EQ(report.payload(player, ""), before);
    player.setPosition(18, start + 5);
    EXPECT_NE(report.payload(player, ""), before) << "a seek";
}

TEST(PlayerReportTests, SmallDifferencesDoNotAddUp) {
    PlayerReport report;
    Player player = playing();
    const Json before = report.payload(player, "");
    player.setPosition(12.06, start);
    EXPECT_EQ(report.payload(player, ""), before);
    player.setPosition(12.12, start);
    EXPECT_NE(report.payload(player, ""), before);
}

TEST(PlayerReportTests, SaysThePositionOfEveryOtherStatusAndTrack) {
    PlayerReport report;
    Player player = playing();
    player.setPosition(0.25, start);
    const Json before = report.payload(player, "");
    player.positionReadAt = start + 0.5;
    player.position = 0.75;
    EXPECT_EQ(report.payload(player, ""), before);
    player.setStatus(PlaybackStatus::paused, start + 0.5);
    EXPECT_EQ(report.payload(player, "").find("elapsedTime")->number(), 0.75);
}

TEST(PlayerReportTests, AStoppedPlayerIsReportedOnlyWithATitle) {
    PlayerReport report;
    Player player = playing();
    player.setStatus(PlaybackStatus::stopped, start);
    EXPECT_EQ(report.payload(player, "").find("playing")->boolean(), false);
    player.track.title.clear();
    EXPECT_EQ(text(report.payload(player, "")), "{}");
}

} // namespace
} // namespace veslora
