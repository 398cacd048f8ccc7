// SPDX-License-Identifier: MIT
// The metronome's widget and its wings, drawn, pressed and heard.
#include "VesloraUI/Metronome/BeatWatch.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"

#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MetronomeViewsTest : public testing::Test {
  protected:
    void TearDown() override { scene.close(); }

    void showWidget(bool isWide) {
        scene.show("Metronome/MetronomeWidget.qml",
                   {{"metronome", QVariant::fromValue(&scene.metronome)},
                    {"isWide", isWide},
                    {"width", isWide ? 230 : 150},
                    {"height", 112}},
                   {300, 160});
    }
    void scroll(int angle) {
        const QPointF at = scene.centerOf("BPM");
        QWheelEvent event(at, scene.window().mapToGlobal(at), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&scene.window(), &event);
        scene.advance(0);
    }
    /// From the left; those that are lit by 1 for the first of a bar, by 0.75 for another, and the others by
    /// 0.
    [[nodiscard]] std::vector<double> pads() const {
        std::vector<double> found;
        collect(*scene.window().contentItem(), found);
        return found;
    }
    /// The beat that the widget shows, -1 for none.
    [[nodiscard]] int lit() const {
        const auto all = pads();
        const auto found = std::ranges::find_if(all, [](double pad) { return pad > 0; });
        return found == all.end() ? -1 : static_cast<int>(found - all.begin());
    }

    Scene scene;

  private:
    static void collect(const QQuickItem& item, std::vector<double>& found) {
        if (const QVariant isLit = item.property("isLit"); isLit.isValid()) {
            const auto color = item.childItems().front()->property("color").value<QColor>();
            found.push_back(isLit.toBool() ? color.alphaF() : 0);
        }
        for (const QQuickItem* child : item.childItems()) {
            collect(*child, found);
        }
    }
};

TEST_F(MetronomeViewsTest, TheWideWidgetHasEveryKey) {
    showWidget(true);
    EXPECT_THAT(scene.texts(),
                ElementsAre("Metronome", "4/4", "1", "2", "0", "BPM", "1", "2", "3", "4", "Start"));
    for (const auto& [name, help] :
         {std::pair("4/4", "Change the time signature"), std::pair("Tap", "Tap the tempo"),
          std::pair("Slower", "Slower"), std::pair("Faster", "Faster")}) {
        EXPECT_EQ(scene.itemNamed(name)->property("helpText").toString(), help);
    }
}

TEST_F(MetronomeViewsTest, TheSmallWidgetCanBeStartedToo) {
    showWidget(false);
    EXPECT_THAT(scene.texts(), Contains("4/4"));
    EXPECT_THAT(pads(), SizeIs(4));
    scene.press("Start");
    EXPECT_TRUE(scene.metronome.isRunning());
    scene.press("Stop");
    EXPECT_FALSE(scene.metronome.isRunning());
}

TEST_F(MetronomeViewsTest, KeysAndWheelChangeTheTempoWithATap) {
    showWidget(true);
    scene.press("Faster");
    EXPECT_EQ(scene.metronome.bpm(), 121);
    scene.press("Slower");
    scene.press("Slower");
    EXPECT_EQ(scene.metronome.bpm(), 119);
    scroll(120);
    scroll(120);
    EXPECT_EQ(scene.metronome.bpm(), 121);
    EXPECT_THAT(scene.platform.taps.performed, SizeIs(5));
    EXPECT_THAT(scene.platform.taps.performed, testing::Each(HapticPattern::alignment));
}

TEST_F(MetronomeViewsTest, AStepIntoABoundGivesNoTap) {
    scene.metronome.setBpm(300);
    showWidget(true);
    scene.press("Faster");
    scroll(120);
    EXPECT_EQ(scene.metronome.bpm(), 300);
    EXPECT_THAT(scene.platform.taps.performed, IsEmpty());
}

TEST_F(MetronomeViewsTest, TheSignatureKeyShowsSevenPadsAtOnce) {
    showWidget(true);
    for (const char* signature : {"4/4", "5/4", "6/8"}) {
        scene.press(signature);
        scene.advance(0);
    }
    EXPECT_TRUE(scene.shows("7/8"));
    EXPECT_THAT(pads(), SizeIs(7));
    for (const bool isWide : {true, false}) {
        showWidget(isWide);
        const auto* last = scene.itemWith("index", 6);
        ASSERT_NE(last, nullptr);
        EXPECT_LE(last->mapToScene({last->width(), 0}).x(), isWide ? 230 : 150);
    }
}

TEST_F(MetronomeViewsTest, TapsSetTheTempo) {
    showWidget(true);
    for (int tap = 0; tap < 4; ++tap) {
        scene.press("Tap");
        scene.platform.advance(0.75);
    }
    EXPECT_EQ(scene.metronome.bpm(), 80);
}

TEST_F(MetronomeViewsTest, StoppedNoPadIsLit) {
    showWidget(true);
    scene.advance(3);
    EXPECT_EQ(lit(), -1);
    EXPECT_EQ(scene.platform.time.pending(), 0U) << "and nothing ticks";
}

