// SPDX-License-Identifier: MIT
// Spotify's player on the bus, with a player of the test's own in its place.
#include "VesloraLinux/DBus/SpotifyOnBus.h"
#include "VesloraUI/Platform/SpotifyScripts.h"
#include "tests/VesloraLinux/DBus/MockPlayer.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QDBusObjectPath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using testing::handleEventsFor;
using ::testing::IsEmpty;
using testing::MockPlayer;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;
using testing::waitUntil;
using UserInfo = SpotifyNotification::UserInfo;
using Result = ScriptRunning::Result;

QVariantMap metadata(const QString& title) {
    return {{"mpris:trackid", "spotify:track:" + title},
            {"xesam:title", title},
            {"xesam:artist", QStringList{"Marta Valdt", "Oro"}},
            {"xesam:album", "Harbours"},
            {"mpris:length", qulonglong{243'000'000}},
            {"mpris:artUrl", "https://covers.example/" + title}};
}

class SpotifyOnBusTest : public ::testing::Test {
  protected:
    SpotifyOnBusTest() {
        player.properties = {{"PlaybackStatus", "Playing"},
                             {"Metadata", metadata("Harbour")},
                             {"Position", qlonglong{102'500'000}}};
        QObject::connect(&spotify, &SpotifyNotifications::playbackStateChanged, &spotify,
                         [this](const UserInfo& info) { told.push_back(info); });
    }
    void start() {
        ASSERT_TRUE(player.come());
        spotify.start();
        ASSERT_TRUE(waitUntil([this] { return told.size() == 1; }));
        time.advance(1);
    }
    /// What the last notification has under a key.
    [[nodiscard]] std::string last(std::string_view key) const {
        const auto found = told.back().find(key);
        return found == told.back().end() ? "none" : std::get<std::string>(found->second);
    }
    void run(std::string_view script) {
        scripts.push_back(spotify.run(std::string(script), [this](const Result& result) {
            results.push_back(result);
            toldBefore.push_back(told.size());
        }));
    }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    ManualScheduler time;
    MockPlayer player{bus.connect()};
    SpotifyOnBus spotify{time, bus.connect()};
    std::vector<UserInfo> told;
    std::vector<Task> scripts;
    std::vector<Result> results;
    std::vector<std::size_t> toldBefore; ///< notifications that were told when each result came
};

