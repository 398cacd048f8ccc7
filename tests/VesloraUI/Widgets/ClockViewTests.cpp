// SPDX-License-Identifier: MIT
// The clock, drawn, and how its date and time are written in other places.
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Support/LocalTime.h"
#include "VesloraUI/Widgets/ClockViewPresenter.h"
#include "tests/VesloraUI/Fixtures/FixedPlace.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace veslora {
namespace {

using testing::ElementsAre;

// A Saturday, five minutes past two in the zone of these tests, an hour east of Greenwich.
constexpr Timestamp saturday = 1'795'266'300;

class ClockViewTest : public testing::Test {
  protected:
    void SetUp() override { scene.platform.time.setClock(saturday); }

    void showClock() { scene.show("Widgets/ClockView.qml", {}, {150, 112}); }
    [[nodiscard]] QString time() const { return scene.view().findChild<ClockViewPresenter*>()->timeText(); }
    [[nodiscard]] QRectF placeOf(const QString& name) const {
        const auto* item = scene.itemNamed(name);
        EXPECT_TRUE(item) << name.toStdString();
        return item ? item->mapRectToScene(QRectF(0, 0, item->width(), item->height())) : QRectF();
    }

    FixedPlace place;
    Scene scene;
};

TEST_F(ClockViewTest, ShowsDateAndTime) {
    showClock();
    EXPECT_THAT(scene.texts(), ElementsAre("Sat 21 Nov", "1", "4", ":", "0", "5"));
    EXPECT_THAT(scene.names(), ElementsAre("Sat 21 Nov", "14:05"));
    EXPECT_EQ(scene.itemNamed("Sat 21 Nov")->property("color").value<QColor>().rgb(),
              VesloraStyle::textSecondary().rgb());
    EXPECT_EQ(scene.itemWith("text", "4")->property("color").value<QColor>().rgb(),
              VesloraStyle::textPrimary().rgb());
}

TEST_F(ClockViewTest, MovesOnTheMinuteAndNotBefore) {
    scene.platform.time.setClock(saturday + 20);
    showClock();
    scene.advance(39);
    EXPECT_TRUE(scene.shows("14:05"));
    scene.advance(1);
    EXPECT_TRUE(scene.shows("14:06"));
    scene.advance(59);
    EXPECT_TRUE(scene.shows("14:06"));
    scene.advance(1);
    EXPECT_TRUE(scene.shows("14:07"));
    EXPECT_TRUE(scene.shows("Sat 21 Nov"));
}

TEST_F(ClockViewTest, TheDateMovesAtMidnight) {
    scene.platform.time.setClock(saturday + 594 * 60);
    showClock();
    EXPECT_TRUE(scene.shows("23:59"));
    EXPECT_TRUE(scene.shows("Sat 21 Nov"));
    scene.advance(60);
    EXPECT_TRUE(scene.shows("00:00"));
    EXPECT_TRUE(scene.shows("Sun 22 Nov"));
}

TEST_F(ClockViewTest, FollowsAClockThatWasSet) {
    showClock();
    scene.platform.time.setClock(saturday - 3'600);
    scene.advance(60);
    EXPECT_TRUE(scene.shows("13:06"));
}

TEST_F(ClockViewTest, AfterASleepTheTimeIsReadAtOnce) {
    showClock();
    // So that nothing else can have moved it.
    scene.platform.time.setClock(saturday + 7'205);
    EXPECT_TRUE(scene.shows("14:05"));
    scene.environment.readClocks();
    EXPECT_EQ(time(), "16:05");
}

TEST_F(ClockViewTest, OutOfSightItRestsAndThenKnowsTheTime) {
    showClock();
    auto* clock = qobject_cast<QQuickItem*>(&scene.view());
    clock->setVisible(false);
    EXPECT_EQ(scene.platform.time.pending(), 0U);
    scene.advance(600);
    clock->setVisible(true);
    EXPECT_EQ(time(), "14:15");
}

TEST_F(ClockViewTest, AMinuteMovesItsOwnDigitAlone) {
    showClock();
    auto* presenter = scene.view().findChild<ClockViewPresenter*>();
    const QString date = presenter->dateText();
    const int size = presenter->fontSize();
    const QSignalSpy pieces(presenter->pieces(), &QAbstractItemModel::dataChanged);
    const auto* hours = scene.itemWith("text", "4");
    const qreal left = hours->x();
    scene.advance(60);
    EXPECT_TRUE(scene.shows("14:06"));
    ASSERT_EQ(pieces.count(), 1);
    EXPECT_EQ(pieces[0][0].toModelIndex().row(), 4);
    EXPECT_EQ(presenter->dateText(), date);
    EXPECT_EQ(presenter->fontSize(), size);
    EXPECT_EQ(scene.itemWith("text", "4"), hours);
    EXPECT_EQ(hours->x(), left);
}

// Points from the widget's top left corner.
TEST_F(ClockViewTest, StandsInTheMiddle) {
    showClock();
    EXPECT_EQ(placeOf("Sat 21 Nov"), QRectF(0, 25, 150, 12));
    EXPECT_EQ(placeOf("14:05").top(), 43);
    EXPECT_EQ(placeOf("14:05").bottom(), 87);
    EXPECT_NEAR(placeOf("14:05").center().x(), 75, 0.5);
    const auto* digit = scene.itemWith("text", "4");
    EXPECT_DOUBLE_EQ(digit->width(), 0.66 * 36);
    EXPECT_EQ(digit->property("font").value<QFont>().pixelSize(), 36);
    EXPECT_EQ(digit->property("font").value<QFont>().weight(), QFont::Medium);
}

TEST_F(ClockViewTest, ATimeThatIsTooWideIsSmaller) {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    scene.platform.time.setClock(saturday - 4 * 3'600);
    showClock();
    EXPECT_TRUE(time().startsWith("10:05") && time().endsWith("AM")) << time().toStdString();
    const auto box = placeOf(time());
    EXPECT_GE(box.left(), 0);
    EXPECT_LE(box.right(), 150);
    const int size = scene.itemWith("text", "5")->property("font").value<QFont>().pixelSize();
    EXPECT_LT(size, 36);
    EXPECT_GE(size, 21);
}

TEST_F(ClockViewTest, TheSizeHasALeast) {
    ClockViewPresenter presenter;
    presenter.setDate(saturday);
    presenter.componentComplete();
    for (const double width : {0.0, -5.0, 1.0}) {
        presenter.setAvailableWidth(width);
        EXPECT_EQ(presenter.fontSize(), 21) << width;
    }
    presenter.setAvailableWidth(1e9);
    EXPECT_EQ(presenter.fontSize(), 36);
}

TEST(ClockPieces, EachDigitIsOne) {
    const auto pieces = ClockViewPresenter::piecesOf("10:05 PM");
    ASSERT_EQ(pieces.size(), 6U);
    EXPECT_EQ(pieces[2], (ClockPiece{2, ":", false}));
    EXPECT_EQ(pieces[3], (ClockPiece{3, "0", true}));
    EXPECT_EQ(pieces[5], (ClockPiece{5, " PM", false}));
    EXPECT_TRUE(ClockViewPresenter::piecesOf("").empty());
    EXPECT_EQ(ClockViewPresenter::piecesOf(QStringLiteral("٢:٠٥ م")).size(), 1U);
}

TEST(LocalTimeTests, ADateHasTheLocalesOrder) {
    const FixedPlace place;
    const auto dateIn = [](const char* locale) {
        return LocalTime::shortDate(saturday, QLocale(QString::fromLatin1(locale)));
    };
    EXPECT_EQ(dateIn("en_GB"), "Sat 21 Nov");
    EXPECT_EQ(dateIn("en_US"), "Sat Nov 21");
    EXPECT_EQ(dateIn("de_DE"), "Sa. 21. Nov.");
    EXPECT_EQ(dateIn("es_ES"), "sáb 21 nov");
    EXPECT_EQ(dateIn("ja_JP"), "11月 21日 土");
    EXPECT_EQ(dateIn("hu_HU"), "nov. 21. Szo");
    EXPECT_EQ(dateIn("C"), "Sat 21 Nov");
}

TEST(LocalTimeTests, APatternKeepsOnlyWhatIsShown) {
    EXPECT_EQ(LocalTime::shortDateFormat("dddd, d MMMM yyyy"), "ddd d MMM");
    EXPECT_EQ(LocalTime::shortDateFormat("dddd, d. MMMM yyyy"), "ddd d'.' MMM");
    EXPECT_EQ(LocalTime::shortDateFormat("yyyy('e')'ko' MMMM'ren' d('a'), dddd"), "MMM d ddd");
    EXPECT_EQ(LocalTime::shortDateFormat("dddd, yyyy. 'gada' d. MMMM"), "ddd d'.' MMM");
    EXPECT_EQ(LocalTime::shortDateFormat("d 'o''d' MM"), "ddd d MMM");
    EXPECT_EQ(LocalTime::shortDateFormat(""), "");
    EXPECT_EQ(LocalTime::shortDateFormat("'open d"), "");
}

TEST(LocalTimeTests, ATimeHasADayPeriodWhereTheLocaleHasOne) {
    const FixedPlace place;
    EXPECT_EQ(LocalTime::shortTime(saturday), "14:05");
    EXPECT_EQ(LocalTime::shortTime(saturday, QLocale::c()), "14:05");
    const QString american = LocalTime::shortTime(saturday, QLocale("en_US"));
    EXPECT_TRUE(american.startsWith("2:05") && american.endsWith("PM")) << american.toStdString();
    EXPECT_FALSE(LocalTime::shortTime(saturday, QLocale("zh_TW")).contains('B'));
    EXPECT_EQ(LocalTime::shortDate(saturday, QLocale("fa_IR")).count(QStringLiteral("۲۱")), 1);
}

TEST(LocalTimeTests, ATimeHasNoSecondsWhateverThePlacesShortFormIs) {
    EXPECT_EQ(LocalTime::shortTimeFormat("HH:mm:ss"), "HH:mm");
    EXPECT_EQ(LocalTime::shortTimeFormat("h:mm:ss AP"), "h:mm AP");
    EXPECT_EQ(LocalTime::shortTimeFormat("HH.mm.ss.zzz t"), "HH.mm");
    EXPECT_EQ(LocalTime::shortTimeFormat("AP h:mm"), "AP h:mm");
    EXPECT_EQ(LocalTime::shortTimeFormat("HH 'h' mm 'min' ss 's'"), "HH 'h' mm 'min' 's'");
    EXPECT_EQ(LocalTime::shortTimeFormat(""), "");
    const FixedPlace place;
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        EXPECT_EQ(LocalTime::shortTime(saturday, locale), LocalTime::shortTime(saturday + 7, locale))
            << locale.name().toStdString();
    }
}

TEST(LocalTimeTests, ADateHasItsWeekdayInEveryPlace) {
    EXPECT_EQ(LocalTime::shortDateFormat("d MMMM yyyy"), "ddd d MMM");
    const FixedPlace place;
    for (const QLocale& locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        const QString weekday = locale.toString(QDate(2026, 11, 21), QStringLiteral("ddd"));
        EXPECT_TRUE(LocalTime::shortDate(saturday, locale).contains(weekday)) << locale.name().toStdString();
    }
}

TEST(LocalTimeTests, MomentsBeyondAnyCalendarAreNoMatter) {
    const FixedPlace place;
    for (const Timestamp time : {1e300, -1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_FALSE(LocalTime::shortTime(time).isEmpty()) << time;
        EXPECT_FALSE(LocalTime::shortDate(time).isEmpty()) << time;
    }
}

} // namespace
} // namespace veslora
