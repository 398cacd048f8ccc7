// SPDX-License-Identifier: MIT
// The library of widgets, drawn, pressed and scrolled.
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/LongTexts.h"
#include "tests/VesloraUI/Fixtures/Pixels.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QAccessible>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WidgetLibraryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        scene.rack.enterEditing();
        scene.rack.setShowingLibrary(true);
    }
    void TearDown() override { scene.close(); }

    void showLibrary(double width = 730, QPoint origin = {30, 20}) {
        scene.close();
        scene.show("Widgets/WidgetLibraryView.qml",
                   {{"rack", QVariant::fromValue(&scene.rack)},
                    {"x", origin.x()},
                    {"y", origin.y()},
                    {"width", width}},
                   {static_cast<int>(width) + 2 * origin.x(), 112 + 2 * origin.y()});
    }
    void emptyRack() {
        for (const WidgetID id : allWidgetIDs) {
            scene.rack.remove(id);
        }
    }
    [[nodiscard]] QQuickItem* list() const {
        const auto items = scene.view().findChildren<QQuickItem*>();
        const auto found = std::ranges::find_if(
            items, [](const QQuickItem* item) { return item->inherits("QQuickListView"); });
        return found == items.end() ? nullptr : *found;
    }
    /// The row of a widget, by its title.
    [[nodiscard]] QQuickItem* row(const QString& title) const { return scene.itemNamed(title); }
    /// The keys of a widget's row, by their texts.
    [[nodiscard]] std::map<QString, QQuickItem*> keys(const QString& title) const {
        std::map<QString, QQuickItem*> found;
        collect(found, row(title));
        return found;
    }
    void press(QQuickItem* key) {
        const QPointF at = key->mapToScene({key->width() / 2, key->height() / 2});
        QTest::mouseClick(&scene.window(), Qt::LeftButton, {}, at.toPoint());
        QCoreApplication::processEvents();
        scene.advance(0);
    }
    /// Turns the wheel over the list by a notch, away from the user for 1.
    void turnWheel(int notch) {
        const QPointF at = list()->mapToScene({100, 40});
        QWheelEvent event(at, scene.window().mapToGlobal(at), {}, {0, 120 * notch}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        event.setTimestamp(m_wheelTime += 400);
        QCoreApplication::sendEvent(&scene.window(), &event);
    }
    [[nodiscard]] static QRectF placeOf(const QQuickItem* item) {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }

    Scene scene;

  private:
    quint64 m_wheelTime = 0; ///< milliseconds

    static void collect(std::map<QString, QQuickItem*>& found, QQuickItem* item) {
        if (item->inherits("veslora::KeyItem")) {
            found[item->property("text").toString()] = item;
        }
        for (QQuickItem* child : item->childItems()) {
            collect(found, child);
        }
    }
};

