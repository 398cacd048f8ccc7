// SPDX-License-Identifier: MIT
// The timer's widget, its wings and its alert, drawn and pressed.
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Support/QtTextMeasuring.h"
#include "VesloraUI/Timer/RunningTimerPresenter.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"

#include <QAccessible>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double minute = 60;
constexpr QRgb lime = qRgb(200, 255, 61);
constexpr QRgb urgent = qRgb(255, 77, 46);

/// How much of an item is seen through its parents.
double opacityOf(const QQuickItem* item) {
    double opacity = 1;
    for (; item; item = item->parentItem()) {
        opacity *= item->opacity();
    }
    return opacity;
}

class TimerViewTest : public ::testing::Test {
  protected:
    void TearDown() override { scene.close(); }

    void showWidget(bool isWide) {
        scene.show("Timer/TimerWidgetView.qml",
                   {{"timer", QVariant::fromValue(&scene.timer)},
                    {"isWide", isWide},
                    {"width", isWide ? 230 : 150},
                    {"height", 112}},
                   {300, 160});
    }
    /// Runs the selected length down to that many seconds.
    void runTo(double seconds) {
        scene.timer.start();
        scene.platform.advance(scene.timer.selectedMinutes() * minute - seconds);
    }
    void scroll(const QString& name, int angle) {
        const QPointF at = scene.centerOf(name);
        QWheelEvent event(at, scene.window().mapToGlobal(at), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&scene.window(), &event);
        scene.advance(0);
    }
    [[nodiscard]] QRectF placeOf(const QQuickItem* item) const {
        EXPECT_TRUE(item);
        return item ? item->mapRectToScene(QRectF(0, 0, item->width(), item->height())) : QRectF();
    }
    [[nodiscard]] QRectF placeOf(const QString& name) const { return placeOf(scene.itemNamed(name)); }
    [[nodiscard]] QRgb colorOf(const QString& name) const {
        return scene.itemNamed(name)->property("color").value<QColor>().rgb();
    }
    [[nodiscard]] QString helpOf(const QString& name) const {
        return scene.itemNamed(name)->property("helpText").toString();
    }
    /// The bar of a running timer.
    [[nodiscard]] QQuickItem* fuse() const { return found("Fuse"); }
    [[nodiscard]] QQuickItem* meter() const { return found("SegmentedMeter"); }
    [[nodiscard]] QQuickItem* lamp() const { return found("StatusLight"); }
    /// Whether the change of colour, which takes a moment, ends at that one.
    [[nodiscard]] bool turns(const QString& name, QRgb color) const {
        return QTest::qWaitFor([&] { return colorOf(name) == color; });
    }

    Scene scene;

  private:
    [[nodiscard]] QQuickItem* found(const QString& type) const {
        return found(type, scene.window().contentItem());
    }
    [[nodiscard]] static QQuickItem* found(const QString& type, QQuickItem* item) {
        if (!item->isVisible()) {
            return nullptr;
        }
        if (QString::fromUtf8(item->metaObject()->className()).startsWith(type + "_QML")) {
            return item;
        }
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* inside = found(type, child)) {
                return inside;
            }
        }
        return nullptr;
    }
};

TEST_F(TimerViewTest, ATimerThatComesIntoViewStandsAtItsValues) {
    // No animation moves.
    testing::AnimationTime time;
    time.install();
    runTo(8);
    showWidget(true);
    EXPECT_EQ(colorOf("0:08"), urgent);
    ASSERT_TRUE(fuse());
    const double fraction = fuse()->property("fraction").toDouble();
    EXPECT_GT(fraction, 0);
    EXPECT_DOUBLE_EQ(fuse()->childItems().at(0)->width(), fraction * 230);
    EXPECT_EQ(scene.texts().filter(QRegularExpression("^[0-9:]$")), QStringList({"0", ":", "0", "8"}))
        << "no former digit rolls out";
}

using TimerPickerTest = TimerViewTest;

