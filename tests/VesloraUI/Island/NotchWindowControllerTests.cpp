// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Defaults.h"
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"
#include "tests/support/LogRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// On a screen of 1440 by 900 with a bar of 28 points the notch spans x 620 to 820, y 872 to 900.
constexpr Point onNotch{720, 890};
constexpr Point inOpenIsland{720, 760};
constexpr Point farAway{100, 100};

class NotchWindowControllerTest : public ::testing::Test, protected ControlledIsland {
  protected:
    void start() { controller.start(); }
    void openByHover() {
        platform.mouse.moveTo(onNotch);
        platform.advance(0.1);
    }
    void letWait(double since, const std::string& id = "s1") {
        claude.publish({FakeMonitor::session(id, ClaudeStatus::NeedsApproval{"", since})}, {});
    }
    /// What the alert's view says once it is on screen.
    void drawAlert() { controller.model()->alertIsOnScreen(controller.model()->contentIdentity()); }
    [[nodiscard]] bool isExpanded() const { return controller.tracker()->isExpanded(); }
    [[nodiscard]] IslandState state() const { return controller.model()->state(); }
};

TEST_F(NotchWindowControllerTest, TellsWhereItIsAndWhatItShows) {
    const testing::LogRecorder recorder;
    start();
    letWait(1);
    const std::vector<ScreenInfo> screens = std::exchange(platform.displays.screens, {});
    emit platform.displays.changed();
    controller.stop();
    std::vector<std::string> texts;
    for (const testing::LogRecorder::Line& line : recorder.decisions()) {
        if (line.category == "veslora.island") {
            texts.push_back(line.text);
        }
    }
    EXPECT_THAT(texts, ElementsAre("laid out on " + screens[0].name, "shows claudeAlert",
                                   "stays as it is, without any screen"));
    EXPECT_THAT(recorder.warnings(), IsEmpty());
}

TEST_F(NotchWindowControllerTest, NothingRunsBeforeStart) {
    EXPECT_THAT(claude.log, IsEmpty());
    EXPECT_FALSE(platform.window.isShown);
    EXPECT_EQ(controller.model(), nullptr);
}

TEST_F(NotchWindowControllerTest, StartsMonitorsAndShowsThePanel) {
    start();
    EXPECT_THAT(claude.log, ElementsAre("start"));
    EXPECT_TRUE(platform.window.isShown);
    EXPECT_TRUE(platform.mouse.isTracking);
    EXPECT_EQ(platform.window.frame, NotchGeometry(platform.displays.screens[0].metrics).windowFrame());
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, AfterASleepTheMetersAreReadAtOnceIfAnybodyLooks) {
    start();
    emit platform.sleep.didWake();
    const int before = platform.readings.reads;
    EXPECT_EQ(before, 1) << "the size of the memory";
    controller.sampler().viewAppeared();
    const int seen = platform.readings.reads;
    emit platform.sleep.didWake();
    EXPECT_GT(platform.readings.reads, seen);
    controller.stop();
    const int stopped = platform.readings.reads;
    emit platform.sleep.didWake();
    EXPECT_EQ(platform.readings.reads, stopped);
}

TEST_F(NotchWindowControllerTest, StopRunsEverythingDown) {
    start();
    openByHover();
    controller.stop();
    EXPECT_THAT(claude.log, ElementsAre("start", "stop"));
    EXPECT_FALSE(platform.window.isShown);
    EXPECT_FALSE(platform.mouse.isTracking);
    EXPECT_EQ(platform.time.pending(), 0u);
    settings.set(SettingsKeys::hoverDelay, 0.3);
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(isExpanded()) << "nobody listens any more";
}

TEST_F(NotchWindowControllerTest, APointerThatRestsOpensTheIsland) {
    start();
    platform.mouse.moveTo(onNotch);
    EXPECT_FALSE(isExpanded());
    platform.advance(0.09);
    EXPECT_FALSE(isExpanded());
    platform.advance(0.01);
    EXPECT_TRUE(isExpanded());
    EXPECT_EQ(state(), IslandState::expanded);
}