TEST_F(WidgetLibraryTest, ListsWhatIsNotInTheRack) {
    showLibrary();
    EXPECT_THAT(scene.texts(),
                ElementsAre("Add widget", "Back", "Clock", "The time and date.", "1 unit", "Add"));
    EXPECT_THAT(scene.names(), ElementsAre("Add widget", "Back", "Add widget", "Clock", "1 unit", "Add"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(row("Clock"))->text(QAccessible::Description),
              "The time and date.");
    EXPECT_FALSE(scene.itemNamed("Back")->property("isPrimary").toBool());
    EXPECT_TRUE(scene.itemNamed("Add")->property("isPrimary").toBool());
}

TEST_F(WidgetLibraryTest, EveryWidgetSaysWhatItIsAndInWhichSizesItComes) {
    struct Expected {
        QString title;
        QString blurb;
        QStringList sizes;
    };
    const std::vector<Expected> all{
        {"Clock", "The time and date.", {"1 unit"}},
        {"Timer", "Countdown with a live activity beside the notch.", {"2", "1"}},
        {"Meters", "CPU, memory and battery at a glance.", {"1", "2"}},
        {"Music", "What's playing, with Spotify first.", {"1", "2"}},
        {"Metronome", "A step-sequencer metronome with tap tempo.", {"1", "2"}},
        {"Agents", "Your Claude Code and Codex sessions, and when they need you.", {"1", "2"}},
        {"Agent Usage", "Plan limits, context and today's tokens for Claude and Codex.", {"1", "2"}},
        {"Keep Awake", "Stop your computer sleeping for a while, or while Claude works.", {"1", "2"}},
    };
    emptyRack();
    showLibrary();
    QStringList expected{"Add widget", "Back"};
    for (const Expected& widget : all) {
        expected << widget.title << widget.blurb << widget.sizes << "Add";
    }
    EXPECT_EQ(scene.texts(), expected);
}

TEST_F(WidgetLibraryTest, SizesSayHowWideTheyAreAndTheUsualOneIsChosen) {
    scene.rack.remove(WidgetID::timer);
    scene.rack.remove(WidgetID::meters);
    showLibrary();
    auto timer = keys("Timer");
    ASSERT_EQ(timer.size(), 3u);
    EXPECT_EQ(timer["2"]->property("helpText"), "2 units wide");
    EXPECT_EQ(timer["1"]->property("helpText"), "1 unit wide");
    EXPECT_TRUE(timer["2"]->property("isSelected").toBool());
    EXPECT_FALSE(timer["1"]->property("isSelected").toBool());
    EXPECT_LT(placeOf(timer["2"]).x(), placeOf(timer["1"]).x());
    auto meters = keys("Meters");
    EXPECT_TRUE(meters["1"]->property("isSelected").toBool());
    EXPECT_FALSE(meters["2"]->property("isSelected").toBool());
    EXPECT_EQ(keys("Clock").size(), 1u);
}

TEST_F(WidgetLibraryTest, BackClosesItAndNothingElse) {
    showLibrary();
    scene.press("Back");
    EXPECT_FALSE(scene.rack.isShowingLibrary());
    EXPECT_TRUE(scene.rack.isEditing());
    EXPECT_FALSE(scene.rack.layout().contains(WidgetID::clock));
}

TEST_F(WidgetLibraryTest, AddPutsTheWidgetLastAndLeavesEditModeAndPageAlone) {
    showLibrary();
    ASSERT_EQ(scene.rack.page(), 0);
    scene.press("Add");
    EXPECT_EQ(scene.rack.layout().ids().back(), WidgetID::clock);
    EXPECT_FALSE(scene.rack.isShowingLibrary());
    EXPECT_TRUE(scene.rack.isEditing());
    EXPECT_EQ(scene.rack.page(), 0);
    scene.advance(0);
    EXPECT_EQ(list()->property("count"), 0);
}

TEST_F(WidgetLibraryTest, AWidgetComesInItsUsualSizeUnlessAnotherWasChosen) {
    for (const bool chooses : {false, true}) {
        scene.rack.remove(WidgetID::timer);
        scene.rack.setShowingLibrary(true);
        showLibrary();
        if (chooses) {
            press(keys("Timer")["1"]);
            EXPECT_TRUE(keys("Timer")["1"]->property("isSelected").toBool());
            EXPECT_FALSE(keys("Timer")["2"]->property("isSelected").toBool());
        }
        press(keys("Timer")["Add"]);
        EXPECT_EQ(scene.rack.layout().entries.back(),
                  (WidgetEntry{WidgetID::timer, chooses ? WidgetSize::small : WidgetSize::wide}));
        EXPECT_FALSE(scene.rack.isShowingLibrary());
    }
}

TEST_F(WidgetLibraryTest, AChosenSizeStaysWhileTheListChangesButNotForTheNextTime) {
    scene.rack.remove(WidgetID::meters);
    showLibrary();
    const QPointer<QQuickItem> key = keys("Meters")["2"];
    press(key);
    ASSERT_TRUE(key) << "a key outlives its own press";
    EXPECT_TRUE(key->property("isSelected").toBool());
    scene.rack.remove(WidgetID::timer);
    scene.advance(0);
    EXPECT_TRUE(keys("Meters")["2"]->property("isSelected").toBool());
    EXPECT_TRUE(keys("Timer")["2"]->property("isSelected").toBool());
    showLibrary();
    EXPECT_TRUE(keys("Meters")["1"]->property("isSelected").toBool());
    EXPECT_FALSE(keys("Meters")["2"]->property("isSelected").toBool());
}

// Points from the view's top left corner, which is at 30, 20.
TEST_F(WidgetLibraryTest, RowsLieWhereTheyShould) {
    scene.rack.remove(WidgetID::meters);
    showLibrary();
    EXPECT_EQ(qobject_cast<QQuickItem*>(&scene.view())->height(), 112);
    EXPECT_EQ(placeOf(scene.itemNamed("Back")).top(), 20);
    EXPECT_EQ(placeOf(scene.itemNamed("Back")).height(), 26);
    EXPECT_NEAR(placeOf(scene.itemNamed("Back")).right(), 760, 1e-6);
    EXPECT_EQ(placeOf(list()), QRectF(30, 50, 730, 82));
    EXPECT_EQ(placeOf(row("Clock")), QRectF(30, 50, 730, 34));
    EXPECT_EQ(placeOf(row("Meters")), QRectF(30, 90, 730, 34));
    auto meters = keys("Meters");
    EXPECT_NEAR(placeOf(meters["Add"]).right(), 760, 1e-6);
    EXPECT_EQ(placeOf(meters["Add"]).top(), 90 + 4);
    EXPECT_NEAR(placeOf(meters["Add"]).left() - placeOf(meters["2"]).right(), 12, 1e-6);
    EXPECT_NEAR(placeOf(meters["2"]).left() - placeOf(meters["1"]).right(), 6, 1e-6);
    EXPECT_EQ(placeOf(meters["1"]).size(), QSizeF(34, 26));
}

TEST_F(WidgetLibraryTest, FadesWhileMoreFollows) {
    scene.rack.remove(WidgetID::meters);
    showLibrary();
    EXPECT_EQ(list()->property("atYEnd"), true) << "two rows fit";
    emptyRack();
    scene.advance(0);
    ASSERT_EQ(list()->property("count"), 8);
    // In a column that the primary keys fill.
    const auto light = [this](int y) { return Pixels(scene.picture()).at(755, y); };
    EXPECT_EQ(light(50 + 83), 0) << "nothing shows below the list";
    list()->setProperty("contentY", 14); // the third row's key lies across the list's end
    scene.advance(0);
    std::vector<int> lights;
    for (int y = 50 + 74; y < 50 + 82; ++y) {
        lights.push_back(light(y));
    }
    EXPECT_TRUE(std::ranges::is_sorted(lights, std::greater())) << ::testing::PrintToString(lights);
    EXPECT_GT(lights.front(), 200);
    EXPECT_LT(lights.back(), 40);
    list()->setProperty("contentY", list()->property("contentHeight").toDouble() - 82);
    scene.advance(0);
    EXPECT_EQ(list()->property("atYEnd"), true);
    EXPECT_EQ(light(50 + 82 - 6), 255) << "the last row is whole";
}

TEST_F(WidgetLibraryTest, ScrollsToWhatDoesNotFit) {
    testing::AnimationTime time;
    time.install();
    constexpr double end = 8 * 34 + 7 * 6 - 82;
    emptyRack();
    showLibrary();
    EXPECT_EQ(list()->property("contentY").toDouble(), 0);
    for (int notch = 0; notch < 10; ++notch) {
        turnWheel(-1);
        time.advance(400);
    }
    EXPECT_EQ(list()->property("contentY").toDouble(), end);
    press(keys("Keep Awake")["2"]);
    EXPECT_EQ(list()->property("contentY").toDouble(), end) << "a press moves nothing";
    press(keys("Keep Awake")["Add"]);
    EXPECT_THAT(scene.rack.layout().entries, ElementsAre(WidgetEntry{WidgetID::keepAwake, WidgetSize::wide}));
}

TEST_F(WidgetLibraryTest, APressThatBecomesADragAddsNothing) {
    emptyRack();
    showLibrary();
    const auto* key = keys("Timer")["Add"];
    const QPoint from = key->mapToScene({20, 13}).toPoint();
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, from);
    for (int moved = 0; moved <= 40; moved += 4) {
        QTest::mouseMove(&scene.window(), from - QPoint(0, moved));
    }
    EXPECT_FALSE(key->property("isPressed").toBool());
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, from - QPoint(0, 40));
    scene.advance(0);
    EXPECT_GT(list()->property("contentY").toDouble(), 10);
    EXPECT_THAT(scene.rack.layout().entries, IsEmpty());
    EXPECT_TRUE(scene.rack.isShowingLibrary());
}