TEST_F(TimerPickerTest, OffersLengthsInBothSizes) {
    scene.timer.select(25);
    for (const bool isWide : {false, true}) {
        showWidget(isWide);
        for (const char* name : {"Timer", "Scroll to set", "25:00", "5", "15", "25", "Start"}) {
            EXPECT_TRUE(scene.shows(name)) << name;
        }
        EXPECT_EQ(colorOf("25:00"), VesloraStyle::textPrimary().rgb());
        EXPECT_EQ(helpOf("15"), "15 minutes");
        EXPECT_EQ(meter()->property("segments"), 28);
        EXPECT_EQ(meter()->property("lit"), 13);
        QColor dim(lime);
        dim.setAlphaF(0.5F);
        EXPECT_EQ(meter()->property("tint").value<QColor>(), dim);
        scene.close();
    }
}

TEST_F(TimerPickerTest, EachPresetSelectsItsLength) {
    showWidget(true);
    for (const auto& [key, time, lit] :
         {std::tuple("15", "15:00", 11), std::tuple("25", "25:00", 13), std::tuple("5", "5:00", 5)}) {
        scene.press(key);
        EXPECT_TRUE(scene.shows(time)) << key;
        EXPECT_EQ(meter()->property("lit"), lit) << key;
    }
    EXPECT_THAT(scene.platform.taps.performed, IsEmpty());
}

TEST_F(TimerPickerTest, ScrollingClimbsTheLadder) {
    showWidget(true);
    scroll("5:00", 120);
    EXPECT_TRUE(scene.shows("6:00"));
    scroll("6:00", -120);
    scroll("5:00", -120);
    EXPECT_TRUE(scene.shows("4:00"));
    EXPECT_EQ(scene.platform.taps.performed.size(), 3u);
    scene.timer.select(180);
    EXPECT_TRUE(scene.shows("3:00:00"));
    EXPECT_EQ(meter()->property("lit"), 28);
    scroll("3:00:00", 120);
    EXPECT_TRUE(scene.shows("3:00:00"));
    EXPECT_EQ(scene.platform.taps.performed.size(), 3u) << "nothing is felt at the ladder's end";
    scene.timer.select(1);
    EXPECT_EQ(meter()->property("lit"), 1);
}

TEST_F(TimerPickerTest, StartRunsTheLengthThatShows) {
    showWidget(false);
    scene.press("15");
    scene.press("Start");
    ASSERT_TRUE(scene.timer.countdown());
    EXPECT_EQ(scene.timer.countdown()->duration, 15 * minute);
    scene.advance(0);
    EXPECT_TRUE(scene.shows("Pause"));
    EXPECT_FALSE(scene.shows("Start"));
}

TEST_F(TimerPickerTest, SaysWhenTheTimeIsUp) {
    runTo(0);
    ASSERT_TRUE(scene.timer.isShowingDone());
    showWidget(true);
    EXPECT_TRUE(scene.shows("Time's up"));
    EXPECT_TRUE(scene.shows("Scroll to set"));
    scene.close();
    showWidget(false);
    EXPECT_TRUE(scene.shows("Time's up"));
    EXPECT_FALSE(scene.shows("Scroll to set")) << "both have no room";
    scene.advance(15);
    EXPECT_TRUE(scene.shows("Timer"));
    EXPECT_TRUE(scene.shows("Scroll to set"));
}

TEST_F(TimerPickerTest, LiesWhereItShould) {
    scene.timer.select(25);
    showWidget(true);
    EXPECT_EQ(placeOf("Timer").topLeft(), QPointF(0, 0));
    EXPECT_NEAR(placeOf("Scroll to set").right(), 231.2, 0.05);
    EXPECT_EQ(placeOf("25:00").top(), 19);
    EXPECT_EQ(placeOf("25:00").height(), 34);
    EXPECT_EQ(placeOf(meter()), QRectF(0, 61, 230, 6));
    EXPECT_EQ(placeOf("5"), QRectF(0, 86, 34, 26));
    EXPECT_EQ(placeOf("Start").right(), 230);
    EXPECT_EQ(placeOf("Start").bottom(), 112);
    scene.close();
    showWidget(false);
    EXPECT_EQ(placeOf("25:00").top(), 22);
    EXPECT_EQ(placeOf("25:00").height(), 30);
    EXPECT_EQ(placeOf(meter()), QRectF(0, 60, 150, 5));
    EXPECT_EQ(placeOf("5"), QRectF(0, 86, 34, 26));
    EXPECT_EQ(placeOf("15"), QRectF(38, 86, 35, 26));
    EXPECT_EQ(placeOf("25"), QRectF(77, 86, 35, 26));
    EXPECT_EQ(placeOf("Start"), QRectF(116, 86, 34, 26));
}

