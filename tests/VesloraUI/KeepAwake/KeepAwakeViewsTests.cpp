// SPDX-License-Identifier: MIT
// The keep-awake widget and the wings, drawn and pressed.
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"

#include <QLocale>
#include <QTest>
#include <QTimeZone>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;
using testing::SizeIs;

constexpr double minute = 60;
constexpr double hour = 60 * minute;
/// Saturday, 21 November 2026, 14:05 in Coordinated Universal Time.
constexpr Timestamp saturday = 1'795'269'900;

class KeepAwakeWidgetTest : public testing::Test {
  protected:
    KeepAwakeWidgetTest() {
        qputenv("TZ", "UTC");
        QLocale::setDefault(QLocale::c());
        scene.platform.time.setClock(saturday);
    }
    void TearDown() override {
        scene.close();
        qunsetenv("TZ");
    }

    void showWidget(bool isWide) {
        scene.show("KeepAwake/KeepAwakeWidget.qml",
                   {{"keepAwake", QVariant::fromValue(&scene.keepAwake)},
                    {"isWide", isWide},
                    {"width", isWide ? 230 : 150},
                    {"height", 112}},
                   {300, 160});
    }
    void scroll(const QString& name, QPoint angle, QPoint pixels = {}, bool isInverted = false) {
        const QPointF at = scene.centerOf(name);
        QWheelEvent event(at, scene.window().mapToGlobal(at), pixels, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, isInverted);
        QCoreApplication::sendEvent(&scene.window(), &event);
        scene.advance(0);
    }
    [[nodiscard]] QRgb colorOf(const QString& name) const {
        return scene.itemNamed(name)->property("color").value<QColor>().rgb();
    }
    [[nodiscard]] QRectF placeOf(const QString& name) const {
        const auto* item = scene.itemNamed(name);
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }
    [[nodiscard]] QString descriptionOf(const QString& name) const {
        return scene.itemNamed(name)->property("helpText").toString();
    }
    static constexpr QRgb lime = qRgb(200, 255, 61);

    Scene scene;
};

TEST_F(KeepAwakeWidgetTest, OffItSleepsAsUsual) {
    showWidget(true);
    EXPECT_THAT(scene.texts(),
                ElementsAre("Keep Awake", "Agents", "0:00:00", "Sleeps as usual", "30M", "1H", "2H"));
    EXPECT_EQ(colorOf("0:00:00"), VesloraStyle::textSecondary().rgb());
    EXPECT_EQ(colorOf("Sleeps as usual"), VesloraStyle::textSecondary().rgb());
    EXPECT_EQ(descriptionOf("30M"), "Stay awake for 30M");
    EXPECT_TRUE(scene.shows("Stay awake until stopped"));
    scene.close();
    showWidget(false);
    EXPECT_THAT(scene.texts(),
                ElementsAre("Awake", "Agents", "0:00:00", "Sleeps as usual", "30M", "1H", "2H"));
}

TEST_F(KeepAwakeWidgetTest, HeldByAnAgentItSaysSo) {
    scene.keepAwake.setClaudeIsWorking(true);
    showWidget(true);
    EXPECT_TRUE(scene.shows("An agent is working"));
    EXPECT_EQ(colorOf("0:00:00"), lime);
    EXPECT_TRUE(scene.shows("30M")) << "no session of the user's runs";
    scene.keepAwake.setClaudeIsWorking(false);
    EXPECT_TRUE(scene.shows("Sleeps as usual"));
    EXPECT_EQ(colorOf("0:00:00"), VesloraStyle::textSecondary().rgb());
}

TEST_F(KeepAwakeWidgetTest, EachPresetStartsItsSession) {
    showWidget(true);
    for (const auto& [key, seconds] :
         {std::pair("30M", 30 * minute), std::pair("1H", hour), std::pair("2H", 2 * hour)}) {
        scene.press(key);
        EXPECT_THAT(scene.keepAwake.remaining(), Optional(seconds)) << key;
        scene.press("Stop");
        EXPECT_FALSE(scene.keepAwake.isOn()) << key;
    }
    scene.press("Stay awake until stopped");
    EXPECT_TRUE(scene.keepAwake.state().isIndefinite);
}

