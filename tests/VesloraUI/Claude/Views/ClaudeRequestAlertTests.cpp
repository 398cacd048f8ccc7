// SPDX-License-Identifier: MIT
// The alert of a permission request, drawn and pressed.
#include "tests/VesloraUI/Fixtures/FakeJudge.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

/// The room that the alert leaves its content.
constexpr QSize room{472, 86};

class ClaudeRequestAlertTest : public testing::Test {
  protected:
    void ask(const std::string& text, const std::string& id = "r1") {
        auto request = FakeMonitor::request(id, now(), text);
        request.answerBy = scene.platform.time.steadyNow() + 20;
        scene.claude.publish(scene.claude.summaries(), {request});
    }
    void showAlert(const QString& id = "r1") {
        scene.show("Claude/Views/ClaudeRequestAlert.qml",
                   {{"agents", QVariant::fromValue(&scene.agents)},
                    {"judge", QVariant::fromValue(&judge)},
                    {"requestId", id}},
                   room);
    }
    [[nodiscard]] double now() const { return scene.platform.time.now(); }

    FakeJudge judge;
    Scene scene;
};

TEST_F(ClaudeRequestAlertTest, ShowsWhoAsksForWhat) {
    scene.claude.publish({FakeMonitor::session("s1", ClaudeStatus::Working{1})}, {});
    ask("npm run build");
    showAlert();
    EXPECT_THAT(scene.texts(),
                ElementsAre("Approve", "name of s1", "npm run build", "Jump", "Deny", "Allow"));
}

TEST_F(ClaudeRequestAlertTest, ASessionWithoutASummaryGoesByItsFolder) {
    ask("ls");
    showAlert();
    EXPECT_THAT(scene.texts(), Contains("folder"));
}

TEST_F(ClaudeRequestAlertTest, NamesCodexAndCountsTheOthers) {
    auto request = FakeMonitor::request("r1", now());
    request.agent = AgentKind::codex;
    scene.codex.publish(
        {}, {request, FakeMonitor::request("r2", now() + 1), FakeMonitor::request("r3", now() + 2)});
    showAlert();
    EXPECT_THAT(scene.texts(), Contains("Approve · Codex"));
    EXPECT_THAT(scene.texts(), Contains("+2 waiting"));
}

TEST_F(ClaudeRequestAlertTest, KeysAreDeadUntilTheAlertIsArmedButJumpIsNot) {
    judge.setArmed(false);
    ask("ls");
    showAlert();
    EXPECT_FALSE(scene.isEnabled("Deny"));
    EXPECT_FALSE(scene.isEnabled("Allow"));
    scene.press("Deny");
    scene.press("Allow");
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    EXPECT_TRUE(scene.isEnabled("Jump"));
    judge.counts = false;
    scene.press("Jump");
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::pass)));
    EXPECT_THAT(scene.claude.log, ElementsAre("jump s1"));
}

TEST_F(ClaudeRequestAlertTest, KeysAnswerOnceTheyAreArmed) {
    for (const auto& [key, decision] :
         {std::pair("Allow", ClaudeDecision::allow), std::pair("Deny", ClaudeDecision::deny)}) {
        ask("ls");
        showAlert();
        scene.press(key);
        EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", decision)));
        scene.claude.answered.clear();
    }
}

TEST_F(ClaudeRequestAlertTest, KeysAskTheJudgeWithTheTimesOfTheEvents) {
    ask("ls");
    showAlert();
    judge.counts = false;
    const QPointF allow = scene.centerOf("Allow");
    constexpr std::uint32_t wrapped = 4294967000U;
    const auto send = [&](QEvent::Type type, Qt::MouseButtons held, std::uint64_t time) {
        QMouseEvent event(type, allow, allow, allow, Qt::LeftButton, held, Qt::NoModifier);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&scene.window(), &event);
    };
    send(QEvent::MouseButtonPress, Qt::LeftButton, wrapped);
    send(QEvent::MouseButtonRelease, Qt::NoButton, (std::uint64_t{1} << 32) + 5);
    EXPECT_THAT(judge.presses, ElementsAre(wrapped));
    EXPECT_THAT(judge.releases, ElementsAre(5U));
    EXPECT_THAT(scene.claude.answered, IsEmpty()) << "the judge has refused it";
}

TEST_F(ClaudeRequestAlertTest, AnAccessibleActionAsksTheJudgeToo) {
    ask("ls");
    showAlert();
    auto* allow = QAccessible::queryAccessibleInterface(scene.itemNamed("Allow"));
    judge.counts = false;
    allow->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    judge.counts = true;
    allow->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(scene.claude.answered, ElementsAre(Pair("r1", ClaudeDecision::allow)));
}

TEST_F(ClaudeRequestAlertTest, AScreenReaderIsToldAllOfItWhenItComesToShow) {
    ask("ls");
    showAlert();
    const QString spoken = "Claude Code asks in folder: ls. 20 seconds to answer. Jump, Deny or Allow.";
    auto* alert = QAccessible::queryAccessibleInterface(scene.itemNamed(spoken));
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->role(), QAccessible::Notification);
}

TEST_F(ClaudeRequestAlertTest, AScreenReaderIsToldThatATextIsTooLong) {
    ask(std::string(400, 'x'));
    showAlert();
    const QStringList names = scene.names();
    EXPECT_TRUE(std::ranges::any_of(
        names, [](const QString& name) { return name.endsWith("Too long to show here: Jump or Deny."); }));
}