using RunningTimerTest = TimerViewTest;

TEST_F(RunningTimerTest, ShowsTheTimeAndItsKeysInBothSizes) {
    scene.timer.select(25);
    runTo(18 * minute + 42);
    for (const bool isWide : {false, true}) {
        showWidget(isWide);
        for (const char* name :
             {"Timer", "18:42", "Pause", "Add a minute", "Add 5 minutes", "Cancel the timer"}) {
            EXPECT_TRUE(scene.shows(name)) << name;
        }
        EXPECT_EQ(helpOf("Add a minute"), "Add a minute");
        EXPECT_EQ(helpOf("Cancel the timer"), "Cancel the timer");
        EXPECT_EQ(colorOf("18:42"), VesloraStyle::textPrimary().rgb());
        EXPECT_EQ(opacityOf(scene.itemNamed("18:42")), 1);
        EXPECT_NEAR(fuse()->property("fraction").toDouble(), 0.748, 0.5 / fuse()->width());
        EXPECT_EQ(fuse()->property("tint").value<QColor>().rgb(), lime);
        EXPECT_EQ(lamp()->property("isOn"), true);
        scene.close();
    }
}

TEST_F(RunningTimerTest, CountsDownWhileItIsSeen) {
    scene.timer.start();
    showWidget(true);
    EXPECT_TRUE(scene.shows("5:00"));
    scene.advance(0.25);
    EXPECT_TRUE(scene.shows("5:00"));
    scene.advance(1);
    EXPECT_TRUE(scene.shows("4:59"));
    scene.advance(4.75 * minute);
    EXPECT_TRUE(scene.shows("0:14"));
    scene.advance(14);
    EXPECT_TRUE(scene.shows("Time's up"));
    EXPECT_TRUE(scene.shows("5:00"));
}

TEST_F(RunningTimerTest, KeysActAtOnce) {
    scene.timer.start();
    showWidget(true);
    scene.press("Add a minute");
    EXPECT_TRUE(scene.shows("6:00"));
    scene.press("Add 5 minutes");
    EXPECT_TRUE(scene.shows("11:00"));
    scene.press("Pause");
    EXPECT_TRUE(scene.timer.countdown()->isPaused());
    EXPECT_TRUE(scene.shows("Paused"));
    scene.advance(2 * minute);
    EXPECT_TRUE(scene.shows("11:00"));
    scene.press("Resume");
    EXPECT_FALSE(scene.timer.countdown()->isPaused());
    EXPECT_TRUE(scene.shows("Pause"));
    EXPECT_TRUE(scene.shows("Timer"));
    scene.press("Cancel the timer");
    EXPECT_FALSE(scene.timer.countdown());
    scene.advance(0);
    EXPECT_TRUE(scene.shows("Start"));
}

TEST_F(RunningTimerTest, PausedItIsDimAndItsLampIsOut) {
    runTo(2 * minute);
    scene.timer.pause();
    showWidget(true);
    EXPECT_EQ(opacityOf(scene.itemNamed("2:00")), 0.4);
    EXPECT_EQ(lamp()->property("isOn"), false);
    EXPECT_EQ(fuse()->property("tint").value<QColor>().rgb(), lime);
}

TEST_F(RunningTimerTest, PausedInItsLastSecondsItNeitherBlinksNorWarns) {
    runTo(5);
    scene.timer.pause();
    showWidget(true);
    for (int tick = 0; tick < 4; ++tick) {
        EXPECT_EQ(opacityOf(scene.itemNamed("0:05")), 0.4);
        scene.advance(0.25);
    }
    EXPECT_EQ(colorOf("0:05"), VesloraStyle::textPrimary().rgb());
}

