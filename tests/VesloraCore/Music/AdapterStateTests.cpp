// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/AdapterState.h"
#include "tests/VesloraCore/TestJson.h"

#include <gtest/gtest.h>

#include <map>

using namespace veslora;

namespace {

constexpr Timestamp fallback = 1'800'000'000;

std::string line(std::string_view payload, std::string_view more = "") {
    return R"({"type":"data")" + std::string(more) + R"(,"payload":)" + std::string(payload) + "}";
}

std::string diff(std::string_view payload) {
    return line(payload, R"(,"diff":true)");
}

AdapterState stateOf(std::string_view payload) {
    AdapterState state;
    EXPECT_TRUE(state.apply(line(payload))) << payload;
    return state;
}

std::optional<NowPlaying> read(std::string_view payload) {
    return stateOf(payload).nowPlaying(fallback);
}

} // namespace

TEST(AdapterState, ReadsEveryKey) {
    EXPECT_EQ(read(R"({"title":"Slow Harbour","artist":"The Piers","album":"Low Tide","duration":180.5,
                       "elapsedTime":12.25,"timestamp":"2023-11-14T22:13:20Z","playing":true,
                       "bundleIdentifier":"org.example.player","contentItemIdentifier":"7"})"),
              (NowPlaying{.source = {MusicSource::App{"org.example.player", "Player"}},
                          .title = "Slow Harbour",
                          .artist = "The Piers",
                          .album = "Low Tide",
                          .duration = 180.5,
                          .position = 12.25,
                          .readAt = 1'700'000'000,
                          .isPlaying = true,
                          .trackID = "7"}));
}

TEST(AdapterState, DoesWithoutAllButTheTitle) {
    const NowPlaying bare{.source = {MusicSource::App{}}, .title = "A", .readAt = fallback};
    EXPECT_EQ(read(R"({"title":"A"})"), bare);
    EXPECT_EQ(read(R"({"title":"A","artist":1,"album":null,"duration":"long","elapsedTime":true,"timestamp":5,
                       "playing":1,"bundleIdentifier":[],"contentItemIdentifier":{}})"),
              bare);
}

TEST(AdapterState, NeedsATitle) {
    EXPECT_EQ(AdapterState().nowPlaying(fallback), std::nullopt);
    EXPECT_EQ(read(R"({"title":"","artist":"The Piers","playing":true,"bundleIdentifier":"a.b"})"),
              std::nullopt);
    EXPECT_EQ(read(R"({"title":7})"), std::nullopt);
}

TEST(AdapterState, ATimeThatIsNoneFallsBack) {
    for (const char* time :
         {"", "yesterday", "2023-11-14T22:13:20", "2023-11-14T22:13:20.5Z", "2023-02-30T00:00:00Z"}) {
        const auto track = read(R"({"title":"A","timestamp":")" + std::string(time) + R"("})");
        ASSERT_TRUE(track) << time;
        EXPECT_EQ(track->readAt, fallback) << time;
    }
}

