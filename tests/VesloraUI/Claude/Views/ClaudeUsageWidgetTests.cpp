// SPDX-License-Identifier: MIT
// The usage widget, drawn, with readings put into its agents' monitors.
#include "VesloraUI/Claude/Views/ClaudeUsageWidgetPresenter.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/FixedPlace.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr double hour = 3'600;
constexpr double day = 24 * hour;
// A Saturday, 13:41 in the zone of these tests, an hour east of Greenwich.
constexpr Timestamp saturday = 1'795'264'860;

class ClaudeUsageWidgetTest : public testing::Test {
  protected:
    void SetUp() override {
        scene.platform.time.setClock(saturday);
        claude.fiveHour = ClaudeLimit{41.5, saturday + 3 * hour};
        claude.week = ClaudeLimit{68, saturday + 3 * day};
        claude.limitsAt = saturday - 60;
        claude.contextPercent = 31;
        claude.contextDetail = "Opus · of 200K";
        claude.contextAt = saturday - 60;
        claude.today = 4'820'000;
        codex.agent = AgentKind::codex;
        codex.fiveHour = ClaudeLimit{18, saturday + 2 * hour};
        codex.week = ClaudeLimit{83, saturday + 6 * day};
        codex.limitsAt = saturday - 120;
        codex.contextPercent = 55;
        codex.contextDetail = "of 272K";
        codex.contextAt = saturday - 120;
        codex.today = 812'000;
        scene.codex.usageMonitor.reading.agent = AgentKind::codex;
    }
    void putClaude() { scene.claude.usageMonitor.put(claude); }
    void putCodex() { scene.codex.usageMonitor.put(codex); }
    void showWidget(bool isWide) {
        scene.show("Claude/Views/ClaudeUsageWidget.qml",
                   {{"agents", QVariant::fromValue(&scene.agents)}, {"isWide", isWide}},
                   {isWide ? 230 : 150, 112});
    }
    void expectSmallAndWide(const QStringList& small, const QStringList& wide) {
        showWidget(false);
        EXPECT_EQ(scene.texts(), small);
        scene.close();
        showWidget(true);
        EXPECT_EQ(scene.texts(), wide);
        scene.close();
    }
    /// Where an item lies in the widget.
    [[nodiscard]] QRectF placeOf(const QString& name) const {
        const auto* item = scene.itemNamed(name);
        EXPECT_TRUE(item) << name.toStdString();
        return item ? item->mapRectToScene(QRectF(0, 0, item->width(), item->height())) : QRectF();
    }
    [[nodiscard]] std::vector<QQuickItem*> meters() const {
        std::vector<QQuickItem*> found;
        collectMeters(scene.window().contentItem(), found);
        return found;
    }
    /// How much of an item is seen through its parents.
    [[nodiscard]] static double opacityOf(const QQuickItem* item) {
        double opacity = 1;
        for (; item; item = item->parentItem()) {
            opacity *= item->opacity();
        }
        return opacity;
    }

    FixedPlace place;
    Scene scene;
    AgentUsage claude;
    AgentUsage codex;

  private:
    static void collectMeters(QQuickItem* item, std::vector<QQuickItem*>& found) {
        if (item->isVisible() && item->property("segments").isValid() && item->property("lit").isValid()) {
            found.push_back(item);
        }
        for (QQuickItem* child : item->childItems()) {
            collectMeters(child, found);
        }
    }
};

TEST_F(ClaudeUsageWidgetTest, WithoutReadingsItSaysWhatToDo) {
    expectSmallAndWide({"Usage", "Install in Settings", "Today 0"},
                       {"Usage", "Today 0", "Install in Settings"});
    scene.codex.setHooks(true, false);
    expectSmallAndWide({"Usage", "No data yet", "Today 0"}, {"Usage", "Today 0", "No data yet"});
}

TEST_F(ClaudeUsageWidgetTest, HooksThatComeChangeTheWords) {
    showWidget(true);
    EXPECT_TRUE(scene.shows("Install in Settings"));
    scene.claude.setHooks(true, false);
    EXPECT_TRUE(scene.shows("No data yet"));
    scene.claude.setHooks(false, false);
    EXPECT_TRUE(scene.shows("Install in Settings"));
}