TEST_F(RunningTimerTest, BlinksAndWarnsInItsLastTenSeconds) {
    runTo(11);
    showWidget(true);
    EXPECT_EQ(colorOf("0:11"), VesloraStyle::textPrimary().rgb());
    scene.advance(1);
    EXPECT_TRUE(turns("0:10", urgent));
    EXPECT_TRUE(QTest::qWaitFor([this] { return fuse()->property("tint").value<QColor>().rgb() == urgent; }));
    const auto* time = scene.itemNamed("0:10");
    EXPECT_EQ(opacityOf(time), 1);
    for (const double opacity : {0.25, 1.0, 0.25, 1.0}) {
        scene.advance(0.25);
        EXPECT_EQ(opacityOf(time), opacity);
    }
    EXPECT_TRUE(scene.shows("0:09"));
    scene.timer.add(1);
    EXPECT_TRUE(turns("1:09", VesloraStyle::textPrimary().rgb()));
}

TEST_F(RunningTimerTest, UrgencyHasTheAccentsOwnColor) {
    scene.settings.set("accent", "cyan");
    runTo(8);
    showWidget(true);
    EXPECT_TRUE(turns("0:08", qRgb(255, 77, 106)));
}

TEST_F(RunningTimerTest, LiesWhereItShould) {
    scene.timer.select(25);
    runTo(18 * minute + 42);
    showWidget(true);
    EXPECT_EQ(placeOf("18:42").top(), 19);
    EXPECT_EQ(placeOf(lamp()), QRectF(224, 3, 6, 6));
    EXPECT_EQ(placeOf(fuse()), QRectF(0, 61, 230, 4));
    EXPECT_EQ(placeOf("Pause").topLeft(), QPointF(0, 86));
    EXPECT_EQ(placeOf("Add a minute").left(), placeOf("Pause").right() + 6);
    EXPECT_EQ(placeOf("Add a minute").width(), 35);
    EXPECT_EQ(placeOf("Cancel the timer"), QRectF(196, 86, 34, 26));
    scene.close();
    showWidget(false);
    EXPECT_EQ(placeOf("18:42").top(), 22);
    EXPECT_EQ(placeOf(fuse()), QRectF(0, 60, 150, 3));
    EXPECT_EQ(placeOf("Pause"), QRectF(0, 86, 34, 26));
    EXPECT_EQ(placeOf("Add a minute"), QRectF(38, 86, 35, 26));
    EXPECT_EQ(placeOf("Add 5 minutes"), QRectF(77, 86, 35, 26));
    EXPECT_EQ(placeOf("Cancel the timer"), QRectF(116, 86, 34, 26));
}

TEST_F(RunningTimerTest, TheFuseMovesOnlyWhereItCouldBeSeen) {
    scene.timer.select(180);
    scene.timer.start();
    showWidget(true);
    auto* presenter = scene.view().findChild<RunningTimerPresenter*>();
    ASSERT_TRUE(presenter);
    EXPECT_EQ(presenter->fraction(), 1);
    std::set<double> fractions{1};
    std::set<double> counts;
    QObject::connect(presenter, &RunningTimerPresenter::changed, [&] {
        fractions.insert(presenter->fraction());
        counts.insert(presenter->remaining());
    });
    scene.advance(46);
    EXPECT_EQ(counts.size(), 46u);
    EXPECT_EQ(fractions.size(), 2u) << "half a point each 23 seconds, the first at the first tick";
}

TEST_F(RunningTimerTest, TheRackHoldsItInEitherSize) {
    for (const std::string layout : {"timer", "timer:1"}) {
        scene.settings.set("widgetLayout", layout);
        RackModel rack(scene.settings, scene.platform.taps);
        scene.showRack(rack, {296, 112});
        EXPECT_EQ(placeOf(meter()).width(), layout == "timer" ? 230 : 150);
        scene.close();
    }
}

class RollingTimeTest : public TimerViewTest {
  protected:
    void show(double remaining, bool isMonospaced = false) {
        scene.show("Timer/RollingTime.qml",
                   {{"remaining", remaining}, {"size", 30}, {"isMonospaced", isMonospaced}}, {200, 60});
    }
    void setRemaining(double remaining) {
        scene.view().setProperty("remaining", remaining);
        QCoreApplication::processEvents();
    }
    /// The visible letters and where their middle is, from the left.
    [[nodiscard]] std::vector<QQuickItem*> letters() const {
        std::vector<QQuickItem*> found;
        collect(scene.window().contentItem(), found);
        return found;
    }
    [[nodiscard]] static double middleOf(const QQuickItem* item) {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).center().x();
    }

  private:
    static void collect(QQuickItem* item, std::vector<QQuickItem*>& found) {
        if (item->isVisible() && item->inherits("QQuickText")) {
            found.push_back(item);
        }
        for (QQuickItem* child : item->childItems()) {
            collect(child, found);
        }
    }
};

