// SPDX-License-Identifier: MIT
// The music widget and the wings, drawn and pressed.
#include "VesloraUI/Music/MusicLevelsPresenter.h"
#include "VesloraUI/Music/MusicWidgetPresenter.h"
#include "tests/VesloraUI/Fixtures/Covers.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

class MusicViewsTest : public testing::Test {
  protected:
    MusicViewsTest() {
        scene.music.startObservingSpotify();
        scene.music.setNeeded(true);
    }
    void TearDown() override { scene.close(); }

    void showWidget(bool isWide) {
        scene.show("Music/MusicWidget.qml",
                   {{"music", QVariant::fromValue(&scene.music)},
                    {"isWide", isWide},
                    {"width", isWide ? 230 : 150},
                    {"height", 112}},
                   {300, 160});
    }
    void spotify(const std::string& name, const std::string& state = "Playing", double length = 243000) {
        scene.platform.spotify.tell({{"Player State", state},
                                     {"Name", name},
                                     {"Artist", "Marta Valdt"},
                                     {"Track ID", name},
                                     {"Duration", length},
                                     {"Playback Position", 102.0}});
    }
    void other(const std::string& payload) {
        scene.platform.adapter.print(R"({"type":"data","payload":{"title":"Rain",)" + payload + "}}");
        // The cover is decoded in the background.
        scene.platform.time.runBackground();
        if (scene.isShown()) {
            scene.advance(0);
        }
    }
    [[nodiscard]] QString helpOf(const QString& name) const {
        return scene.itemNamed(name)->property("helpText").toString();
    }

    Scene scene;
};

TEST_F(MusicViewsTest, WithoutATrackItOffersToOpenSpotify) {
    for (const bool isWide : {false, true}) {
        showWidget(isWide);
        EXPECT_THAT(scene.texts(), ElementsAre("Nothing playing", "Open Spotify"));
        scene.press("Open Spotify");
    }
    EXPECT_THAT(scene.platform.apps.opened, ElementsAre("com.spotify.client", "com.spotify.client"));
}

TEST_F(MusicViewsTest, TheWideWidgetTellsAllOfIt) {
    spotify("Slow Harbour");
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Spotify", "Slow Harbour", "Marta Valdt", "1:42", "4:03"));
}

TEST_F(MusicViewsTest, TheSmallWidgetTellsWhoPlaysAndWhat) {
    other(R"("bundleIdentifier":"org.mozilla.firefox","playing":true)");
    showWidget(false);
    EXPECT_THAT(scene.texts(), ElementsAre("Firefox", "Rain"));
}

TEST_F(MusicViewsTest, ThePositionMovesWhileItPlaysAndRestsWhilePaused) {
    spotify("Slow Harbour");
    showWidget(true);
    scene.advance(10);
    EXPECT_THAT(scene.texts(), Contains(QString("1:52")));
    spotify("Slow Harbour", "Paused");
    scene.advance(10);
    EXPECT_THAT(scene.texts(), Contains(QString("1:42")));
}

TEST_F(MusicViewsTest, ATrackOfUnknownLengthShowsAnEmptyMeterAndRunsOn) {
    spotify("Stream", "Playing", 0);
    showWidget(true);
    scene.advance(5);
    EXPECT_THAT(scene.texts(), ElementsAre("Spotify", "Stream", "Marta Valdt", "1:47", "0:00"));
    EXPECT_EQ(scene.itemWith("segments", 16)->property("lit").toInt(), 0);
}

TEST_F(MusicViewsTest, TheEndOfATrackIsNotPassed) {
    spotify("Slow Harbour");
    showWidget(true);
    scene.advance(1000);
    EXPECT_THAT(scene.texts(), ElementsAre("Spotify", "Slow Harbour", "Marta Valdt", "4:03", "4:03"));
    EXPECT_EQ(scene.itemWith("segments", 16)->property("lit").toInt(), 16);
}

