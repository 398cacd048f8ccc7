// SPDX-License-Identifier: MIT
// Which cover is shown, whatever arrives in which order.
#include "tests/VesloraUI/Music/MusicScene.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace veslora {
namespace {

using test::cover;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const QImage red = cover(Qt::red);
const QImage blue = cover(Qt::blue);

class MusicArtworkTest : public MusicScene {
  protected:
    MusicArtworkTest() { model.setNeeded(true); }

    /// How often Spotify was asked for an address.
    [[nodiscard]] std::size_t asked() const { return scripts.ran.size(); }
};

TEST_F(MusicArtworkTest, ThePlayersOwnCoverIsDecodedInTheBackground) {
    const QSignalSpy told(&model, &MusicModel::artworkChanged);
    other("A", withCover(red));
    EXPECT_TRUE(model.artwork().isNull());
    EXPECT_EQ(platform.time.pendingBackground(), 1u);
    platform.time.runBackground();
    EXPECT_EQ(model.artwork(), red);
    EXPECT_EQ(told.count(), 1);
    EXPECT_THAT(scripts.ran, IsEmpty());
}

TEST_F(MusicArtworkTest, ACoverThatStaysIsDecodedOnce) {
    other("A", withCover(red));
    settle();
    otherDiff(R"({"playing":false})");
    other("B", withCover(red));
    EXPECT_EQ(platform.time.pendingBackground(), 0u);
    EXPECT_EQ(model.artwork(), red) << "an album has one cover";
}

TEST_F(MusicArtworkTest, APlayerWithoutACoverHasNone) {
    other("A", withCover(red));
    settle();
    other("A");
    EXPECT_TRUE(model.artwork().isNull());
    other("A", withCover(red));
    settle();
    otherDiff(R"({"artworkData":null})");
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, BytesThatAreNoImageAreNoCover) {
    other("A", withCover(red));
    settle();
    otherDiff(R"({"artworkData":"Zm9v"})");
    settle();
    EXPECT_TRUE(model.artwork().isNull());
    otherDiff(R"({"artworkData":"no base64"})");
    settle();
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, AnOverlongCoverIsNotEvenTried) {
    other("A", withCover(red));
    settle();
    otherDiff(R"({"artworkData":")" + std::string((std::size_t{8} << 20) + 4, 'A') + R"("})");
    EXPECT_EQ(platform.time.pendingBackground(), 0u);
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, ABetterCoverOfTheSameTrackComesWithoutAGap) {
    other("A", withCover(red));
    settle();
    const QSignalSpy told(&model, &MusicModel::artworkChanged);
    other("A", withCover(blue));
    EXPECT_EQ(model.artwork(), red);
    settle();
    EXPECT_EQ(model.artwork(), blue);
    EXPECT_EQ(told.count(), 1);
}

TEST_F(MusicArtworkTest, AnotherTracksCoverGoesAtOnce) {
    other("A", withCover(red));
    settle();
    other("B", withCover(blue));
    EXPECT_TRUE(model.artwork().isNull()) << "although the player numbers no tracks";
    settle();
    EXPECT_EQ(model.artwork(), blue);
    other("B", withCover(red), "org.example.another");
    EXPECT_TRUE(model.artwork().isNull()) << "of another player";
}

TEST_F(MusicArtworkTest, OnlyTheLastOfSeveralCoversIsShown) {
    other("A", withCover(red));
    other("B", withCover(blue));
    settle();
    EXPECT_EQ(model.artwork(), blue);
    other("C", withCover(red));
    other("D");
    settle();
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, ACoverTakenBackWhileABetterOneIsDecodedGoesAtOnce) {
    other("A", withCover(red));
    settle();
    otherDiff(R"({"artworkData":")" + test::base64Of(blue) + R"("})");
    otherDiff(R"({"artworkData":null})");
    EXPECT_TRUE(model.artwork().isNull());
    settle();
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, ACoverDecodedForNobodyIsNotShown) {
    other("A", withCover(red));
    settings.set(SettingsKeys::musicShowOtherApps, false);
    model.settingsChanged();
    settle();
    EXPECT_TRUE(model.artwork().isNull());
    settings.set(SettingsKeys::musicShowOtherApps, true);
    model.settingsChanged();
    EXPECT_EQ(model.artwork(), red);
}

TEST_F(MusicArtworkTest, SpotifysCoverComesFromItsAddress) {
    serve(red, "https://i.example/a");
    scripts.results[artworkUrl] = " \n https://i.example/a\n";
    spotify("A");
    EXPECT_TRUE(model.artwork().isNull());
    settle();
    EXPECT_EQ(model.artwork(), red);
    EXPECT_THAT(scripts.ran, ElementsAre(artworkUrl));
    EXPECT_THAT(web.loaded, ElementsAre("https://i.example/a"));
}

TEST_F(MusicArtworkTest, OnlyAnAddressOfHttpsIsLoaded) {
    int number = 0;
    for (const char* address :
         {"", "http://i.example/a", "HTTPS://i.example/a", "file:///etc/passwd", "i.example/a",
          "https:", "https://", "https:///a", "https://i.exa mple/a", "missing value"}) {
        scripts.results[artworkUrl] = std::string(address);
        spotify(std::to_string(++number));
        settle();
    }
    scripts.results[artworkUrl] = "https://i.example/" + std::string(5000, 'a');
    spotify("long");
    settle();
    EXPECT_EQ(asked(), static_cast<std::size_t>(number) + 1);
    EXPECT_THAT(web.loaded, IsEmpty());
}

TEST_F(MusicArtworkTest, ARefusedAddressSaysNothingAboutPermission) {
    scripts.results[artworkUrl] = MusicError::automationDenied;
    spotify("A");
    settle();
    EXPECT_FALSE(model.automationDenied());
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, AFailureIsNotRepeatedBeforeTheTrackChanges) {
    spotify("A");
    settle();
    serve(red);
    spotify("A", "Paused");
    settle();
    EXPECT_EQ(asked(), 1u);
    spotify("B");
    settle();
    EXPECT_EQ(asked(), 2u);
    EXPECT_EQ(model.artwork(), red);
    spotify("A");
    EXPECT_EQ(asked(), 3u);
}

TEST_F(MusicArtworkTest, AFetchUnderWayIsNotRepeated) {
    serve(red);
    scripts.answerTime = 2;
    spotify("A");
    spotify("A", "Paused");
    EXPECT_EQ(asked(), 1u);
    spotify("B");
    spotify("A");
    EXPECT_THAT(scripts.ran, SizeIs(2)) << "A's is under way, and A plays again";
    settle();
    EXPECT_EQ(model.artwork(), red);
}

TEST_F(MusicArtworkTest, TheOldCoverDoesNotStandUnderANewTitle) {
    serve(red);
    spotify("A");
    settle();
    spotify("B");
    EXPECT_TRUE(model.artwork().isNull());
}

TEST_F(MusicArtworkTest, ACoverThatWasFetchedOnceIsThereAtOnce) {
    serve(red, "https://i.example/a");
    spotify("A");
    settle();
    serve(blue, "https://i.example/b");
    spotify("B");
    settle();
    EXPECT_EQ(model.artwork(), blue);
    spotify("A");
    EXPECT_EQ(model.artwork(), red);
    EXPECT_EQ(asked(), 2u);
}

TEST_F(MusicArtworkTest, ACoverThatComesLateIsOnlyRemembered) {
    serve(red, "https://i.example/a");
    web.loadTime = 5;
    spotify("A");
    platform.advance(1);
    ASSERT_THAT(web.loaded, SizeIs(1));
    scripts.results[artworkUrl] = MusicError::failed;
    spotify("B");
    settle();
    EXPECT_TRUE(model.artwork().isNull());
    spotify("A");
    EXPECT_EQ(model.artwork(), red);
}

TEST_F(MusicArtworkTest, AnotherTracksAddressIsNotTakenForItsOwn) {
    scripts.answerTime = 2;
    serve(blue, "https://i.example/b");
    spotify("A");
    platform.advance(1);
    spotify("B");
    settle();
    EXPECT_EQ(model.artwork(), blue);
    serve(red, "https://i.example/a");
    spotify("A");
    settle();
    EXPECT_EQ(model.artwork(), red) << "the address that came while B played was not kept for A";
}

TEST_F(MusicArtworkTest, AFetchGoesOnWhileAnotherPlayerIsShown) {
    serve(red);
    scripts.answerTime = 2;
    spotify("A");
    spotify("A", "Paused");
    other("B");
    ASSERT_EQ(shown(), "B");
    settle();
    EXPECT_TRUE(model.artwork().isNull()) << "it is not B's";
    spotify("A");
    EXPECT_EQ(model.artwork(), red);
}

TEST_F(MusicArtworkTest, TwentyCoversAreRemembered) {
    for (int number = 0; number <= 20; ++number) {
        serve(cover(QColor(number, 0, 0)), "https://i.example/" + std::to_string(number));
        spotify(std::to_string(number));
        settle();
    }
    EXPECT_EQ(asked(), 21u);
    spotify("1");
    EXPECT_EQ(asked(), 21u);
    EXPECT_EQ(model.artwork(), cover(QColor(1, 0, 0)));
    spotify("0");
    EXPECT_EQ(asked(), 22u);
}

TEST_F(MusicArtworkTest, ATrackWithoutAnIdKeepsWhatIsShown) {
    serve(red);
    spotify("A");
    settle();
    notifications.tell({{"Player State", "Playing"}, {"Name", "Local file"}});
    EXPECT_EQ(model.artwork(), red);
    EXPECT_EQ(asked(), 1u);
}

TEST_F(MusicArtworkTest, WithoutNeedNothingIsFetchedUntilThereIsOne) {
    serve(red);
    spotify("A");
    settle();
    model.setNeeded(false);
    spotify("B");
    settle();
    EXPECT_TRUE(model.artwork().isNull());
    EXPECT_EQ(asked(), 1u);
    model.setNeeded(true);
    spotify("B", "Paused");
    settle();
    EXPECT_EQ(model.artwork(), red);
}

TEST_F(MusicArtworkTest, TheAdaptersCoverOfSpotifySavesTheFetch) {
    serve(blue);
    other("A", withCover(red), "com.spotify.client");
    EXPECT_EQ(asked(), 0u) << "the cover may yet turn out to be one";
    settle();
    EXPECT_EQ(model.artwork(), red);
    spotify("A");
    EXPECT_EQ(model.artwork(), red);
    settle();
    EXPECT_EQ(asked(), 0u);
}

TEST_F(MusicArtworkTest, ABrokenCoverOfTheAdaptersIsMadeUpFor) {
    serve(blue);
    other("A", R"(,"contentItemIdentifier":"a","artworkData":"Zm9v")", "com.spotify.client");
    EXPECT_EQ(asked(), 0u);
    settle();
    settle();
    EXPECT_EQ(asked(), 1u);
    EXPECT_EQ(model.artwork(), blue);
}

TEST_F(MusicArtworkTest, ACoverThatTheAdapterTakesBackIsFetched) {
    serve(blue);
    other("A", withCover(red), "com.spotify.client");
    settle();
    spotify("B");
    ASSERT_EQ(model.artwork(), red) << "the adapter is a moment behind";
    otherDiff(R"({"title":"B","artworkData":null})");
    EXPECT_TRUE(model.artwork().isNull());
    settle();
    EXPECT_EQ(model.artwork(), blue);
}

TEST_F(MusicArtworkTest, AnotherPlayersCoverIsNotSpotifys) {
    other("A", withCover(red));
    settle();
    spotify("B");
    EXPECT_TRUE(model.artwork().isNull());
    spotifyStops();
    EXPECT_EQ(model.artwork(), red);
}

} // namespace
} // namespace veslora