TEST_F(RollingTimeTest, DigitsStandInBoxesOfEqualWidth) {
    show(671);
    std::vector<double> before;
    for (const auto* letter : letters()) {
        before.push_back(middleOf(letter));
    }
    ASSERT_EQ(before.size(), 5u);
    EXPECT_DOUBLE_EQ(before[1] - before[0], 0.66 * 30);
    EXPECT_DOUBLE_EQ(before[4] - before[3], 0.66 * 30);
    EXPECT_DOUBLE_EQ(before[0], -0.04 * 30 + 0.33 * 30);
    scene.close();
    show(1224);
    std::vector<double> after;
    for (const auto* letter : letters()) {
        after.push_back(middleOf(letter));
    }
    EXPECT_EQ(after, before);
}

TEST_F(RollingTimeTest, ADigitThatChangesRollsDownward) {
    show(60);
    EXPECT_EQ(letters().size(), 4u) << "nothing rolls when it appears";
    setRemaining(59);
    EXPECT_TRUE(scene.shows("0:59")) << "a reader hears the new time at once";
    const auto rolling = letters();
    // The colon stays; of each digit there is one that comes and one that goes.
    ASSERT_EQ(rolling.size(), 1u + 2u * 3u);
    const auto* coming = scene.itemWith("text", "9");
    const auto* going = coming->parentItem()->childItems().back();
    EXPECT_EQ(going->property("text"), "0");
    EXPECT_LT(coming->y(), 0);
    EXPECT_GT(going->y(), 0);
    EXPECT_LT(coming->opacity(), going->opacity());
    EXPECT_DOUBLE_EQ(going->y() - coming->y(), coming->height());
    EXPECT_TRUE(QTest::qWaitFor([this] { return letters().size() == 4; }));
    EXPECT_EQ(coming->y(), 0);
    EXPECT_EQ(coming->opacity(), 0.99);
}

TEST_F(RollingTimeTest, TheSecondsKeepTheirPlaceWhenTheHoursGo) {
    show(3600);
    EXPECT_EQ(scene.texts(), QStringList({"1", ":", "0", "0", ":", "0", "0"}));
    const auto* seconds = letters().back()->parentItem();
    setRemaining(3599);
    EXPECT_TRUE(QTest::qWaitFor([this] { return letters().size() == 5; }));
    EXPECT_EQ(scene.texts(), QStringList({"5", "9", ":", "5", "9"}));
    EXPECT_EQ(letters().back()->parentItem(), seconds);
    setRemaining(36000);
    EXPECT_TRUE(QTest::qWaitFor([this] { return letters().size() == 8; }));
    EXPECT_TRUE(scene.shows("10:00:00"));
}

TEST_F(RollingTimeTest, TimesThatComeFasterThanTheyRollEndAtTheLast) {
    show(60);
    for (const double remaining : {59.0, 58.0, 57.0, 12.0, -3.0, 7.0}) {
        setRemaining(remaining);
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return letters().size() == 4; }));
    EXPECT_EQ(scene.texts(), QStringList({"0", ":", "0", "7"}));
    for (const auto* letter : letters()) {
        EXPECT_EQ(letter->y(), 0);
    }
}

TEST_F(RollingTimeTest, InTheWingsItIsAsWideAsItWasMeasured) {
    scene.show("Timer/RollingTime.qml", {{"remaining", 5025.0}, {"size", 12}, {"isMonospaced", true}},
               {100, 30});
    const QtTextMeasuring measuring;
    EXPECT_NEAR(placeOf("1:23:45").width(), measuring.wingTextWidth("0:00:00"), 0.01);
}

/// The whole island with a timer, on a screen without a notch.
class TimerIslandTest : public TimerViewTest {
  protected:
    void showIsland() {
        island.show();
        ASSERT_TRUE(settles());
    }
    [[nodiscard]] bool settles() const { return island.settles(); }
    /// Whether a frame is drawn within a moment in which nothing is due.
    [[nodiscard]] bool draws() {
        constexpr int moment = 150;
        QSignalSpy frames(&scene.window(), &QQuickWindow::frameSwapped);
        return QTest::qWaitFor([&] { return frames.count() > 0; }, moment);
    }