TEST_F(KeepAwakeWidgetTest, ATimedSessionCountsDown) {
    showWidget(true);
    scene.press("30M");
    EXPECT_THAT(scene.texts(), ElementsAre("Keep Awake", "Agents", "0:30:00", "Until 14:35", "Stop"));
    EXPECT_EQ(colorOf("0:30:00"), lime);
    EXPECT_EQ(descriptionOf("−"), "15 minutes less");
    EXPECT_EQ(descriptionOf("+"), "15 minutes more");
    EXPECT_EQ(descriptionOf("Stop"), "Stop");
    scene.advance(1);
    EXPECT_TRUE(scene.shows("0:29:59"));
    EXPECT_TRUE(scene.shows("Until 14:35"));
    scene.press("+");
    EXPECT_TRUE(scene.shows("0:45:00"));
    EXPECT_TRUE(scene.shows("Until 14:50"));
    scene.press("−");
    EXPECT_TRUE(scene.shows("0:30:00"));
    scene.advance(30 * minute);
    EXPECT_THAT(scene.texts(), Contains("Sleeps as usual"));
    EXPECT_TRUE(scene.shows("30M"));
}

TEST_F(KeepAwakeWidgetTest, TheDisplayThatIsKeptOnIsTold) {
    scene.settings.set(SettingsKeys::keepAwakeDisplay, true);
    scene.keepAwake.start(84 * minute + 10);
    showWidget(false);
    EXPECT_THAT(scene.texts(), ElementsAre("Awake", "Agents", "1:24:10", "Until 15:29 · screen on", "Stop"));
    EXPECT_EQ(scene.itemNamed("Until 15:29 · screen on")->property("truncated"), true);
    scene.keepAwake.start(std::nullopt);
    EXPECT_TRUE(scene.shows("Until stopped · screen on"));
    scene.settings.set(SettingsKeys::keepAwakeDisplay, false);
    EXPECT_TRUE(scene.shows("Until stopped"));
}

TEST_F(KeepAwakeWidgetTest, ASessionWithoutAnEndHasOnlyItsStop) {
    scene.keepAwake.start(std::nullopt);
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Keep Awake", "Agents", "Until stopped", "Stop"));
    EXPECT_TRUE(scene.shows("∞"));
    EXPECT_FALSE(scene.shows("−"));
    EXPECT_FALSE(scene.shows("+"));
    const KeepAwakeState before = scene.keepAwake.state();
    scroll("∞", {0, 120});
    EXPECT_EQ(scene.keepAwake.state(), before) << "nothing catches the wheel";
    scene.press("Stop");
    EXPECT_FALSE(scene.keepAwake.isOn());
}

TEST_F(KeepAwakeWidgetTest, TheAgentKeyWritesTheSetting) {
    showWidget(true);
    const auto* word = scene.itemWith("text", "Agents");
    ASSERT_TRUE(word);
    EXPECT_EQ(word->property("color").value<QColor>().rgb(), lime);
    EXPECT_EQ(descriptionOf("Agents"), "Staying awake while an agent is working");
    scene.press("Agents");
    EXPECT_FALSE(scene.settings.boolValue(SettingsKeys::keepAwakeWhileClaude));
    EXPECT_EQ(word->property("color").value<QColor>().rgb(), VesloraStyle::textSecondary().rgb());
    EXPECT_EQ(descriptionOf("Agents"), "Stay awake while an agent is working");
    scene.press("Agents");
    EXPECT_TRUE(scene.settings.boolValue(SettingsKeys::keepAwakeWhileClaude));
}

TEST_F(KeepAwakeWidgetTest, TheWheelOverTheTimeChangesIt) {
    scene.keepAwake.start(30 * minute);
    showWidget(true);
    EXPECT_TRUE(scene.itemWith("text", "Scroll to change the time"));
    scroll("0:30:00", {0, 120});
    EXPECT_TRUE(scene.shows("0:45:00"));
    scroll("0:45:00", {0, -120});
    EXPECT_TRUE(scene.shows("0:30:00"));
    scroll("0:30:00", {120, 0});
    EXPECT_TRUE(scene.shows("0:30:00")) << "sideways is nothing";
    scroll("0:30:00", {0, -120}, {}, true);
    EXPECT_TRUE(scene.shows("0:45:00"))
        << "the way the wheel was turned counts, not what the desktop makes of it";
    scroll("0:45:00", {0, 120}, {}, true);
    for (int i = 0; i < 3; ++i) {
        scroll("0:30:00", {0, 40}, {0, 15});
        EXPECT_TRUE(scene.shows("0:30:00")) << "not yet a step";
    }
    scroll("0:30:00", {0, 40}, {0, 15});
    EXPECT_TRUE(scene.shows("0:45:00"));
}