TEST_F(ClaudeUsageWidgetTest, TokensCountWithoutAnyReading) {
    claude = AgentUsage();
    claude.today = 1'999;
    putClaude();
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Usage", "Today 1K", "Install in Settings"));
}

TEST_F(ClaudeUsageWidgetTest, ClaudeAloneNeedsNoGlyphAtWide) {
    putClaude();
    expectSmallAndWide({"Usage", "✻", "5H", "42%", "resets 16:41", "WK", "68%", "resets Tue", "CTX", "31%",
                        "Opus · of 200K", "Today 4.82M"},
                       {"Usage", "Today 4.82M", "5H", "42%", "resets 16:41", "WEEK", "68%", "resets Tue",
                        "CTX", "31%", "Opus · of 200K"});
}

TEST_F(ClaudeUsageWidgetTest, CodexAloneIsNamedInBothSizes) {
    putCodex();
    expectSmallAndWide({"Usage", ">_", "5H", "18%", "resets 15:41", "WK", "83%", "resets Fri", "CTX", "55%",
                        "of 272K", "Today 812K"},
                       {"Usage", ">_", "Today 812K", "5H", "18%", "resets 15:41", "WEEK", "83%", "resets Fri",
                        "CTX", "55%", "of 272K"});
}

TEST_F(ClaudeUsageWidgetTest, OfTwoAgentsTheLatestComesFirst) {
    putClaude();
    putCodex();
    expectSmallAndWide({"Usage", "✻", "5H", "42%", "resets 16:41", "WK", "68%", "resets Tue", "CTX", "31%",
                        "Opus · of 200K", "Today 5.63M"},
                       {"Usage", "Today 5.63M", "✻", "5H", "42%", "WK", "68%", ">_", "5H", "18%", "WK", "83%",
                        "CTX", "31%"});
    codex.contextAt = saturday - 1;
    putCodex();
    expectSmallAndWide({"Usage", ">_", "5H", "18%", "resets 15:41", "WK", "83%", "resets Fri", "CTX", "55%",
                        "of 272K", "Today 5.63M"},
                       {"Usage", "Today 5.63M", ">_", "5H", "18%", "WK", "83%", "✻", "5H", "42%", "WK", "68%",
                        "CTX", "55%"});
    // Equal dates: Claude Code.
    claude.contextAt = codex.contextAt;
    putClaude();
    showWidget(false);
    EXPECT_TRUE(scene.shows("Claude"));
}

TEST_F(ClaudeUsageWidgetTest, WithoutPlanLimitsOnlyTheContextHasAFigure) {
    claude.limitsAvailable = false;
    putClaude();
    expectSmallAndWide({"Usage", "✻", "5H", "—", "No plan limits", "WK", "—", "No plan limits", "CTX", "31%",
                        "Opus · of 200K", "Today 4.82M"},
                       {"Usage", "Today 4.82M", "5H", "—", "No plan limits", "WEEK", "—", "No plan limits",
                        "CTX", "31%", "Opus · of 200K"});
    putCodex();
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Usage", "Today 5.63M", "✻", "5H", "—", "WK", "—", ">_", "5H",
                                           "18%", "WK", "83%", "CTX", "31%"));
    EXPECT_EQ(meters()[0]->property("lit"), 0);
    EXPECT_EQ(meters()[1]->property("lit"), 0);
    EXPECT_EQ(meters()[2]->property("lit"), 1);
}

TEST_F(ClaudeUsageWidgetTest, WhatWasNotReadIsADash) {
    claude.fiveHour.reset();
    claude.week->resetsAt.reset();
    claude.contextPercent.reset();
    claude.contextAt.reset();
    putClaude();
    showWidget(true);
    EXPECT_THAT(scene.texts(),
                ElementsAre("Usage", "Today 4.82M", "5H", "—", "—", "WEEK", "68%", "CTX", "—", "—"));
}

TEST_F(ClaudeUsageWidgetTest, AnOldReadingFadesAndSaysOfWhenItIs) {
    claude.limitsStale = true;
    claude.limitsAt = saturday - 901;
    putClaude();
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Usage", "Today 4.82M", "5H", "42%", "as of 13:25", "WEEK", "68%",
                                           "as of 13:25", "CTX", "31%", "Opus · of 200K"));
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("42%")), 0.5);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("68%")), 0.5);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("31%")), 1);
    claude.limitsStale = false;
    claude.contextStale = true;
    putClaude();
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("68%")), 1);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("31%")), 0.5);
    EXPECT_THAT(scene.texts(), Contains("as of 13:40"));
}

