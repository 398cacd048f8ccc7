// SPDX-License-Identifier: MIT
// The island with an alert on it, from the first frame that shows the alert whole to the press that answers
// it.
#include "VesloraUI/Island/AlertGate.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"
#include "tests/support/LogRecorder.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class AlertGateTest : public ::testing::Test {
  protected:
    AlertGateTest() { island.show(); }

    void ask(const std::string& id = "r1") {
        scene.claude.publish({}, {FakeMonitor::request(id, scene.platform.time.now(), "text of " + id)});
    }
    /// Waits, with a deadline, until the island asked for the time of a frame that shows the alert.
    [[nodiscard]] bool drawsTheAlert() { return drawsTheAlert(scene.platform.frames.marks); }
    /// The same, after as many such questions as are told.
    [[nodiscard]] bool drawsTheAlert(int known) {
        return QTest::qWaitFor([this, known] { return scene.platform.frames.marks > known; });
    }
    /// Brings a request on screen and lets it be considered.
    [[nodiscard]] bool showsArmed() {
        ask();
        const bool isDrawn = drawsTheAlert();
        scene.advance(1);
        return isDrawn && scene.isEnabled("Allow");
    }
    void clickAllow() { scene.press("Allow"); }
    void expectItIsWholeWhenItIsOnScreen() {
        ask();
        EXPECT_FALSE(model.isAlertOnScreen());
        ASSERT_TRUE(drawsTheAlert());
        const auto* body = scene.itemNamed("text of r1");
        ASSERT_TRUE(body);
        double opacity = 1;
        for (const QQuickItem* item = body; item; item = item->parentItem()) {
            opacity *= item->opacity();
        }
        EXPECT_GE(opacity, 0.95);
        EXPECT_FALSE(model.isAlertOnScreen()) << "the window system has not drawn it yet";
        scene.advance(0);
        EXPECT_TRUE(model.isAlertOnScreen());
    }

    Scene scene;
    SceneIsland island{scene};
    NotchViewModel& model{island.model};
};

TEST_F(AlertGateTest, TheAlertIsOnScreenWithItsFirstWholeFrameAndNotBefore) {
    expectItIsWholeWhenItIsOnScreen();
}

/// The island has its size at once then, and the text fades in on it.
TEST_F(AlertGateTest, WithLessMotionTooTheTextIsThereFirst) {
    scene.platform.look.change({.isTold = true, .reducedMotion = true});
    expectItIsWholeWhenItIsOnScreen();
    scene.advance(0.5);
    EXPECT_FALSE(scene.isEnabled("Allow")) << "it was not there for long enough";
    scene.advance(0.2);
    EXPECT_TRUE(scene.isEnabled("Allow"));
}

TEST_F(AlertGateTest, ItIsToldWhenTheAlertIsOnScreenAndWhyAPressAnswersNothing) {
    const testing::LogRecorder recorder;
    const auto last = [&recorder] {
        const auto lines = recorder.decisions();
        return lines.empty() ? std::string() : lines.back().text;
    };
    ask();
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(0.1);
    EXPECT_EQ(last(), "the alert is on screen");
    scene.advance(1);
    scene.platform.frames.screen = ScreenLook::otherwise;
    // The next frame may come while the click is handled already.
    const int known = scene.platform.frames.marks;
    clickAllow();
    EXPECT_EQ(last(), "something else is on screen where the alert's text should be");
    scene.platform.frames.screen = ScreenLook::asDrawn;
    ASSERT_TRUE(drawsTheAlert(known));
    scene.advance(1);
    EXPECT_EQ(last(), "the alert is on screen");
    const int frames = scene.platform.frames.marks;
    scene.platform.time.suspend(0.4);
    clickAllow();
    EXPECT_EQ(last(), "the program was held up: the alert has to be seen again");
    ASSERT_TRUE(drawsTheAlert(frames));
    scene.advance(1);
    QTest::lastMouseTimestamp = static_cast<int>(scene.platform.frames.eventTime() - 900);
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, scene.centerOf("Allow").toPoint());
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, scene.centerOf("Allow").toPoint());
    EXPECT_EQ(last(), "a press answers nothing: the alert was not on screen for long enough");
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    EXPECT_THAT(recorder.warnings(), IsEmpty());
}