TEST_F(MetronomeViewsTest, PadsFollowWhatIsHeard) {
    showWidget(true);
    scene.metronome.start();
    scene.advance(0);
    EXPECT_EQ(lit(), -1) << "before the first beat is heard";
    std::vector<int> seen;
    int before = -1;
    for (int frame = 0; frame < 300; ++frame) {
        scene.advance(0.01);
        const int heard = scene.metronome.currentBeat().value_or(-1);
        EXPECT_THAT(lit(), testing::AnyOf(heard, before)) << frame << ": at most a frame late";
        before = heard;
        if (seen.empty() || seen.back() != lit()) {
            seen.push_back(lit());
        }
    }
    EXPECT_THAT(seen, Contains(3));
    EXPECT_THAT(pads(), testing::Each(testing::AnyOf(0.0, testing::DoubleNear(0.75, 0.01), 1.0)));
    scene.press("Stop");
    scene.advance(0);
    EXPECT_EQ(lit(), -1);
}

TEST_F(MetronomeViewsTest, TheFirstBeatIsBrighter) {
    showWidget(true);
    scene.metronome.start();
    for (int frame = 0; frame < 200 && lit() != 0; ++frame) {
        scene.advance(0.01);
    }
    EXPECT_EQ(pads().at(0), 1);
    for (int frame = 0; frame < 200 && lit() != 1; ++frame) {
        scene.advance(0.01);
    }
    EXPECT_NEAR(pads().at(1), 0.75, 0.01);
}

class BeatLightTest : public MetronomeViewsTest {
  protected:
    void showWings() {
        scene.show("Metronome/MetronomeLiveActivityView.qml",
                   {{"metronome", QVariant::fromValue(&scene.metronome)},
                    {"notchWidth", 200},
                    {"notchHeight", 28},
                    {"wingWidth", 39}},
                   {278, 28});
    }
    [[nodiscard]] double light() const { return scene.view().findChild<BeatWatch*>()->light(); }
};

TEST_F(BeatLightTest, ItIsLitForAMomentAndGoesOutInSteps) {
    EXPECT_EQ(BeatWatch::lightAt(0), 1);
    EXPECT_EQ(BeatWatch::lightAt(0.119), 1);
    EXPECT_LT(BeatWatch::lightAt(0.12), 1);
    EXPECT_EQ(BeatWatch::lightAt(0.221), 0);
    EXPECT_EQ(BeatWatch::lightAt(5), 0);
    int steps = 0;
    double last = 1;
    for (auto moment = BeatWatch::nextStepAfter(0); moment; moment = BeatWatch::nextStepAfter(*moment)) {
        EXPECT_LT(BeatWatch::lightAt(*moment + 1e-9), last);
        last = BeatWatch::lightAt(*moment + 1e-9);
        ++steps;
    }
    EXPECT_EQ(last, 0);
    EXPECT_EQ(steps, 1 + BeatWatch::fadeSteps);
}

TEST_F(BeatLightTest, ItIsDarkUntilTheFirstBeatIsHeard) {
    showWings();
    EXPECT_EQ(light(), 0);
    scene.metronome.start();
    while (!scene.metronome.beatPhase()) {
        EXPECT_EQ(light(), 0);
        scene.advance(0.005);
    }
    scene.advance(0.012);
    EXPECT_EQ(light(), 1);
}

TEST_F(BeatLightTest, ABeatIsFiveChangesAndNoMore) {
    showWings();
    scene.metronome.start();
    scene.advance(1);
    int changes = 0;
    QObject::connect(scene.view().findChild<BeatWatch*>(), &BeatWatch::changed, &scene.view(),
                     [&changes] { ++changes; });
    scene.platform.advance(10);
    EXPECT_NEAR(changes, 20 * 5, 5);
}

TEST_F(BeatLightTest, ItRestsWhileNothingShowsIt) {
    showWings();
    scene.metronome.start();
    scene.advance(1);
    const auto pending = scene.platform.time.pending();
    scene.view().setProperty("visible", false);
    EXPECT_EQ(scene.platform.time.pending(), pending - 1);
    scene.view().setProperty("visible", true);
    EXPECT_EQ(scene.platform.time.pending(), pending);
}

TEST_F(BeatLightTest, TheClosedIslandShowsItWhileItRuns) {
    SceneIsland island{scene};
    scene.metronome.onChange = [&island] { island.refresh(); };
    island.show();
    scene.metronome.start();
    EXPECT_EQ(island.model.state(), IslandState::metronomeActivity);
    EXPECT_EQ(island.model.content(), NotchViewModel::Metronome);
    EXPECT_THAT(scene.texts(), Contains("120"));
    scene.metronome.stop();
    EXPECT_EQ(island.model.state(), IslandState::closed);
    scene.metronome.onChange = nullptr;
}

} // namespace
} // namespace veslora