TEST_F(ClaudeUsageWidgetTest, OfTwoAgentsEachLineFadesByItself) {
    codex.limitsStale = true;
    claude.contextStale = true;
    putClaude();
    putCodex();
    showWidget(true);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("42%")), 1);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("18%")), 0.5);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("83%")), 0.5);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("31%")), 0.5);
}

TEST_F(ClaudeUsageWidgetTest, AResetWithinADayIsATimeOtherwiseAWeekday) {
    claude.fiveHour->resetsAt = saturday + 23 * hour;
    claude.week->resetsAt = saturday + 25 * hour;
    putClaude();
    showWidget(true);
    EXPECT_THAT(scene.texts(), Contains("resets 12:41"));
    EXPECT_THAT(scene.texts(), Contains("resets Sun"));
}

TEST_F(ClaudeUsageWidgetTest, TheClockAloneTurnsAWeekdayIntoATime) {
    claude.week->resetsAt = saturday + day + 20;
    putClaude();
    showWidget(true);
    EXPECT_THAT(scene.texts(), Contains("resets Sun"));
    scene.advance(29);
    EXPECT_THAT(scene.texts(), Contains("resets Sun"));
    // What the monitors make of the clock shows at the same tick, without a word from them.
    scene.claude.usageMonitor.reading.limitsStale = true;
    scene.advance(1);
    EXPECT_THAT(scene.texts(), Not(Contains("resets Sun")));
    EXPECT_THAT(scene.texts(), Contains("as of 13:40"));
    scene.claude.usageMonitor.reading.limitsStale = false;
    scene.advance(30);
    EXPECT_THAT(scene.texts(), Contains("resets 13:41"));
}

TEST_F(ClaudeUsageWidgetTest, TimesAreWrittenAsTheReaderDoes) {
    putClaude();
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    showWidget(true);
    EXPECT_THAT(scene.texts(), Contains("resets Di."));
    scene.close();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    showWidget(true);
    EXPECT_TRUE(scene.texts().filter("4:41").first().endsWith("PM"));
    scene.close();
    QLocale::setDefault(QLocale::c());
    showWidget(true);
    EXPECT_THAT(scene.texts(), Contains("resets 16:41"));
}

TEST_F(ClaudeUsageWidgetTest, DatesBeyondAnyCalendarAreNoMatter) {
    claude.fiveHour->resetsAt = 1e300;
    claude.week->resetsAt = -1e300;
    claude.contextStale = true;
    claude.contextAt = 1e300;
    putClaude();
    showWidget(true);
    EXPECT_TRUE(scene.shows("42%"));
    EXPECT_EQ(scene.texts().filter("resets").size(), 0);
    claude.contextAt = -1e300;
    putClaude();
    EXPECT_EQ(scene.texts().filter("as of").size(), 1);
}