TEST_F(AlertGateTest, AnAlertThatAClipCutsIsNotOnScreen) {
    ask();
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(1);
    ASSERT_TRUE(scene.isEnabled("Allow"));
    QQuickItem* clip = scene.itemNamed("text of r1");
    while (clip && !clip->clip()) {
        clip = clip->parentItem();
    }
    ASSERT_TRUE(clip) << "what keeps the content inside the island";
    clip->setHeight(100);
    scene.advance(0);
    EXPECT_FALSE(scene.isEnabled("Allow"));
}

TEST_F(AlertGateTest, KeysComeAliveSixTenthsOfASecondAfterThatFrame) {
    ask();
    scene.platform.time.advance(5);
    EXPECT_FALSE(scene.isEnabled("Allow")) << "time before the frame does not count";
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(0.59);
    EXPECT_FALSE(scene.isEnabled("Allow"));
    EXPECT_FALSE(scene.isEnabled("Deny"));
    scene.advance(0.02);
    EXPECT_TRUE(scene.isEnabled("Allow"));
    EXPECT_TRUE(scene.isEnabled("Deny"));
    clickAllow();
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
}

TEST_F(AlertGateTest, AClickOfBeforeThatIsHandledLateDoesNotAnswer) {
    ASSERT_TRUE(showsArmed());
    const QPointF allow = scene.centerOf("Allow");
    const std::uint32_t frame = scene.platform.frames.eventTime() - 1000;
    for (const std::uint32_t time : {frame - 500, frame, frame + 250, frame + 598}) {
        // Qt's tests count one millisecond more for each event.
        QTest::lastMouseTimestamp = static_cast<int>(time);
        QTest::mousePress(&scene.window(), Qt::LeftButton, {}, allow.toPoint());
        QTest::lastMouseTimestamp = static_cast<int>(time);
        QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, allow.toPoint());
        EXPECT_THAT(scene.claude.answered, IsEmpty()) << time - frame;
    }
    EXPECT_TRUE(scene.isEnabled("Allow"));
}

TEST_F(AlertGateTest, AStallNeedsAFrameOfAfterIt) {
    ASSERT_TRUE(showsArmed());
    // The frame may come while the click is handled already.
    const int frames = scene.platform.frames.marks;
    scene.platform.time.suspend(0.4);
    clickAllow();
    EXPECT_THAT(scene.claude.answered, IsEmpty()) << "the press itself finds the stall";
    EXPECT_FALSE(scene.isEnabled("Allow"));
    EXPECT_TRUE(model.isAlertOnScreen()) << "the clicks stay the island's meanwhile";
    ASSERT_TRUE(drawsTheAlert(frames));
    scene.advance(0.5);
    clickAllow();
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    scene.advance(0.2);
    clickAllow();
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
}