TEST_F(MusicViewsTest, TheKeysCommandThePlayer) {
    other(R"("playing":true)");
    for (const bool isWide : {false, true}) {
        showWidget(isWide);
        for (const char* name : {"Previous", "Pause", "Next"}) {
            EXPECT_EQ(helpOf(name), name);
            scene.press(name);
        }
    }
    EXPECT_THAT(scene.platform.adapter.sent,
                ElementsAre(AdapterCommand::previous, AdapterCommand::togglePlayPause, AdapterCommand::next,
                            AdapterCommand::previous, AdapterCommand::togglePlayPause, AdapterCommand::next));
    other(R"("playing":false)");
    EXPECT_TRUE(scene.shows("Play"));
    EXPECT_FALSE(scene.shows("Pause"));
}

TEST_F(MusicViewsTest, WhatAPlayerCannotDoIsDimmed) {
    other(R"("playing":true,"canGoNext":false,"canGoPrevious":false)");
    showWidget(true);
    EXPECT_FALSE(scene.isEnabled("Next"));
    EXPECT_FALSE(scene.isEnabled("Previous"));
    EXPECT_TRUE(scene.isEnabled("Pause"));
    scene.press("Next");
    EXPECT_THAT(scene.platform.adapter.sent, SizeIs(0));
}

TEST_F(MusicViewsTest, ACoverThatComesLaterMovesNothing) {
    other(R"("playing":true)");
    showWidget(true);
    const QPointF title = scene.itemWith("text", "Rain")->mapToScene({});
    EXPECT_NE(scene.itemWith("name", "music.note"), nullptr);
    const auto base64 = test::base64Of(test::cover(Qt::red, 300, 200));
    other(R"("playing":true,"artworkData":")" + base64 + '"');
    EXPECT_EQ(scene.itemWith("name", "music.note"), nullptr);
    EXPECT_EQ(scene.itemWith("text", "Rain")->mapToScene({}), title);
    EXPECT_EQ(scene.picture().pixelColor(43, 56), QColor(Qt::red));
}

TEST_F(MusicViewsTest, APausedCoverIsDimmer) {
    const auto base64 = test::base64Of(test::cover(Qt::red));
    other(R"("playing":false,"artworkData":")" + base64 + '"');
    showWidget(true);
    EXPECT_NEAR(scene.picture().pixelColor(43, 56).red(), 255 * 0.6, 2);
}

TEST_F(MusicViewsTest, LongAndForeignTitlesStayOnOneLineInTheirRoom) {
    for (const bool isWide : {false, true}) {
        for (const QString& title : {QString(10000, 'W'), QString::fromUtf8("موسيقى هادئة للنوم والاسترخاء"),
                                     QString::fromUtf8("เพลงบรรเลงยาวมากสำหรับฝน"),
                                     QString::fromUtf8("🎵🎶🎷").repeated(50), QStringLiteral("two\nlines")}) {
            spotify(title.toStdString());
            showWidget(isWide);
            const auto* item = scene.itemWith("lineCount", 1);
            ASSERT_NE(item, nullptr);
            for (const QString& text : scene.texts()) {
                EXPECT_LE(text.size(), MusicWidgetPresenter::longest);
                EXPECT_FALSE(text.contains('\n'));
                const auto* shown = scene.itemWith("text", text);
                EXPECT_LE(shown->mapToScene({shown->width(), 0}).x(), isWide ? 230.01 : 150.01);
            }
        }
    }
}

class MusicWingsTest : public MusicViewsTest {
  protected:
    [[nodiscard]] MusicLevelsPresenter& levels() const {
        auto* found = scene.window().findChild<MusicLevelsPresenter*>();
        return found ? *found : *scene.view().findChild<MusicLevelsPresenter*>();
    }
    void showWings() {
        scene.show("Music/MusicLiveActivityView.qml",
                   {{"music", QVariant::fromValue(&scene.music)},
                    {"notchWidth", 200},
                    {"notchHeight", 28},
                    {"wingWidth", 37}},
                   {274, 28});
    }
};