TEST_F(ClaudeUsageWidgetTest, AModelsNameIsCutAndNeverReadAsMarkup) {
    claude.contextDetail = "<h1>" + std::string(100'000, 'x');
    putClaude();
    showWidget(false);
    const auto* detail = scene.itemWith("text", QString("<h1>" + QString(125, 'x') + "…"));
    ASSERT_TRUE(detail);
    EXPECT_EQ(detail->property("textFormat").toInt(), 0 /* Text.PlainText */);
    EXPECT_EQ(detail->property("truncated"), true);
    EXPECT_EQ(detail->width(), 120);
}

TEST_F(ClaudeUsageWidgetTest, WhatHidesInAModelsNameIsSpelled) {
    claude.contextDetail = "a\u202Eb";
    putClaude();
    showWidget(true);
    EXPECT_TRUE(scene.itemWith("text", "a⟨U+202E⟩b"));
}

TEST_F(ClaudeUsageWidgetTest, AReadingThatComesMovesOnlyWhatIsDifferent) {
    putClaude();
    showWidget(true);
    const auto* week = scene.itemNamed("68%");
    auto* presenter = scene.view().findChild<ClaudeUsageWidgetPresenter*>();
    ASSERT_TRUE(presenter);
    QSignalSpy rows(presenter->rows(), &QAbstractItemModel::dataChanged);
    QSignalSpy changes(presenter, &ClaudeUsageWidgetPresenter::changed);
    const AgentGlyph glyph = presenter->glyph();
    const QString notice = presenter->emptyText();
    claude.limitsAt = saturday;
    putClaude();
    EXPECT_EQ(rows.count(), 0);
    claude.fiveHour->percent = 43;
    putClaude();
    EXPECT_EQ(rows.count(), 1);
    EXPECT_TRUE(scene.shows("43%"));
    EXPECT_FALSE(scene.shows("42%"));
    EXPECT_EQ(scene.itemNamed("68%"), week);
    claude.today = 4'830'000;
    putClaude();
    EXPECT_EQ(rows.count(), 1);
    EXPECT_EQ(changes.count(), 1) << "of the header: it was the day's tokens alone";
    EXPECT_EQ(presenter->glyph(), glyph);
    EXPECT_EQ(presenter->emptyText(), notice);
    EXPECT_TRUE(scene.shows("Today 4.83M"));
}

TEST_F(ClaudeUsageWidgetTest, ASecondAgentComesAndGoes) {
    putClaude();
    showWidget(true);
    putCodex();
    EXPECT_THAT(scene.texts(), ElementsAre("Usage", "Today 5.63M", "✻", "5H", "42%", "WK", "68%", ">_", "5H",
                                           "18%", "WK", "83%", "CTX", "31%"));
    const auto* week = scene.itemNamed("83%");
    codex.fiveHour->percent = 19;
    putCodex();
    EXPECT_TRUE(scene.shows("19%"));
    EXPECT_EQ(scene.itemNamed("83%"), week);
    codex.limitsAt.reset();
    codex.contextAt.reset();
    putCodex();
    EXPECT_THAT(scene.texts(), ElementsAre("Usage", "Today 5.63M", "5H", "42%", "resets 16:41", "WEEK", "68%",
                                           "resets Tue", "CTX", "31%", "Opus · of 200K"));
}

TEST_F(ClaudeUsageWidgetTest, MetersAreLitByTheirShareAndColouredByPlace) {
    putClaude();
    showWidget(true);
    const auto shown = meters();
    ASSERT_EQ(shown.size(), 3u);
    const std::vector<int> lit = {9, 14, 7};
    for (std::size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i]->property("segments"), 20);
        EXPECT_EQ(shown[i]->property("lit").toInt(), lit[i]) << i;
        EXPECT_EQ(shown[i]->property("levelColors"), true);
    }
}

TEST_F(ClaudeUsageWidgetTest, TheColoursAreThoseOfTheKit) {
    putClaude();
    showWidget(false);
    const auto colorOf = [this](const QString& name) {
        return scene.itemNamed(name)->property("color").value<QColor>().rgb();
    };
    EXPECT_EQ(colorOf("Claude"), VesloraStyle::claudeOrange().rgb());
    EXPECT_EQ(colorOf("Usage"), VesloraStyle::textSecondary().rgb());
    EXPECT_EQ(colorOf("42%"), VesloraStyle::textPrimary().rgb());
    EXPECT_EQ(colorOf("resets 16:41"), VesloraStyle::textSecondary().rgb());
    EXPECT_EQ(colorOf("Today 4.82M"), qRgb(200, 255, 61));
    scene.settings.set("accent", std::string("amber"));
    EXPECT_EQ(colorOf("Today 4.82M"), qRgb(255, 176, 32));
    codex.limitsAt = saturday;
    putCodex();
    EXPECT_EQ(colorOf("Codex"), VesloraStyle::textPrimary().rgb());
}

// Points from the widget's top left corner.
TEST_F(ClaudeUsageWidgetTest, WideRowsLieWhereTheyShould) {
    putClaude();
    showWidget(true);
    EXPECT_EQ(placeOf("Usage").topLeft(), QPointF(0, 0));
    EXPECT_EQ(placeOf("Usage").height(), 12);
    EXPECT_NEAR(placeOf("Today 4.82M").right(), 231.2, 0.05);
    double top = 18;
    for (const QString label : {"5H", "WEEK", "CTX"}) {
        EXPECT_EQ(placeOf(label), QRectF(0, top + 1, 34, 12)) << top;
        top += 31;
    }
    EXPECT_EQ(placeOf("42%"), QRectF(194, 18, 36, 14));
    EXPECT_EQ(placeOf("resets 16:41").topLeft(), QPointF(40, 33));
    EXPECT_EQ(placeOf("Opus · of 200K").topLeft(), QPointF(40, 95));
    EXPECT_EQ(placeOf("Opus · of 200K").bottom(), 107);
    const auto* meter = meters()[1];
    EXPECT_EQ(meter->mapRectToScene(QRectF(0, 0, meter->width(), meter->height())), QRectF(40, 52, 148, 7));
}