TEST(AdapterState, AnOldTimeStampMovesThePosition) {
    const auto track =
        read(R"({"title":"A","elapsedTime":10,"playing":true,"timestamp":"2023-11-14T22:13:20Z"})");
    EXPECT_EQ(track->positionAt(1'700'000'030), 40);
}

TEST(AdapterState, KnowsSpotify) {
    const AdapterState state = stateOf(R"({"title":"A","bundleIdentifier":"com.spotify.client"})");
    EXPECT_TRUE(state.isOfSpotify());
    EXPECT_TRUE(state.nowPlaying(fallback)->source.isSpotify());
    EXPECT_FALSE(stateOf(R"({"title":"A","bundleIdentifier":"com.spotify"})").isOfSpotify());
    EXPECT_FALSE(AdapterState().isOfSpotify());
}

TEST(AdapterState, RefusesEveryOtherLineAndKeepsWhatItHad) {
    AdapterState state = stateOf(R"({"title":"A","artist":"B"})");
    const AdapterState before = state;
    for (const char* refused :
         {"", "music", "[]", "7", R"({"type":"data","payload":{"title":"C"})", R"({"payload":{"title":"C"}})",
          R"({"type":"status","payload":{"title":"C"}})", R"({"type":1,"payload":{"title":"C"}})",
          R"({"type":"data","payload":[]})", R"({"type":"data","payload":null,"diff":true})",
          R"({"type":"data"})", "{\"type\":\"data\",\"payload\":{\"title\":\"\xFF\"}}"}) {
        EXPECT_FALSE(state.apply(refused)) << refused;
        EXPECT_EQ(state, before) << refused;
    }
}

TEST(AdapterState, AWholeLineDropsWhatItDoesNotName) {
    AdapterState state = stateOf(R"({"title":"A","artist":"B","artworkData":"Zm9v"})");
    for (const char* more :
         {"", R"(,"diff":false)", R"(,"diff":1)", R"(,"diff":"true")", R"(,"diff":null)"}) {
        ASSERT_TRUE(state.apply(line(R"({"title":"A","artist":"B"})")));
        ASSERT_TRUE(state.apply(line(R"({"title":"C"})", more))) << more;
        EXPECT_EQ(state.nowPlaying(fallback)->artist, "") << more;
        EXPECT_EQ(state.artwork(), std::nullopt) << more;
    }
}

TEST(AdapterState, ADiffKeepsWhatItDoesNotName) {
    AdapterState state = stateOf(R"({"title":"A","artist":"B","artworkData":"Zm9v"})");
    ASSERT_TRUE(state.apply(diff(R"({"playing":true,"album":"C"})")));
    const auto track = state.nowPlaying(fallback);
    EXPECT_EQ(track->artist, "B");
    EXPECT_EQ(track->album, "C");
    EXPECT_TRUE(track->isPlaying);
    EXPECT_EQ(state.artwork(), "foo");
}

TEST(AdapterState, ANullInADiffTakesBack) {
    AdapterState state =
        stateOf(R"({"title":"A","artist":"B","artworkData":"Zm9v","timestamp":"2023-11-14T22:13:20Z"})");
    ASSERT_TRUE(state.apply(diff(R"({"artworkData":null,"timestamp":null})")));
    EXPECT_EQ(state.artwork(), std::nullopt);
    EXPECT_EQ(state.nowPlaying(fallback)->artist, "B");
    EXPECT_EQ(state.nowPlaying(fallback)->readAt, fallback);
    ASSERT_TRUE(state.apply(diff(R"({"title":null})")));
    EXPECT_EQ(state.nowPlaying(fallback), std::nullopt);
}

TEST(AdapterState, ArtworkIsStrictBase64) {
    EXPECT_EQ(stateOf(R"({"artworkData":"Zm9v"})").artwork(), "foo");
    EXPECT_EQ(stateOf(R"({"artworkData":""})").artwork(), "");
    for (const char* payload : {R"({"artworkData":"Zm9v\n"})", R"({"artworkData":"Zm9"})",
                                R"({"artworkData":7})", R"({"artworkData":null})", "{}"}) {
        EXPECT_EQ(stateOf(payload).artwork(), std::nullopt) << payload;
    }
}

TEST(AdapterState, EveryControlWorksUnlessThePlayerSaysOtherwise) {
    EXPECT_EQ(AdapterState().controls(), MusicControls());
    EXPECT_EQ(stateOf(R"({"canGoNext":0,"canGoPrevious":"false","canPlay":null})").controls(),
              MusicControls());
    EXPECT_EQ(stateOf(R"({"canGoNext":false})").controls(), (MusicControls{.canGoNext = false}));
    EXPECT_EQ(stateOf(R"({"canGoPrevious":false,"canGoNext":true})").controls(),
              (MusicControls{.canGoPrevious = false}));
    EXPECT_EQ(stateOf(R"({"canPlay":false})").controls(), (MusicControls{.canToggle = false}));
}

TEST(AdapterState, MergesLikeAMapWhateverTheKeys) {
    test::JsonGenerator make;
    AdapterState state;
    std::map<std::string, Json> expected;
    for (int round = 0; round < 2000; ++round) {
        Json payload = Json::makeObject();
        for (int count = make.pick(6); count > 0; --count) {
            payload.set(make.text(), make.value(2));
        }
        const bool isDiff = make.pick(8) > 0;
        if (!isDiff) {
            expected.clear();
        }
        for (const Json::Member& member : payload.members()) {
            expected[member.key] = member.value;
        }
        const std::string text = payload.print(Json::Layout::compact);
        ASSERT_TRUE(state.apply(isDiff ? diff(text) : line(text)));
        ASSERT_EQ(state.payload.members().size(), expected.size());
        for (const auto& [key, value] : expected) {
            ASSERT_TRUE(state.payload.find(key));
            ASSERT_EQ(*state.payload.find(key), value);
        }
    }
}
