// SPDX-License-Identifier: MIT
// Pausing alerts in the settings, and what is said of a pause.
#include "VesloraUI/Settings/AlertPausePresenter.h"
#include "VesloraUI/Support/LocalTime.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using AlertPause::hour;
using ::testing::Contains;
using ::testing::Not;

const QString none = "Prompts go straight to their terminals for a while.";

class AlertPauseTest : public ::testing::Test {
  protected:
    [[nodiscard]] QString said() const {
        return AlertPausePresenter::textOf(*scene.pausing.pausedUntil(), scene.platform.time.now(),
                                           LocalCalendar());
    }

    SettingsScene scene{"Agents"};
};

TEST_F(AlertPauseTest, AnHourBeginsAndEndsByItsKeys) {
    EXPECT_THAT(scene.texts(), Contains(none));
    EXPECT_FALSE(scene.shows("Resume"));
    scene.press("1 Hour");
    EXPECT_EQ(scene.pausing.pausedUntil(), scene.platform.time.now() + hour);
    EXPECT_THAT(scene.texts(), Contains(said()));
    EXPECT_THAT(scene.texts(), Not(Contains(none)));
    EXPECT_FALSE(scene.shows("1 Hour"));
    EXPECT_FALSE(scene.shows("Until Tomorrow"));
    scene.press("Resume");
    EXPECT_FALSE(scene.pausing.isPaused());
    EXPECT_THAT(scene.texts(), Contains(none));
}

TEST_F(AlertPauseTest, ThePageDoesNotMoveBelowThePointer) {
    scene.window().setHeight(400);
    const auto height = [this] { return scene.page().property("contentHeight").toDouble(); };
    const double before = height();
    scene.pausing.pause(AlertPause::For{hour});
    scene.advance(0);
    EXPECT_EQ(height(), before);
}

TEST_F(AlertPauseTest, UntilTomorrowSaysSo) {
    scene.press("Until Tomorrow");
    EXPECT_GT(*scene.pausing.pausedUntil(), scene.platform.time.now() + 3 * hour);
    EXPECT_THAT(scene.texts(), Contains(said()));
}

TEST_F(AlertPauseTest, TheRowFollowsAPauseFromElsewhereToItsEnd) {
    scene.pausing.pause(AlertPause::For{hour});
    EXPECT_TRUE(scene.shows("Resume"));
    scene.advance(hour);
    EXPECT_FALSE(scene.shows("Resume"));
    EXPECT_TRUE(scene.shows("1 Hour"));
}

TEST_F(AlertPauseTest, TheDesktopsDoNotDisturbIsNoPauseToEndHere) {
    scene.platform.quiet.turn(true);
    EXPECT_FALSE(scene.shows("Resume"));
    EXPECT_THAT(scene.texts(), Contains(none));
}

TEST_F(AlertPauseTest, TomorrowIsTodayOnceTheDayIsOver) {
    const Timestamp midnight = LocalCalendar().dayOf(scene.platform.time.now()).end;
    scene.advance(midnight - hour - scene.platform.time.now());
    scene.pausing.pause(AlertPause::For{2 * hour});
    const QString before = said();
    EXPECT_THAT(scene.texts(), Contains(before));
    scene.advance(hour);
    EXPECT_NE(said(), before);
    EXPECT_THAT(scene.texts(), Contains(said()));
}

TEST_F(AlertPauseTest, AKeyThatGoesGivesItsFocusToTheOneInItsPlace) {
    scene.focus("1 Hour");
    scene.key(Qt::Key_Return);
    EXPECT_TRUE(scene.pausing.isPaused());
    EXPECT_EQ(scene.focused(), "Resume");
    scene.key(Qt::Key_Space);
    EXPECT_FALSE(scene.pausing.isPaused());
    EXPECT_EQ(scene.focused(), "1 Hour");
}

TEST(AlertPauseText, SaysADayOnlyWhereItIsAnother) {
    const LocalCalendar calendar;
    const DaySpan today = calendar.dayOf(1'800'000'000);
    const Timestamp noon = today.start + 12 * hour;
    const auto said = [&](Timestamp until) { return AlertPausePresenter::textOf(until, noon, calendar); };
    const auto at = [](Timestamp time) { return LocalTime::shortTime(time); };
    EXPECT_EQ(said(noon + hour), "Paused until " + at(noon + hour) + ".");
    EXPECT_EQ(said(today.end), "Paused until tomorrow, " + at(today.end) + ".");
    const Timestamp later = noon + 3 * 24 * hour;
    EXPECT_EQ(said(later), "Paused until " + LocalTime::shortDate(later) + ", " + at(later) + ".");
}

} // namespace
} // namespace veslora