    SceneIsland island{scene};
    NotchViewModel& model{island.model};
    const QtTextMeasuring& measuring{island.measuring};
};

TEST_F(TimerIslandTest, TheWingsTellOfATimerThatRuns) {
    scene.timer.select(25);
    runTo(18 * minute + 42);
    showIsland();
    const double left = (1134 - model.islandWidth()) / 2;
    EXPECT_EQ(model.islandWidth(), 200 + 2 * model.wingWidth());
    EXPECT_NEAR(placeOf("18:42").center().x(), left + 12 + (model.wingWidth() - 16) / 2, 0.01);
    EXPECT_EQ(placeOf("18:42").center().y(), 14);
    EXPECT_EQ(colorOf("18:42"), VesloraStyle::textPrimary().rgb());
    EXPECT_EQ(placeOf(fuse()).size(), QSizeF(25, 3));
    EXPECT_NEAR(placeOf(fuse()).center().x(),
                1134 - left - model.wingWidth() + 4 + (model.wingWidth() - 16) / 2, 0.01);
    EXPECT_NEAR(fuse()->property("fraction").toDouble(), 0.748, 0.5 / 25);
}

TEST_F(TimerIslandTest, TheWingsStandStillThroughAWholeRun) {
    scene.timer.select(60);
    scene.timer.start();
    showIsland();
    const double wing = model.wingWidth();
    EXPECT_GE(wing, measuring.wingTextWidth("0:00:00") + 16);
    QSignalSpy moved(&model, &NotchViewModel::layoutChanged);
    scene.advance(10);
    EXPECT_TRUE(scene.shows("59:50"));
    scene.advance(55 * minute);
    EXPECT_TRUE(scene.shows("4:50"));
    EXPECT_EQ(model.wingWidth(), wing) << "the hours that have gone keep their room";
    EXPECT_EQ(moved.count(), 0);
}

TEST_F(TimerIslandTest, AddedHoursMakeTheWingsWider) {
    scene.timer.start();
    showIsland();
    const double wing = model.wingWidth();
    scene.timer.add(60);
    EXPECT_GT(model.wingWidth(), wing);
    EXPECT_TRUE(settles());
    EXPECT_TRUE(scene.shows("1:05:00"));
}

TEST_F(TimerIslandTest, TheWingsBlinkAndWarnInTheLastTenSeconds) {
    runTo(10);
    showIsland();
    EXPECT_TRUE(turns("0:10", urgent));
    const auto* time = scene.itemNamed("0:10");
    EXPECT_EQ(opacityOf(time), 1);
    scene.advance(0.25);
    EXPECT_EQ(time->opacity(), 0.25);
    scene.advance(0.25);
    EXPECT_EQ(time->opacity(), 1);
    scene.timer.pause();
    EXPECT_EQ(time->opacity(), 0.4);
    EXPECT_TRUE(turns("0:10", VesloraStyle::textPrimary().rgb()));
}

TEST_F(TimerIslandTest, BetweenTwoSecondsNoFrameIsDrawn) {
    scene.timer.select(180);
    scene.timer.start();
    showIsland();
    scene.advance(30.5);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !draws(); })) << "the last second has come to rest";
    scene.platform.advance(0.25);
    EXPECT_FALSE(draws());
    scene.platform.advance(0.25);
    EXPECT_TRUE(draws()) << "a second has passed";
}

TEST_F(TimerIslandTest, APausedTimerDrawsNothing) {
    runTo(2 * minute);
    showIsland();
    scene.timer.pause();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !draws(); }));
    scene.platform.advance(10);
    EXPECT_FALSE(draws());
}

TEST_F(TimerIslandTest, AnotherActivityTakesTheTimersTicks) {
    scene.timer.start();
    scene.claude.publish({FakeMonitor::session("s", ClaudeStatus::Finished{1})}, {});
    showIsland();
    EXPECT_THAT(scene.texts(), ElementsAre("DONE"));
    EXPECT_EQ(scene.platform.time.pending(), 1u) << "nothing but the timer's end";
}