TEST_F(NotchWindowControllerTest, LeavingClosesAtOnceAndForgetsTheWait) {
    start();
    platform.advance(1); // nothing of the beginning is left to come
    platform.mouse.moveTo(onNotch);
    platform.advance(0.05);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(platform.time.pending(), 0u) << "no wake-up is left over";
    openByHover();
    platform.mouse.moveTo(inOpenIsland);
    EXPECT_TRUE(isExpanded());
    platform.mouse.moveTo(std::nullopt);
    EXPECT_FALSE(isExpanded()) << "another screen is outside of everything";
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, AsksForTheRacksMemoryBackEachTimeItCloses) {
    start();
    openByHover();
    EXPECT_EQ(platform.freed.releases, 0);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(platform.freed.releases, 1);
    platform.mouse.moveTo({{721, 500}});
    EXPECT_EQ(platform.freed.releases, 1) << "a closed island that the pointer passes by";
    controller.toggle();
    controller.toggle();
    EXPECT_EQ(platform.freed.releases, 2);
}

TEST_F(NotchWindowControllerTest, TakesClicksOnlyWhereTheIslandIs) {
    start();
    EXPECT_FALSE(platform.window.takesClicksAt(onNotch));
    EXPECT_THAT(platform.window.zones.hover, SizeIs(1));
    openByHover();
    EXPECT_TRUE(platform.window.takesClicksAt(onNotch));
    EXPECT_TRUE(platform.window.takesClicksAt({720, 900})) << "the topmost row is inside";
    EXPECT_TRUE(platform.window.takesClicksAt(inOpenIsland));
    EXPECT_FALSE(platform.window.takesClicksAt(farAway));
    platform.mouse.moveTo(farAway);
    EXPECT_FALSE(platform.window.takesClicksAt(onNotch));
}

TEST_F(NotchWindowControllerTest, AnAlertTakesClicksOnItsOwnSize) {
    start();
    letWait(1);
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_EQ(controller.model()->islandWidth(), 360);
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({720, 800}));
    EXPECT_FALSE(platform.window.takesClicksAt({480, 860}));
    claude.publish(claude.summaries(), {FakeMonitor::request("r", platform.time.now())});
    EXPECT_EQ(controller.model()->islandWidth(), 520);
    EXPECT_EQ(controller.model()->islandHeight(), 28 + 104);
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({480, 860}));
    claude.publish({}, {});
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800}));
}

TEST_F(NotchWindowControllerTest, AClickBeforeTheAlertsFrameFallsOnWhatLiesBeneath) {
    start();
    letWait(1);
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800})) << "the notice was not drawn yet";
    const QString notice = controller.model()->contentIdentity();
    claude.publish(claude.summaries(), {FakeMonitor::request("r", platform.time.now())});
    controller.model()->alertIsOnScreen(notice);
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800})) << "its view is on its way out already";
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({720, 800}));
    claude.publish(claude.summaries(), {FakeMonitor::request("r2", platform.time.now())});
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800})) << "the next request was not drawn yet";
    emit platform.displays.changed();
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({720, 800})) << "in a new layout too";
}

TEST_F(NotchWindowControllerTest, AnAlertKeepsHoverFromOpening) {
    start();
    letWait(1);
    platform.mouse.moveTo(onNotch);
    platform.advance(1);
    EXPECT_FALSE(isExpanded());
    claude.publish({}, {});
    platform.mouse.moveTo(onNotch);
    platform.advance(0.1);
    EXPECT_TRUE(isExpanded());
}