TEST_F(WidgetLibraryTest, StaysInItsRoomAtEveryWidthAndInEveryLanguage) {
    emptyRack();
    for (const bool isLong : {false, true}) {
        const std::optional<LongTexts> texts =
            isLong ? std::optional<LongTexts>(std::in_place) : std::nullopt;
        for (const double scale : {1.0, 1.5, 2.0}) {
            scene.scale = scale;
            for (const int width : {456, 520, 730, 1070}) {
                showLibrary(width);
                list()->setProperty("contentY", 17);
                scene.advance(0);
                const QRect ink = Pixels(scene.picture()).box();
                EXPECT_GE(ink.left(), 30 * scale) << width;
                EXPECT_LE(ink.right() + 1, (30 + width) * scale + 0.5) << width;
                EXPECT_GE(ink.top(), 20 * scale) << width;
                EXPECT_LE(ink.bottom() + 1, 132 * scale) << width;
            }
        }
    }
}

TEST_F(WidgetLibraryTest, LongTextsEndBeforeTheKeys) {
    emptyRack();
    const LongTexts texts;
    showLibrary(456);
    auto usage = keys("Agent Usage Agent Usage");
    ASSERT_EQ(usage.size(), 3u);
    int cut = 0;
    for (const auto* text : row("Agent Usage Agent Usage")->childItems().front()->childItems()) {
        EXPECT_LE(placeOf(text).right(), placeOf(usage["1"]).left() - 12 + 1e-6);
        EXPECT_LE(text->property("contentWidth").toDouble(), text->width());
        EXPECT_EQ(text->property("lineCount"), 1);
        cut += text->property("truncated").toBool() ? 1 : 0;
    }
    EXPECT_EQ(cut, 1) << "the blurb, not the title";
}

} // namespace
} // namespace veslora