TEST_F(KeepAwakeWidgetTest, AWheelThatGivesFractionsOfANotchMakesNoStepOfEach) {
    scene.keepAwake.start(30 * minute);
    showWidget(true);
    for (int i = 0; i < 3; ++i) {
        scroll("0:30:00", {0, 30});
        EXPECT_TRUE(scene.shows("0:30:00")) << i;
    }
    scroll("0:30:00", {0, 30});
    EXPECT_TRUE(scene.shows("0:45:00"));
}

TEST_F(KeepAwakeWidgetTest, OnlyATimeThatReallyChangesIsFelt) {
    scene.keepAwake.start(12 * hour);
    showWidget(true);
    scene.press("+");
    scroll("12:00:00", {0, 120});
    EXPECT_THAT(scene.platform.taps.performed, IsEmpty());
    scene.press("−");
    EXPECT_THAT(scene.platform.taps.performed, ElementsAre(HapticPattern::alignment));
    scroll("11:45:00", {0, -120});
    EXPECT_THAT(scene.platform.taps.performed, SizeIs(2));
}

TEST_F(KeepAwakeWidgetTest, TimesAreWrittenAsTheReaderDoes) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    scene.keepAwake.start(84 * minute);
    showWidget(true);
    const QStringList until = scene.texts().filter("Until");
    ASSERT_EQ(until.size(), 1);
    EXPECT_TRUE(until.first().contains("3:29")) << until.first().toStdString();
    EXPECT_TRUE(until.first().endsWith("PM")) << until.first().toStdString();
}

TEST_F(KeepAwakeWidgetTest, ASessionThatEndsBetweenTwoTicksIsShownAsOver) {
    showWidget(true);
    scene.advance(0.5);
    scene.keepAwake.start(1.0);
    EXPECT_TRUE(scene.shows("Stop"));
    scene.advance(1.5);
    EXPECT_FALSE(scene.shows("Stop"));
    EXPECT_TRUE(scene.shows("Sleeps as usual"));
}

// Points from the widget's top left corner.
TEST_F(KeepAwakeWidgetTest, WideRowsLieWhereTheyShould) {
    scene.keepAwake.start(84 * minute + 10);
    showWidget(true);
    EXPECT_EQ(placeOf("Keep Awake").topLeft(), QPointF(0, 0));
    EXPECT_EQ(placeOf("Agents").right(), 230);
    EXPECT_EQ(placeOf("Agents").height(), 12);
    EXPECT_EQ(placeOf("1:24:10").top(), 18);
    EXPECT_EQ(placeOf("1:24:10").height(), 36);
    EXPECT_EQ(scene.itemNamed("1:24:10")->property("font").value<QFont>().pixelSize(), 30);
    EXPECT_EQ(placeOf("Until 15:29").top(), 60);
    EXPECT_EQ(placeOf("−"), QRectF(0, 86, 34, 26));
    EXPECT_EQ(placeOf("+"), QRectF(40, 86, 34, 26));
    EXPECT_EQ(placeOf("Stop").left(), 80);
}

TEST_F(KeepAwakeWidgetTest, SmallKeysShareTheWidth) {
    showWidget(false);
    EXPECT_EQ(placeOf("0:00:00").height(), 31);
    EXPECT_EQ(placeOf("Sleeps as usual").top(), 55);
    EXPECT_EQ(placeOf("30M"), QRectF(0, 86, 34, 26));
    EXPECT_EQ(placeOf("1H"), QRectF(38, 86, 35, 26));
    EXPECT_EQ(placeOf("2H"), QRectF(77, 86, 35, 26));
    EXPECT_EQ(placeOf("Stay awake until stopped"), QRectF(116, 86, 34, 26));
}

TEST_F(KeepAwakeWidgetTest, TheLongestTimeFitsWithoutShrinkingBeyondMeasure) {
    scene.keepAwake.start(12 * hour);
    showWidget(false);
    const auto* clock = scene.itemNamed("12:00:00");
    EXPECT_LE(clock->property("contentWidth").toDouble(), 150);
    EXPECT_FALSE(clock->property("truncated").toBool());
}