TEST_F(ClaudeRequestAlertTest, ADeadKeyIsDisabledAndOffersNoPressToAccessibility) {
    judge.setArmed(false);
    ask("ls");
    showAlert();
    auto* allow = QAccessible::queryAccessibleInterface(scene.itemNamed("Allow"));
    EXPECT_TRUE(allow->state().disabled);
    EXPECT_THAT(allow->actionInterface()->actionNames(), IsEmpty());
    allow->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    judge.setArmed(true);
    EXPECT_FALSE(allow->state().disabled);
    EXPECT_THAT(allow->actionInterface()->actionNames(),
                ElementsAre(QAccessibleActionInterface::pressAction()));
    EXPECT_EQ(allow->role(), QAccessible::Button);
    EXPECT_TRUE(allow->parent());
}

TEST_F(ClaudeRequestAlertTest, APressThatBeganOnALiveKeyDoesNotEndOnItAfterItWasDead) {
    ask("ls");
    showAlert();
    const QPointF allow = scene.centerOf("Allow");
    scene.pressDown("Allow");
    judge.setArmed(false);
    judge.setArmed(true);
    scene.release(allow);
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

TEST_F(ClaudeRequestAlertTest, DenyTapsTheFinger) {
    ask("ls");
    showAlert();
    scene.press("Deny");
    EXPECT_THAT(scene.platform.taps.performed, ElementsAre(HapticPattern::generic));
}

TEST_F(ClaudeRequestAlertTest, AnAlertThatLeavesNeverShowsTheNextRequest) {
    ask("ls");
    showAlert();
    scene.view().setProperty("requestId", "r2");
    ask("rm -rf x", "r2");
    EXPECT_THAT(scene.texts(), Contains("ls"));
    EXPECT_THAT(scene.texts(), Not(Contains("rm -rf x")));
    EXPECT_FALSE(scene.isEnabled("Allow"));
}

TEST_F(ClaudeRequestAlertTest, NoKeystrokeReachesAKey) {
    ask("ls");
    showAlert();
    scene.advance(0.7);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Y}) {
        QTest::keyClick(&scene.window(), key);
    }
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

TEST_F(ClaudeRequestAlertTest, WhatIsTooLongCanBeDeniedButNotAllowed) {
    ask(std::string(131, 'i'));
    showAlert();
    scene.advance(0.7);
    EXPECT_THAT(scene.texts(), Contains("Too long to show here · use Jump"));
    EXPECT_THAT(scene.texts(), Contains(QString(129, 'i') + "…"));
    EXPECT_FALSE(scene.isEnabled("Allow"));
    EXPECT_TRUE(scene.isEnabled("Deny"));
    scene.press("Allow");
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

TEST_F(ClaudeRequestAlertTest, WideLettersThatDoNotFitCantBeAllowed) {
    ask(std::string(130, 'W'));
    showAlert();
    scene.advance(0.7);
    EXPECT_THAT(scene.texts(), Contains("Can't be shown in full · use Jump"));
    EXPECT_FALSE(scene.isEnabled("Allow"));
    ask(std::string(130, 'i'));
    showAlert();
    scene.advance(0.7);
    EXPECT_THAT(scene.texts(), Not(Contains("Can't be shown in full · use Jump")));
    EXPECT_TRUE(scene.isEnabled("Allow"));
}

TEST_F(ClaudeRequestAlertTest, TextIsNeverReadAsMarkup) {
    ask("<b>rm</b> -rf <img src='x'> &amp; done");
    showAlert();
    EXPECT_THAT(scene.texts(), Contains("<b>rm</b> -rf <img src='x'> &amp; done"));
}

TEST_F(ClaudeRequestAlertTest, TheFuseBurnsForTwentySeconds) {
    ask("ls");
    showAlert();
    const auto fraction = [this] {
        const auto* fuse = scene.itemWith("implicitHeight", 2.0);
        return fuse ? fuse->property("fraction").toDouble() : -1;
    };
    EXPECT_DOUBLE_EQ(fraction(), 1);
    scene.advance(10);
    EXPECT_NEAR(fraction(), 0.5, 0.001);
    scene.advance(15);
    EXPECT_DOUBLE_EQ(fraction(), 0);
}

TEST_F(ClaudeRequestAlertTest, TheFuseDoesNotHeedTheWallClock) {
    ask("ls");
    showAlert();
    scene.platform.time.setClock(now() - 3600);
    scene.advance(10);
    const auto* fuse = scene.itemWith("implicitHeight", 2.0);
    ASSERT_TRUE(fuse);
    EXPECT_NEAR(fuse->property("fraction").toDouble(), 0.5, 0.01);
}

TEST_F(ClaudeRequestAlertTest, AnAnswerThatCouldNotBeWrittenIsToldAndCanBeTriedAgain) {
    ask("ls");
    showAlert();
    scene.claude.outcome = AnswerOutcome::failed;
    scene.press("Allow");
    EXPECT_THAT(scene.texts(), Contains("Couldn't answer"));
    EXPECT_TRUE(scene.isEnabled("Allow"));
    scene.claude.outcome = AnswerOutcome::given;
    scene.press("Allow");
    EXPECT_THAT(scene.claude.answered,
                ElementsAre(Pair("r1", ClaudeDecision::allow), Pair("r1", ClaudeDecision::allow)));
    EXPECT_THAT(scene.texts(), Not(Contains("Couldn't answer")));
}

TEST_F(ClaudeRequestAlertTest, NothingCanBePressedOnceTheRequestIsGone) {
    ask("ls");
    showAlert();
    scene.advance(0.7);
    scene.claude.publish({}, {});
    EXPECT_FALSE(scene.isEnabled("Allow"));
    scene.press("Deny");
    scene.press("Jump");
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    EXPECT_THAT(scene.texts(), Contains("ls")) << "it keeps what it showed on its way out";
}

} // namespace
} // namespace veslora