TEST_F(NotchWindowControllerTest, HoveringOpensAfterItsDelayHoweverTheClockIsSet) {
    settings.set(SettingsKeys::hoverDelay, 0.5);
    for (const double step : {-7200.0, 7200.0}) {
        if (!controller.model()) {
            start();
        }
        platform.mouse.moveTo(onNotch);
        platform.advance(0.2);
        platform.time.setClock(platform.time.now() + step);
        platform.mouse.moveTo(onNotch);
        platform.advance(0.2);
        EXPECT_FALSE(isExpanded()) << step;
        platform.advance(0.1);
        EXPECT_TRUE(isExpanded()) << step;
        platform.mouse.moveTo(std::nullopt);
        EXPECT_FALSE(isExpanded());
    }
}

TEST_F(NotchWindowControllerTest, APressInProgressIsNeverCutOff) {
    start();
    openByHover();
    platform.mouse.moveTo(inOpenIsland);
    platform.mouse.isDown = true;
    platform.mouse.position = inOpenIsland;
    controller.rack().onIslandWidthChange(600);
    EXPECT_TRUE(platform.window.takesClicksAt({720 - 390, 760})) << "still the old zone";
    platform.mouse.isDown = false;
    platform.mouse.moveTo(inOpenIsland);
    EXPECT_FALSE(platform.window.takesClicksAt({720 - 390, 760}));
}

TEST_F(NotchWindowControllerTest, ZonesHeldForAPressAreMadeAgainOnItsRelease) {
    start();
    openByHover();
    platform.mouse.moveTo(inOpenIsland);
    platform.mouse.isDown = true;
    controller.rack().onIslandWidthChange(600);
    platform.mouse.isDown = false;
    emit platform.mouse.released();
    EXPECT_FALSE(platform.window.takesClicksAt({720 - 390, 760})) << "although the pointer did not move";
}

TEST_F(NotchWindowControllerTest, APressThatBeganElsewhereDoesNotKeepTheIslandOut) {
    start();
    platform.mouse.isDown = true;
    openByHover();
    EXPECT_TRUE(platform.window.takesClicksAt(onNotch));
}

TEST_F(NotchWindowControllerTest, ANewWaitSoundsOnce) {
    settings.set(SettingsKeys::claudeApprovalSound, true);
    start();
    letWait(1);
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
    letWait(1, "s1");
    controller.presentationChanged();
    EXPECT_THAT(platform.sound.played, SizeIs(1));
    letWait(2);
    EXPECT_THAT(platform.sound.played, SizeIs(2)) << "a new stamp is a new wait";
}

TEST_F(NotchWindowControllerTest, TurningTheSoundOnDoesNotAnnounceOldWaits) {
    start();
    letWait(1);
    settings.set(SettingsKeys::claudeApprovalSound, true);
    controller.presentationChanged();
    EXPECT_THAT(platform.sound.played, IsEmpty());
}

TEST_F(NotchWindowControllerTest, NoSoundWithoutAlerts) {
    settings.set(SettingsKeys::claudeApprovalSound, true);
    settings.set(SettingsKeys::claudeApprovalAlerts, false);
    start();
    letWait(1);
    EXPECT_THAT(platform.sound.played, IsEmpty());
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, AWaitThatEndsCountsAsNewWhenItComesBack) {
    settings.set(SettingsKeys::claudeApprovalSound, true);
    start();
    letWait(1);
    claude.publish({}, {});
    letWait(1);
    EXPECT_THAT(platform.sound.played, SizeIs(2));
}

TEST_F(NotchWindowControllerTest, AnotherSessionsWaitSoundsThoughTheAlertIsUpAlready) {
    settings.set(SettingsKeys::claudeApprovalSound, true);
    start();
    letWait(1);
    claude.publish({FakeMonitor::session("s1", ClaudeStatus::NeedsApproval{"", 1}),
                    FakeMonitor::session("s2", ClaudeStatus::NeedsApproval{"", 2})},
                   {});
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass", "Glass"));
}