TEST_F(MusicWingsTest, TheBarsMoveWhileItPlaysOnly) {
    spotify("Slow Harbour");
    showWings();
    scene.advance(0.18);
    const auto first = levels().levels();
    EXPECT_THAT(first, SizeIs(5));
    EXPECT_THAT(first, Each(testing::AllOf(testing::Ge(0.25), testing::Le(1.0))));
    scene.advance(0.18);
    EXPECT_NE(levels().levels(), first);
    EXPECT_THAT(levels().heights(), Each(testing::AllOf(testing::Gt(0.2), testing::Le(1.0))));
    EXPECT_THAT(levels().heights(), testing::Not(Each(levels().heights().front())));
    spotify("Slow Harbour", "Paused");
    scene.advance(0);
    EXPECT_THAT(levels().levels(), Each(0.2));
    EXPECT_TRUE(levels().isMoving()) << "on their way";
    scene.advance(2);
    EXPECT_THAT(levels().heights(), Each(0.2));
    const auto pending = scene.platform.time.pending();
    scene.advance(5);
    EXPECT_THAT(levels().levels(), Each(0.2));
    EXPECT_EQ(scene.platform.time.pending(), pending) << "and nothing ticks";
}

TEST_F(MusicWingsTest, TheBarsStandStillWhereTheDesktopWantsLessMotion) {
    scene.platform.look.change({.isTold = true, .reducedMotion = true});
    spotify("Slow Harbour");
    showWings();
    const auto heights = levels().heights();
    EXPECT_THAT(heights, Each(testing::Gt(0.2)));
    scene.advance(1);
    EXPECT_EQ(levels().heights(), heights);
    EXPECT_FALSE(levels().isMoving());
    spotify("Slow Harbour", "Paused");
    EXPECT_THAT(levels().heights(), Each(0.2));
    EXPECT_FALSE(levels().isMoving());
    spotify("Slow Harbour");
    scene.platform.look.change({});
    scene.advance(1);
    EXPECT_NE(levels().levels(), heights) << "they move again";
}

TEST_F(MusicWingsTest, TheBarsAreDrawnFifteenTimesASecondAtMost) {
    spotify("Slow Harbour");
    showWings();
    QList<double> last;
    int drawn = 0;
    const auto connection = QObject::connect(&levels(), &Presenter::changed, &scene.view(), [&] {
        drawn += std::exchange(last, levels().heights()) != levels().heights();
    });
    scene.platform.advance(10);
    QObject::disconnect(connection);
    EXPECT_LE(drawn, 151);
    EXPECT_GE(drawn, 140);
}

TEST_F(MusicWingsTest, AtRestTheBarsAreAsHighAsTheyShouldBe) {
    spotify("Slow Harbour", "Paused");
    showWings();
    const auto* bar = scene.itemWith("radius", 1);
    ASSERT_NE(bar, nullptr);
    EXPECT_NEAR(bar->height(), 5.2, 1e-9);
    EXPECT_EQ(bar->width(), 2.5);
}

TEST_F(MusicWingsTest, TheClosedIslandShowsItAndLetsGoTenSecondsAfterAPause) {
    SceneIsland island{scene};
    scene.music.onChange = [&island] { island.refresh(); };
    island.show();
    spotify("Slow Harbour");
    EXPECT_EQ(island.model.state(), IslandState::musicActivity);
    EXPECT_EQ(island.model.content(), NotchViewModel::Music);
    EXPECT_EQ(island.model.islandWidth(), 274);
    spotify("Slow Harbour", "Paused");
    scene.platform.advance(9.9);
    island.refresh();
    EXPECT_EQ(island.model.state(), IslandState::musicActivity);
    scene.platform.advance(0.1);
    island.refresh();
    EXPECT_EQ(island.model.state(), IslandState::closed);
    scene.music.onChange = nullptr;
}

} // namespace
} // namespace veslora