TEST_F(ClaudeUsageWidgetTest, SmallRowsLieWhereTheyShould) {
    putClaude();
    showWidget(false);
    EXPECT_EQ(placeOf("Usage").height(), 11);
    double top = 17;
    for (const QString label : {"5H", "WK", "CTX"}) {
        EXPECT_EQ(placeOf(label), QRectF(0, top, 24, 12)) << top;
        top += 27;
    }
    EXPECT_EQ(placeOf("42%"), QRectF(114, 16, 36, 14));
    EXPECT_EQ(placeOf("resets 16:41").topLeft(), QPointF(30, 30));
    EXPECT_EQ(placeOf("Opus · of 200K").bottom(), 94);
    EXPECT_EQ(placeOf("Today 4.82M").top(), 101);
    EXPECT_EQ(placeOf("Today 4.82M").bottom(), 112);
    const auto* meter = meters()[0];
    EXPECT_EQ(meter->mapRectToScene(QRectF(0, 0, meter->width(), meter->height())), QRectF(30, 20, 78, 6));
    EXPECT_EQ(meter->property("segments"), 12);
}

TEST_F(ClaudeUsageWidgetTest, TwoAgentsLieWhereTheyShould) {
    putClaude();
    putCodex();
    showWidget(true);
    EXPECT_EQ(placeOf("Claude"), QRectF(0, 18, 16, 24));
    EXPECT_EQ(placeOf("Codex"), QRectF(0, 48, 16, 24));
    EXPECT_EQ(placeOf("42%"), QRectF(89, 23, 34, 14));
    EXPECT_EQ(placeOf("83%"), QRectF(196, 53, 34, 14));
    EXPECT_EQ(placeOf("CTX"), QRectF(0, 84, 34, 12));
    EXPECT_EQ(placeOf("31%"), QRectF(194, 83, 36, 14));
    const auto shown = meters();
    ASSERT_EQ(shown.size(), 5u);
    const auto at = [](const QQuickItem* meter) {
        return meter->mapRectToScene(QRectF(0, 0, meter->width(), meter->height()));
    };
    EXPECT_EQ(at(shown[0]), QRectF(58, 26, 25, 8));
    EXPECT_EQ(at(shown[3]), QRectF(165, 56, 25, 8));
    EXPECT_EQ(at(shown[4]), QRectF(40, 86, 148, 8));
    EXPECT_EQ(shown[3]->property("segments"), 5);
    EXPECT_EQ(shown[4]->property("segments"), 20);
}

TEST_F(ClaudeUsageWidgetTest, TheNoticeStandsInTheMiddleOfWhatIsLeft) {
    showWidget(true);
    EXPECT_EQ(placeOf("Install in Settings").center().x(), 115);
    EXPECT_EQ(placeOf("Install in Settings").center().y(), 65);
    scene.close();
    showWidget(false);
    EXPECT_EQ(placeOf("Install in Settings").center().x(), 75);
    EXPECT_EQ(placeOf("Install in Settings").center().y(), 59);
    EXPECT_DOUBLE_EQ(opacityOf(scene.itemNamed("Install in Settings")), 0.6);
    EXPECT_EQ(placeOf("Today 0").bottom(), 112);
}

TEST_F(ClaudeUsageWidgetTest, TheRackHoldsItInEitherSize) {
    putClaude();
    for (const auto& [layout, label] :
         std::vector<std::pair<std::string, QString>>{{"claudeUsage", "WK"}, {"claudeUsage:2", "WEEK"}}) {
        scene.settings.set("widgetLayout", layout);
        RackModel rack(scene.settings, scene.platform.taps);
        scene.showRack(rack, {296, 112});
        EXPECT_TRUE(scene.shows(label)) << layout;
        EXPECT_TRUE(scene.shows("Today 4.82M")) << layout;
        scene.close();
    }
}

} // namespace
} // namespace veslora