/// How often the island was judged for what a test does.
class JudgementTest : public NotchWindowControllerTest {
  protected:
    JudgementTest() { start(); }
    template <class Change>
    [[nodiscard]] std::uint64_t judgementsFor(Change change) {
        const std::uint64_t before = controller.judgements();
        change();
        return controller.judgements() - before;
    }
    void letWork(const std::string& id = "s1") {
        claude.publish({FakeMonitor::session(id, ClaudeStatus::Working{platform.time.now()})}, {});
    }
};

TEST_F(JudgementTest, ASessionThatBeginsToWaitIsJudgedOnce) {
    EXPECT_EQ(judgementsFor([this] { letWait(1); }), 1u);
    EXPECT_EQ(state(), IslandState::claudeAlert);
}

TEST_F(JudgementTest, ASessionThatStopsWorkingInOrderToWaitIsJudgedOnceThoughTheMachineMaySleepAgain) {
    settings.set(SettingsKeys::keepAwakeWhileClaude, true);
    letWork();
    ASSERT_TRUE(controller.keepAwake().state().claudeIsWorking);
    EXPECT_EQ(judgementsFor([this] { letWait(1); }), 1u);
    EXPECT_FALSE(controller.keepAwake().state().claudeIsWorking);
    EXPECT_EQ(state(), IslandState::claudeAlert);
}

TEST_F(JudgementTest, ARequestOfASessionThatWaitsIsJudgedOnce) {
    letWait(1);
    EXPECT_EQ(judgementsFor([this] {
                  claude.publish(claude.summaries(), {FakeMonitor::request("r", platform.time.now())});
              }),
              1u);
    EXPECT_EQ(controller.model()->islandWidth(), 520);
}

TEST_F(JudgementTest, ASettingIsJudgedOnceWithANewLayoutToo) {
    EXPECT_EQ(judgementsFor([this] { settings.set(SettingsKeys::claudeApprovalAlerts, false); }), 1u);
    EXPECT_EQ(judgementsFor([this] { settings.set(SettingsKeys::displayChoice, std::string("main")); }), 1u);
}