TEST_F(SpotifyOnBusTest, APlayerThatRunsAlreadyIsTold) {
    start();
    EXPECT_THAT(told.front(),
                UnorderedElementsAre(Pair("Player State", SpotifyNotification::Value("Playing")),
                                     Pair("Name", SpotifyNotification::Value("Harbour")),
                                     Pair("Artist", SpotifyNotification::Value("Marta Valdt, Oro")),
                                     Pair("Album", SpotifyNotification::Value("Harbours")),
                                     Pair("Track ID", SpotifyNotification::Value("spotify:track:Harbour")),
                                     Pair("Duration", SpotifyNotification::Value(243'000.0)),
                                     Pair("Playback Position", SpotifyNotification::Value(102.5))));
}

TEST_F(SpotifyOnBusTest, NobodyStartsIt) {
    spotify.start();
    handleEventsFor(100);
    EXPECT_THAT(told, IsEmpty());
    run(SpotifyScripts::togglePlayPause);
    ASSERT_TRUE(waitUntil([this] { return results.size() == 1; }));
    EXPECT_EQ(results.front(), Result(MusicError::failed));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(SpotifyOnBusTest, FollowsChangesSeeksAndItsEnd) {
    start();
    player.change("PlaybackStatus", "Paused");
    ASSERT_TRUE(waitUntil([this] { return told.size() == 2; }));
    EXPECT_EQ(last("Player State"), "Paused");
    time.advance(1);
    player.change("Metadata", metadata("Rain"));
    ASSERT_TRUE(waitUntil([this] { return told.size() == 3; }));
    EXPECT_EQ(last("Name"), "Rain");
    time.advance(1);
    player.seek(5'000'000);
    ASSERT_TRUE(waitUntil([this] { return told.size() == 4; }));
    EXPECT_EQ(std::get<double>(told.back()["Playback Position"]), 5);
    player.leave();
    ASSERT_TRUE(waitUntil([this] { return told.size() == 5; }));
    EXPECT_EQ(last("Player State"), "Stopped");
    time.advance(1);
    ASSERT_TRUE(player.come());
    ASSERT_TRUE(waitUntil([this] { return told.size() == 6; }));
    EXPECT_EQ(last("Name"), "Rain");
}

TEST_F(SpotifyOnBusTest, ALeapIsBelievedBeforeThePlayerIsThere) {
    start();
    player.seek(5'000'000);
    player.properties["Position"] = qlonglong{102'500'000};
    ASSERT_TRUE(waitUntil([this] { return told.size() == 2; }));
    EXPECT_EQ(std::get<double>(told.back()["Playback Position"]), 5);
    time.advance(1);
    player.properties["Position"] = qlonglong{6'000'000};
    player.change("PlaybackStatus", "Paused");
    ASSERT_TRUE(waitUntil([this] { return told.size() == 3; }));
    EXPECT_EQ(std::get<double>(told.back()["Playback Position"]), 6);
}

TEST_F(SpotifyOnBusTest, AnotherPlayersChangesAreNotIts) {
    start();
    MockPlayer other(bus.connect(), "org.mpris.MediaPlayer2.other");
    ASSERT_TRUE(other.come());
    other.change("PlaybackStatus", "Paused");
    other.seek(1);
    other.leave();
    handleEventsFor(100);
    EXPECT_THAT(told, SizeIs(1));
    EXPECT_EQ(player.looks, 1);
}

TEST_F(SpotifyOnBusTest, AStormOfChangesIsLookedAtByItsPaceAndItsEndIsSeen) {
    start();
    for (int count = 0; count < 500; ++count) {
        player.change("PlaybackStatus", count % 2 == 0 ? "Paused" : "Playing");
    }
    player.change("PlaybackStatus", "Paused");
    handleEventsFor(100);
    EXPECT_EQ(player.looks, 2) << "one at once, and no other before its time";
    time.advance(SpotifyOnBus::pace);
    ASSERT_TRUE(waitUntil([this] { return told.size() == 3; }));
    EXPECT_EQ(last("Player State"), "Paused");
    time.advance(10);
    handleEventsFor(50);
    EXPECT_EQ(player.looks, 3);
}

TEST_F(SpotifyOnBusTest, ScriptsCommandItOneAfterTheOther) {
    start();
    player.hesitates = true;
    for (const auto script :
         {SpotifyScripts::togglePlayPause, SpotifyScripts::next, SpotifyScripts::previous}) {
        run(script);
    }
    EXPECT_THAT(results, IsEmpty()) << "never within the call";
    ASSERT_TRUE(waitUntil([this] { return player.told.size() == 1; }));
    handleEventsFor(50);
    EXPECT_THAT(player.told, ElementsAre("PlayPause"));
    player.answerAll();
    ASSERT_TRUE(waitUntil([this] { return results.size() == 3; }));
    EXPECT_THAT(player.told, ElementsAre("PlayPause", "Next", "Previous"));
    EXPECT_THAT(results, ElementsAre(Result(""), Result(""), Result("")));
}

TEST_F(SpotifyOnBusTest, AScriptGivesTheAddressOfTheCover) {
    start();
    run(SpotifyScripts::artworkUrl);
    ASSERT_TRUE(waitUntil([this] { return results.size() == 1; }));
    EXPECT_EQ(results.front(), Result("https://covers.example/Harbour"));
    player.properties["Metadata"] = 7;
    run(SpotifyScripts::artworkUrl);
    ASSERT_TRUE(waitUntil([this] { return results.size() == 2; }));
    EXPECT_EQ(results.back(), Result(""));
}

TEST_F(SpotifyOnBusTest, ARefusalAndAnUnknownScriptFail) {
    start();
    player.refuses = true;
    run(SpotifyScripts::next);
    run("tell application \"Finder\" to quit");
    ASSERT_TRUE(waitUntil([this] { return results.size() == 2; }));
    EXPECT_THAT(results, ElementsAre(Result(MusicError::failed), Result(MusicError::failed)));
    EXPECT_THAT(player.told, ElementsAre("Next"));
}

TEST_F(SpotifyOnBusTest, ADroppedResultHoldsUpNobody) {
    start();
    run(SpotifyScripts::next);
    run(SpotifyScripts::previous);
    scripts.front().cancel();
    ASSERT_TRUE(waitUntil([this] { return results.size() == 1; }));
    EXPECT_THAT(player.told, ElementsAre("Next", "Previous"));
}

TEST_F(SpotifyOnBusTest, WhatChangedBeforeTheAnswerIsToldBeforeTheResult) {
    start();
    player.change("PlaybackStatus", "Paused");
    run(SpotifyScripts::togglePlayPause);
    player.change("Metadata", metadata("Rain"));
    ASSERT_TRUE(waitUntil([&] {
        time.advance(SpotifyOnBus::pace);
        return results.size() == 1;
    }));
    EXPECT_EQ(told.at(toldBefore.front() - 1).at("Name"), SpotifyNotification::Value("Rain"));
}

TEST_F(SpotifyOnBusTest, APlayerThatNeverStopsChangingDoesNotHoldUpAResult) {
    start();
    // The one by which it never stops: the bus itself is connected too, to hear of the object's end.
    const auto storm = QObject::connect(&spotify, &SpotifyNotifications::playbackStateChanged, &spotify,
                                        [this] { player.seek(player.looks); });
    player.seek(0);
    run(SpotifyScripts::next);
    EXPECT_TRUE(waitUntil([&] {
        time.advance(SpotifyOnBus::pace);
        return results.size() == 1;
    }));
    QObject::disconnect(storm);
}

TEST_F(SpotifyOnBusTest, ValuesOfOtherTypesAreLeftOut) {
    player.properties = {
        {"PlaybackStatus", 1},
        {"Position", "here"},
        {"Metadata", QVariantMap{{"xesam:title", 4.0},
                                 {"xesam:artist", "Alone"},
                                 {"mpris:length", "long"},
                                 {"mpris:trackid", QVariant::fromValue(QDBusObjectPath("/a/b"))}}}};
    start();
    EXPECT_THAT(told.front(), UnorderedElementsAre(Pair("Artist", SpotifyNotification::Value("Alone")),
                                                   Pair("Track ID", SpotifyNotification::Value("/a/b"))));
}

TEST(SpotifyWithoutABus, IsSilentAndRefuses) {
    const testing::CoreApplication application;
    ManualScheduler time;
    SpotifyOnBus spotify(time, std::nullopt);
    spotify.start();
    std::vector<Result> results;
    const Task task = spotify.run(std::string(SpotifyScripts::next),
                                  [&results](const Result& result) { results.push_back(result); });
    ASSERT_TRUE(waitUntil([&results] { return results.size() == 1; }));
    EXPECT_EQ(results.front(), Result(MusicError::failed));
}

} // namespace
} // namespace veslora