TEST_F(TimerIslandTest, ItsEndDropsDownAndCanBeRestarted) {
    scene.timer.select(25);
    runTo(1);
    showIsland();
    scene.advance(1);
    ASSERT_TRUE(settles());
    EXPECT_EQ(model.islandWidth(), 360);
    EXPECT_EQ(model.islandHeight(), 28 + 76);
    for (const char* name : {"DONE", "25:00", "Restart", "Dismiss"}) {
        EXPECT_TRUE(scene.shows(name)) << name;
    }
    EXPECT_EQ(colorOf("DONE"), lime);
    scene.press("Restart");
    ASSERT_TRUE(settles());
    EXPECT_TRUE(scene.shows("25:00"));
    EXPECT_FALSE(scene.shows("Dismiss"));
    EXPECT_TRUE(scene.timer.isLiveActivityVisible());
}

TEST_F(TimerIslandTest, WingsOnTheirWayOutKeepTheirWidth) {
    runTo(1);
    showIsland();
    const double wing = model.wingWidth();
    scene.platform.advance(1);
    const auto* leaving = scene.itemWith("isLeaving", true);
    ASSERT_TRUE(leaving);
    EXPECT_EQ(model.wingWidth(), 0);
    EXPECT_EQ(scene.itemWith("drawnWidth", wing)->property("wingWidth"), 0);
}

TEST_F(TimerIslandTest, TheAlertGoesWhenItIsDismissedOrAfterAWhile) {
    runTo(0);
    showIsland();
    scene.press("Dismiss");
    EXPECT_FALSE(scene.timer.isShowingDone());
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), IsEmpty());
    runTo(0);
    ASSERT_TRUE(settles());
    scene.advance(15);
    ASSERT_TRUE(settles());
    EXPECT_THAT(scene.texts(), IsEmpty());
    EXPECT_EQ(scene.platform.time.pending(), 0u);
}

TEST_F(TimerIslandTest, AScreenReaderIsToldOfTheAlertWhenItComesToShow) {
    runTo(0);
    showIsland();
    auto* alert =
        QAccessible::queryAccessibleInterface(scene.itemNamed("The timer is done. Restart or Dismiss."));
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->role(), QAccessible::Notification);
    EXPECT_FALSE(alert->state().invisible);
}

TEST_F(TimerIslandTest, TheAlertGoesBeforeAPrompt) {
    scene.claude.publish({}, {FakeMonitor::request("r", scene.platform.time.now(), "text")});
    runTo(0);
    showIsland();
    EXPECT_TRUE(scene.shows("Restart"));
    EXPECT_FALSE(scene.shows("Allow"));
}

TEST_F(TimerIslandTest, TheAlertLiesWhereItShould) {
    runTo(0);
    showIsland();
    const double left = (1134 - 360) / 2.0 + 24;
    EXPECT_EQ(placeOf("DONE").left(), left);
    EXPECT_EQ(placeOf("5:00").left(), left);
    EXPECT_EQ(placeOf("5:00").height(), 28);
    EXPECT_EQ(placeOf("Dismiss").right(), left + 312);
    EXPECT_EQ(placeOf("Dismiss").left() - placeOf("Restart").right(), 6);
    EXPECT_EQ(placeOf(fuse()).left(), placeOf("5:00").right() + 12);
    EXPECT_EQ(placeOf(fuse()).right(), placeOf("Restart").left() - 12);
    EXPECT_EQ(placeOf(fuse()).height(), 2);
}

TEST_F(TimerIslandTest, TheAlertsFuseFlickersThreeTimesAndStaysLit) {
    runTo(0);
    showIsland();
    std::vector<double> seen;
    QObject::connect(fuse(), &QQuickItem::opacityChanged, fuse(),
                     [&, item = fuse()] { seen.push_back(item->opacity()); });
    EXPECT_EQ(fuse()->opacity(), 0.15);
    for (int half = 0; half < 5; ++half) {
        scene.platform.advance(0.18);
    }
    EXPECT_THAT(seen, ElementsAre(1, 0.15, 1, 0.15, 1));
    scene.platform.advance(5);
    EXPECT_EQ(seen.size(), 5u);
    EXPECT_EQ(fuse()->opacity(), 1);
}

} // namespace
} // namespace veslora