TEST_F(JudgementTest, ThePointerChangesNothingThatIsJudged) {
    EXPECT_EQ(judgementsFor([this] { openByHover(); }), 0u);
    EXPECT_EQ(judgementsFor([this] { platform.mouse.moveTo(farAway); }), 0u);
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(JudgementTest, TheRacksWidthAndEditModeReachTheIslandWithoutAJudgement) {
    openByHover();
    const double height = controller.model()->islandHeight();
    EXPECT_EQ(judgementsFor([this] { controller.rack().enterEditing(); }), 0u);
    EXPECT_EQ(controller.model()->islandHeight(), height + NotchGeometry::editTrayHeight);
    platform.mouse.moveTo(inOpenIsland);
    EXPECT_EQ(judgementsFor([this] { controller.rack().exitEditing(); }), 0u);
    EXPECT_EQ(controller.model()->islandHeight(), height) << "and the pointer keeps it open";
    EXPECT_EQ(judgementsFor([this] { settings.set(SettingsKeys::widgetLayout, std::string("clock")); }), 1u);
    EXPECT_EQ(controller.model()->islandWidth(), controller.rack().islandWidth());
}

TEST_F(JudgementTest, WithoutAScreenItIsJudgedAllTheSame) {
    platform.displays.screens.clear();
    emit platform.displays.changed();
    EXPECT_EQ(judgementsFor([this] { letWait(1); }), 1u);
    EXPECT_EQ(controller.closedActivity(), LiveActivityKind::claudeAlert);
}

TEST_F(JudgementTest, WhatKeptTheMachineAwakeLeavesTheWingsAtItsEnd) {
    controller.keepAwake().start(60);
    EXPECT_EQ(state(), IslandState::keepAwakeActivity);
    platform.advance(59);
    EXPECT_EQ(state(), IslandState::keepAwakeActivity);
    platform.advance(1);
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_EQ(controller.closedActivity(), LiveActivityKind::none);
}

TEST_F(JudgementTest, AFinishedTimersAlertGoesAtTheEndOfItsTime) {
    controller.timer().select(1);
    controller.timer().start();
    EXPECT_EQ(state(), IslandState::liveActivity);
    platform.advance(59.9);
    EXPECT_EQ(state(), IslandState::liveActivity);
    platform.advance(0.1);
    EXPECT_EQ(state(), IslandState::alert);
    platform.advance(TimerModel::alertLength - 0.1);
    EXPECT_EQ(state(), IslandState::alert);
    platform.advance(0.1);
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, HoverDelayActsWithoutANewLayout) {
    start();
    settings.set(SettingsKeys::hoverDelay, 0.5);
    EXPECT_EQ(platform.window.placements, 1);
    platform.mouse.moveTo(onNotch);
    platform.advance(0.4);
    EXPECT_FALSE(isExpanded());
    platform.advance(0.1);
    EXPECT_TRUE(isExpanded());
}

TEST_F(NotchWindowControllerTest, DisplayChoiceLaysOutAgainAndOnlyThen) {
    platform.displays.screens = {FakeScreens::make("DP-1", 1920, 1080, false),
                                 FakeScreens::make("eDP-1", 1440, 900, true)};
    start();
    EXPECT_EQ(platform.window.screenName, "eDP-1");
    settings.set(SettingsKeys::accent, std::string("cyan"));
    EXPECT_EQ(platform.window.placements, 1);
    settings.set(SettingsKeys::displayChoice, std::string("main"));
    EXPECT_EQ(platform.window.screenName, "DP-1");
    EXPECT_EQ(platform.window.placements, 2);
}

TEST_F(NotchWindowControllerTest, AScreenThatIsNamedIsKeptWhileItIsUnplugged) {
    const auto dock = FakeScreens::make("HDMI-2", 1920, 1080, false);
    platform.displays.screens = {FakeScreens::make("DP-1", 1920, 1080, false),
                                 FakeScreens::make("eDP-1", 1440, 900, true), dock};
    settings.set(SettingsKeys::displayOutput, std::string("HDMI-2"));
    start();
    EXPECT_EQ(platform.window.screenName, "HDMI-2");
    platform.displays.screens.pop_back();
    emit platform.displays.changed();
    EXPECT_EQ(platform.window.screenName, "eDP-1");
    settings.set(SettingsKeys::displayChoice, std::string("main"));
    EXPECT_EQ(platform.window.screenName, "DP-1");
    platform.displays.screens.push_back(dock);
    emit platform.displays.changed();
    EXPECT_EQ(platform.window.screenName, "HDMI-2");
    settings.set(SettingsKeys::displayOutput, std::string());
    EXPECT_EQ(platform.window.screenName, "DP-1");
}

TEST_F(NotchWindowControllerTest, WithoutABuiltInDisplayThePrimaryServes) {
    platform.displays.screens = {FakeScreens::make("DP-1", 1920, 1080, false)};
    start();
    EXPECT_EQ(platform.window.screenName, "DP-1");
}

TEST_F(NotchWindowControllerTest, WithoutAnyScreenEverythingStays) {
    start();
    openByHover();
    platform.displays.screens.clear();
    emit platform.displays.changed();
    EXPECT_TRUE(isExpanded());
    EXPECT_EQ(platform.window.placements, 1);
}

TEST_F(NotchWindowControllerTest, ANewScreenClosesAnIslandOpenByHover) {
    start();
    openByHover();
    emit platform.displays.changed();
    EXPECT_FALSE(isExpanded());
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, EditingPinsTheIslandOpen) {
    start();
    controller.rack().enterEditing();
    EXPECT_TRUE(isExpanded());
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(isExpanded());
    EXPECT_TRUE(platform.mouse.isWatchingPresses);
    emit platform.displays.changed();
    EXPECT_TRUE(isExpanded()) << "edit mode survives a new layout";
    emit platform.mouse.pressedOutside();
    EXPECT_FALSE(isExpanded());
    EXPECT_FALSE(platform.mouse.isWatchingPresses);
}

TEST_F(NotchWindowControllerTest, AnOpenIslandHidesAnAlertUntilItCloses) {
    start();
    openByHover();
    letWait(1);
    EXPECT_EQ(state(), IslandState::expanded);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800}));
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({720, 800}));
}