TEST_F(AlertGateTest, AfterAStallNoTimeTakesTheFramesPlace) {
    ASSERT_TRUE(showsArmed());
    scene.platform.frames.isStuck = true;
    scene.platform.time.suspend(0.4);
    clickAllow();
    scene.advance(5);
    EXPECT_FALSE(scene.isEnabled("Allow"));
    clickAllow();
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

TEST_F(AlertGateTest, ATickThatComesLateFindsTheStallToo) {
    ASSERT_TRUE(showsArmed());
    scene.platform.time.suspend(0.4);
    scene.platform.time.advance(0);
    EXPECT_FALSE(scene.isEnabled("Allow"));
}

TEST_F(AlertGateTest, AClockThatIsSetArmsNothing) {
    ask();
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(0);
    scene.platform.time.setClock(scene.platform.time.now() + 3);
    scene.advance(0.1);
    EXPECT_FALSE(scene.isEnabled("Allow"));
    clickAllow();
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

TEST_F(AlertGateTest, AFrameThatNeverStandsOnScreenArmsNothing) {
    scene.platform.frames.isStuck = true;
    ask();
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(5);
    EXPECT_FALSE(model.isAlertOnScreen());
    EXPECT_FALSE(scene.isEnabled("Allow"));
}

TEST_F(AlertGateTest, AStallBeforeTheFramesTimeIsKnownDropsThatFrame) {
    ask();
    ASSERT_TRUE(drawsTheAlert());
    scene.platform.time.suspend(2);
    scene.platform.time.advance(0.2);
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(0.5);
    EXPECT_FALSE(scene.isEnabled("Allow"));
    scene.advance(0.2);
    EXPECT_TRUE(scene.isEnabled("Allow"));
}

TEST_F(AlertGateTest, TextThatAnotherWindowCoversCannotBeAllowed) {
    ASSERT_TRUE(showsArmed());
    scene.platform.frames.screen = ScreenLook::otherwise;
    // The next frame may come while the click is handled already.
    const int known = scene.platform.frames.marks;
    clickAllow();
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    EXPECT_FALSE(scene.isEnabled("Allow"));
    scene.platform.frames.screen = ScreenLook::asDrawn;
    ASSERT_TRUE(drawsTheAlert(known));
    scene.advance(0.7);
    clickAllow();
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
}

TEST_F(AlertGateTest, AScreenThatCannotBeLookedAtDoesNotStandInTheWay) {
    scene.platform.frames.screen = ScreenLook::unknown;
    ASSERT_TRUE(showsArmed());
    clickAllow();
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
}

TEST_F(AlertGateTest, TheScreenIsLookedAtOnceForAnAlertAndOnceForAPress) {
    ASSERT_TRUE(showsArmed());
    EXPECT_EQ(scene.platform.frames.looks, 1);
    clickAllow();
    EXPECT_EQ(scene.platform.frames.looks, 2);
}

TEST_F(AlertGateTest, AnAccessibleActionWaitsForAStallLonger) {
    ask();
    ASSERT_TRUE(drawsTheAlert());
    const auto act = [this] {
        auto* const key = QAccessible::queryAccessibleInterface(scene.itemNamed("Allow"));
        key->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    scene.advance(0.85);
    ASSERT_TRUE(scene.isEnabled("Allow"));
    act();
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    scene.advance(0.1);
    act();
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
}

TEST_F(AlertGateTest, TheNextRequestHasToBeSeenItself) {
    ASSERT_TRUE(showsArmed());
    ask("r2");
    QCoreApplication::processEvents();
    EXPECT_FALSE(model.isAlertOnScreen());
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(0.5);
    EXPECT_TRUE(model.isAlertOnScreen());
    EXPECT_FALSE(scene.isEnabled("Allow"));
    scene.advance(0.2);
    EXPECT_TRUE(scene.isEnabled("Allow"));
    clickAllow();
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r2", ClaudeDecision::allow)));
}

TEST_F(AlertGateTest, ANoticeWorksFromItsFirstFrameAndNeedsNoTicks) {
    scene.claude.publish({FakeMonitor::session("a", ClaudeStatus::NeedsApproval{"m", 1})}, {});
    ASSERT_TRUE(drawsTheAlert());
    scene.advance(0);
    EXPECT_TRUE(model.isAlertOnScreen());
    EXPECT_EQ(scene.platform.time.pending(), 0U);
    scene.press("Dismiss");
    EXPECT_THAT(scene.claude.log, ElementsAre("dismiss a"));
}

TEST_F(AlertGateTest, NothingTicksOnceTheAlertIsGone) {
    ASSERT_TRUE(showsArmed());
    scene.claude.publish({}, {});
    ASSERT_TRUE(QTest::qWaitFor([this] { return scene.itemWith("isLeaving", true) == nullptr; }));
    EXPECT_EQ(scene.platform.time.pending(), 0U);
}

} // namespace
} // namespace veslora