TEST_F(KeepAwakeWidgetTest, RestsWhileNobodySeesIt) {
    showWidget(true);
    EXPECT_EQ(scene.platform.time.pending(), 1u);
    scene.close();
    EXPECT_EQ(scene.platform.time.pending(), 0u);
}

TEST_F(KeepAwakeWidgetTest, TheRackHoldsItInEitherSize) {
    for (const auto& [layout, title] : std::vector<std::pair<std::string, QString>>{
             {"keepAwake", "Awake"}, {"keepAwake:2", "Keep Awake"}}) {
        scene.settings.set("widgetLayout", layout);
        RackModel rack(scene.settings, scene.platform.taps);
        scene.showRack(rack, {296, 112});
        EXPECT_TRUE(scene.shows(title)) << layout;
        EXPECT_TRUE(scene.shows("Sleeps as usual")) << layout;
        scene.close();
    }
}

class KeepAwakeActivityTest : public testing::Test {
  protected:
    KeepAwakeActivityTest() { island.show(); }

    [[nodiscard]] bool settles() const { return island.settles(); }

    Scene scene;
    SceneIsland island{scene};
    NotchViewModel& model{island.model};
};

TEST_F(KeepAwakeActivityTest, ATimedSessionShowsWhatIsLeft) {
    scene.keepAwake.start(84 * minute + 10);
    ASSERT_TRUE(settles());
    EXPECT_EQ(model.content(), NotchViewModel::KeepAwake);
    EXPECT_EQ(model.wingWidth(), 53);
    EXPECT_THAT(scene.texts(), ElementsAre("1:24"));
    EXPECT_TRUE(scene.itemWith("name", "cup.and.saucer.fill"));
    EXPECT_FALSE(scene.itemWith("name", "infinity"));
    scene.advance(30 * minute);
    EXPECT_THAT(scene.texts(), ElementsAre("54M"));
    EXPECT_EQ(scene.itemWith("text", "54M")->property("color").value<QColor>(), QColor(200, 255, 61));
}

TEST_F(KeepAwakeActivityTest, ASessionWithoutAnEndShowsThat) {
    scene.keepAwake.start(std::nullopt);
    ASSERT_TRUE(settles());
    EXPECT_EQ(model.wingWidth(), 53);
    EXPECT_THAT(scene.texts(), IsEmpty());
    EXPECT_TRUE(scene.itemWith("name", "infinity"));
    scene.keepAwake.stop();
    ASSERT_TRUE(settles());
    EXPECT_EQ(model.content(), NotchViewModel::Nothing);
    EXPECT_FALSE(scene.itemWith("name", "infinity"));
}

TEST_F(KeepAwakeActivityTest, TheWingsGoWithTheEndOfTheSession) {
    scene.keepAwake.start(2.0);
    EXPECT_EQ(model.state(), IslandState::keepAwakeActivity);
    scene.advance(2);
    EXPECT_EQ(model.state(), IslandState::closed);
    ASSERT_TRUE(settles());
    EXPECT_EQ(scene.platform.time.pending(), 0u);
}

TEST_F(KeepAwakeActivityTest, WhatLeavesKeepsItsFace) {
    scene.keepAwake.start(2.0);
    ASSERT_TRUE(settles());
    scene.keepAwake.stop();
    EXPECT_THAT(scene.texts(), ElementsAre("1M"));
    EXPECT_FALSE(scene.itemWith("name", "infinity"));
}

TEST_F(KeepAwakeActivityTest, AnAgentsHoldAndTheUsersWishShowNothing) {
    scene.keepAwake.setClaudeIsWorking(true);
    EXPECT_EQ(model.state(), IslandState::closed);
    scene.settings.set(SettingsKeys::keepAwakeLiveActivity, false);
    scene.keepAwake.start(std::nullopt);
    EXPECT_EQ(model.state(), IslandState::closed);
}

TEST_F(KeepAwakeActivityTest, AnAgentAtWorkGoesFirst) {
    scene.keepAwake.start(std::nullopt);
    scene.claude.publish({FakeMonitor::session("a", ClaudeStatus::Working{1})}, {});
    EXPECT_EQ(model.content(), NotchViewModel::ClaudeWorking);
    EXPECT_THAT(scene.texts(), Not(Contains("1M")));
}

} // namespace
} // namespace veslora