TEST_F(NotchWindowControllerTest, ToggleOpensWhereverThePointerIsUntilItHasBeenInAndLeft) {
    start();
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(controller.toggle());
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_TRUE(platform.window.takesClicksAt(inOpenIsland));
    platform.mouse.moveTo({{110, 100}});
    platform.mouse.moveTo(std::nullopt);
    platform.advance(60);
    EXPECT_EQ(state(), IslandState::expanded) << "the pointer was not in it yet";
    platform.mouse.moveTo(inOpenIsland);
    EXPECT_EQ(state(), IslandState::expanded);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_FALSE(platform.window.takesClicksAt(inOpenIsland));
}

TEST_F(NotchWindowControllerTest, APointerThatIsInItAlreadyWhenItIsToggledClosesItByLeaving) {
    start();
    platform.mouse.position = inOpenIsland;
    EXPECT_TRUE(controller.toggle());
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, ToggleAgainCloses) {
    start();
    EXPECT_TRUE(controller.toggle());
    EXPECT_TRUE(controller.toggle());
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_FALSE(platform.window.takesClicksAt(inOpenIsland));
    EXPECT_TRUE(controller.toggle());
    EXPECT_EQ(state(), IslandState::expanded);
}

TEST_F(NotchWindowControllerTest, TogglingClosesWhatHoverOpenedAndTheRestingPointerDoesNotOpenItAgain) {
    start();
    openByHover();
    EXPECT_TRUE(controller.toggle());
    EXPECT_EQ(state(), IslandState::closed);
    platform.mouse.moveTo({{721, 890}});
    platform.advance(1);
    EXPECT_EQ(state(), IslandState::closed);
    platform.mouse.moveTo(farAway);
    openByHover();
    EXPECT_EQ(state(), IslandState::expanded);
}

TEST_F(NotchWindowControllerTest, TogglingEndsEditingAndCloses) {
    start();
    controller.rack().enterEditing();
    platform.mouse.moveTo(inOpenIsland);
    EXPECT_TRUE(controller.toggle());
    EXPECT_FALSE(controller.rack().isEditing());
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_FALSE(controller.tracker()->isPinnedOpen());
    EXPECT_FALSE(platform.mouse.isWatchingPresses);
}

TEST_F(NotchWindowControllerTest, EditingWhatWasToggledOpenEndsAsEditingDoes) {
    start();
    controller.toggle();
    controller.rack().enterEditing();
    EXPECT_TRUE(isExpanded());
    platform.mouse.moveTo(farAway);
    emit platform.mouse.pressedOutside();
    EXPECT_FALSE(isExpanded());
}

TEST_F(NotchWindowControllerTest, AnAlertThatComesIsNotHiddenByAnIslandThatWasToggledOpen) {
    start();
    platform.mouse.moveTo(farAway);
    controller.toggle();
    letWait(1);
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800})) << "it was not drawn yet";
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({720, 800}));
}

TEST_F(NotchWindowControllerTest, AnAlertWaitsWhileThePointerIsInAnIslandThatWasToggledOpen) {
    start();
    platform.mouse.position = inOpenIsland;
    controller.toggle();
    letWait(1);
    EXPECT_EQ(state(), IslandState::expanded);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::claudeAlert);
}

TEST_F(NotchWindowControllerTest, TogglingOverAnAlertCoversItUntilToggledAgainAndItsKeysBeginAgain) {
    start();
    letWait(1);
    drawAlert();
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(controller.toggle());
    EXPECT_EQ(state(), IslandState::expanded);
    controller.presentationChanged();
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_TRUE(controller.toggle());
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_FALSE(controller.model()->isAlertOnScreen()) << "it has to be seen once more";
}

TEST_F(NotchWindowControllerTest, ANewScreenKeepsWhatWasToggledOpen) {
    start();
    controller.toggle();
    emit platform.displays.changed();
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_TRUE(platform.window.takesClicksAt(inOpenIsland));
    platform.mouse.moveTo(inOpenIsland);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, WithoutAScreenThereIsNothingToToggle) {
    platform.displays.screens.clear();
    start();
    EXPECT_FALSE(controller.toggle());
    EXPECT_FALSE(controller.turnPage(1));
    EXPECT_FALSE(controller.toggleEditing());
    EXPECT_FALSE(controller.rack().isEditing());
}

TEST_F(NotchWindowControllerTest, TurningThePageOfAClosedIslandOpensItThere) {
    start();
    ASSERT_EQ(controller.rack().pageCount(), 2);
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(controller.turnPage(1));
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_EQ(controller.rack().page(), 1);
    platform.advance(60);
    EXPECT_TRUE(controller.tracker()->isHeldOpen());
    platform.mouse.moveTo(inOpenIsland);
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, ThePageOfAnOpenIslandIsTurnedUpToTheEnds) {
    start();
    ASSERT_EQ(controller.rack().pageCount(), 2);
    openByHover();
    for (const int page : {1, 1}) {
        EXPECT_TRUE(controller.turnPage(1));
        EXPECT_EQ(controller.rack().page(), page);
    }
    for (const int page : {0, 0}) {
        EXPECT_TRUE(controller.turnPage(-1));
        EXPECT_EQ(controller.rack().page(), page);
    }
    EXPECT_FALSE(controller.tracker()->isHeldOpen()) << "the pointer holds it";
    EXPECT_EQ(state(), IslandState::expanded);
}

TEST_F(NotchWindowControllerTest, WithOnePageTurningItChangesNothing) {
    start();
    for (const WidgetID id : allWidgetIDs) {
        controller.rack().remove(id);
    }
    controller.rack().add(WidgetID::clock);
    ASSERT_EQ(controller.rack().pageCount(), 1);
    openByHover();
    EXPECT_TRUE(controller.turnPage(1));
    EXPECT_TRUE(controller.turnPage(-1));
    EXPECT_EQ(controller.rack().page(), 0);
    EXPECT_EQ(state(), IslandState::expanded);
}

TEST_F(NotchWindowControllerTest, AnAlertThatComesIsNotHiddenByAnIslandThatAPageWasTurnedOf) {
    start();
    platform.mouse.moveTo(farAway);
    controller.turnPage(1);
    letWait(1);
    EXPECT_EQ(state(), IslandState::claudeAlert);
}

TEST_F(NotchWindowControllerTest, EditingByCommandOpensAndPinsTheIslandUntilItIsAskedForAgain) {
    start();
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(controller.toggleEditing());
    EXPECT_TRUE(controller.rack().isEditing());
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_TRUE(controller.tracker()->isPinnedOpen());
    platform.mouse.moveTo(inOpenIsland);
    platform.mouse.moveTo(farAway);
    EXPECT_TRUE(controller.rack().isEditing());
    EXPECT_TRUE(controller.toggleEditing());
    EXPECT_FALSE(controller.rack().isEditing());
    EXPECT_EQ(state(), IslandState::closed);
}

TEST_F(NotchWindowControllerTest, AnAgentAtWorkKeepsTheMachineAwake) {
    start();
    EXPECT_THAT(platform.energy.applied, IsEmpty());
    claude.publish({FakeMonitor::session("s1", ClaudeStatus::Working{1})}, {});
    constexpr KeepAwakeHold forClaude{false, KeepAwakeHold::Reason::claude};
    EXPECT_THAT(platform.energy.applied, ElementsAre(forClaude));
    claude.publish({FakeMonitor::session("s1", ClaudeStatus::Finished{1})}, {});
    EXPECT_THAT(platform.energy.applied, ElementsAre(forClaude, std::nullopt));
}

TEST_F(NotchWindowControllerTest, AKeepAwakeSessionShowsWhileItRuns) {
    start();
    controller.keepAwake().start(3.0);
    EXPECT_EQ(state(), IslandState::keepAwakeActivity);
    EXPECT_EQ(controller.tracker()->liveActivityWingWidth, controller.model()->wingWidth());
    platform.advance(3);
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_EQ(controller.tracker()->liveActivityWingWidth, std::nullopt);
}

TEST_F(NotchWindowControllerTest, ATimerStandsInTheWingsAndDropsAtItsEnd) {
    start();
    controller.timer().start();
    EXPECT_EQ(state(), IslandState::liveActivity);
    // Seven points a letter of "0:00", and one to spare.
    EXPECT_EQ(controller.tracker()->liveActivityWingWidth, 29 + 12 + 4);
    EXPECT_EQ(controller.model()->wingWidth(), 29 + 12 + 4);
    platform.advance(300);
    EXPECT_EQ(state(), IslandState::alert);
    EXPECT_EQ(controller.tracker()->liveActivityWingWidth, std::nullopt);
    EXPECT_EQ(controller.model()->islandWidth(), 360);
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({720, 800}));
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
    EXPECT_THAT(platform.notices.log, ElementsAre("permission", "finished 300"));
    platform.advance(15);
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_FALSE(platform.window.takesClicksAt({720, 800}));
}

TEST_F(NotchWindowControllerTest, TimeAddedToATimerWidensItsWings) {
    start();
    controller.timer().start();
    controller.timer().add(60);
    EXPECT_EQ(controller.tracker()->liveActivityWingWidth, 7 * 7 + 1 + 12 + 4);
    controller.timer().cancel();
    EXPECT_EQ(state(), IslandState::closed);
    EXPECT_EQ(controller.tracker()->liveActivityWingWidth, std::nullopt);
}

TEST_F(NotchWindowControllerTest, ASessionOutlivesANewLayout) {
    start();
    controller.keepAwake().start(60.0);
    emit platform.displays.changed();
    EXPECT_EQ(state(), IslandState::keepAwakeActivity);
}

TEST_F(NotchWindowControllerTest, StopLetsTheMachineSleepAgain) {
    start();
    controller.keepAwake().start(std::nullopt);
    claude.publish({FakeMonitor::session("s1", ClaudeStatus::Working{1})}, {});
    controller.stop();
    EXPECT_EQ(platform.energy.applied.back(), std::nullopt);
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(NotchWindowControllerTest, ATimerThatEndsWhileTheIslandIsOpenWaitsForItToClose) {
    start();
    controller.timer().start();
    openByHover();
    platform.mouse.moveTo(inOpenIsland);
    platform.advance(300);
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_TRUE(controller.timer().isShowingDone());
    platform.mouse.moveTo(farAway);
    EXPECT_EQ(state(), IslandState::alert);
}

TEST_F(NotchWindowControllerTest, ATimerOutlivesANewLayout) {
    start();
    controller.timer().start();
    platform.advance(60);
    emit platform.displays.changed();
    EXPECT_EQ(state(), IslandState::liveActivity);
    platform.advance(240);
    EXPECT_EQ(state(), IslandState::alert);
}

TEST_F(NotchWindowControllerTest, AFinishedTimerGoesBeforeAPrompt) {
    start();
    controller.timer().start();
    platform.advance(300);
    claude.publish({}, {FakeMonitor::request("r", platform.time.now())});
    EXPECT_EQ(state(), IslandState::alert);
    EXPECT_EQ(controller.tracker()->alertSize, std::nullopt);
    EXPECT_FALSE(platform.window.takesClicksAt({480, 860}));
    controller.timer().dismissDone();
    EXPECT_EQ(state(), IslandState::claudeAlert);
    drawAlert();
    EXPECT_TRUE(platform.window.takesClicksAt({480, 860}));
}

} // namespace
} // namespace veslora
