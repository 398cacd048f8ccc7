// SPDX-License-Identifier: MIT
// The agents widget, drawn and pressed.
#include "VesloraUI/Style/VesloraStyle.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class ClaudeWidgetTest : public testing::Test {
  protected:
    void showWidget(bool isWide) {
        scene.show("Claude/Views/ClaudeWidget.qml",
                   {{"agents", QVariant::fromValue(&scene.agents)}, {"isWide", isWide}},
                   {isWide ? 230 : 150, 112});
    }
    [[nodiscard]] ClaudeSessionSummary working(const std::string& id, double minutes) const {
        auto session =
            FakeMonitor::session(id, ClaudeStatus::Working{scene.platform.time.now() - 60 * minutes});
        session.activity = "Bash: ctest";
        return session;
    }

    Scene scene;
};

TEST_F(ClaudeWidgetTest, WithoutHooksAndSessionsItSaysSo) {
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Claude", "No hooks · approvals off", "No sessions"));
    scene.close();
    showWidget(false);
    EXPECT_THAT(scene.texts(), ElementsAre("Claude", "No hooks", "No sessions"));
}

TEST_F(ClaudeWidgetTest, ListsSessionsInTheOrderOfTheirUrgency) {
    scene.claude.setHooks(true, false);
    scene.claude.publish({FakeMonitor::session("i", ClaudeStatus::Idle{}), working("w", 12),
                          FakeMonitor::session("f", ClaudeStatus::Finished{1}),
                          FakeMonitor::session("a", ClaudeStatus::NeedsApproval{"", 1})},
                         {});
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Claude", "1 working", "name of a", "APPROVE", "name of f", "DONE",
                                           "name of w", "12M", "Bash: ctest", "name of i", "IDLE"));
}

TEST_F(ClaudeWidgetTest, TheSmallOneKeepsToNamesAndStatus) {
    scene.claude.setHooks(true, false);
    scene.claude.publish({working("w", 65)}, {});
    showWidget(false);
    EXPECT_THAT(scene.texts(), ElementsAre("Claude", "name of w", "1H05"));
}

TEST_F(ClaudeWidgetTest, MarksComeWithTheFirstCodexSession) {
    scene.claude.publish({working("w", 1)}, {});
    showWidget(true);
    EXPECT_THAT(scene.texts(), Not(Contains("✻")));
    scene.codex.publish({FakeMonitor::session("c", ClaudeStatus::Idle{}, AgentKind::codex)}, {});
    scene.advance(0);
    EXPECT_THAT(scene.texts(), Contains("✻"));
    EXPECT_THAT(scene.texts(), Contains(">_"));
    EXPECT_THAT(scene.texts(), Contains("Agents"));
}

TEST_F(ClaudeWidgetTest, AnInstalledCodexAloneMakesItAgents) {
    scene.codex.setHooks(true, false);
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("Agents", "No sessions"));
}

TEST_F(ClaudeWidgetTest, ARowLeadsToItsTerminal) {
    scene.claude.publish({working("w", 1), FakeMonitor::session("i", ClaudeStatus::Idle{})}, {});
    showWidget(true);
    scene.press("name of i");
    EXPECT_THAT(scene.claude.log, ElementsAre("jump i"));
}

TEST_F(ClaudeWidgetTest, TheLightOfAWorkingSessionBlinksTwiceASecond) {
    scene.claude.publish({working("w", 1)}, {});
    showWidget(true);
    const auto lit = [this] {
        return scene.itemWith("radius", 1.5)->property("color").value<QColor>() == QColor(200, 255, 61);
    };
    const bool first = lit();
    scene.advance(0.5);
    EXPECT_NE(lit(), first);
    scene.advance(0.5);
    EXPECT_EQ(lit(), first);
}

TEST_F(ClaudeWidgetTest, ARowStaysTheSameItemWhileItsMinutesCount) {
    scene.claude.publish({working("w", 0.9)}, {});
    showWidget(true);
    const auto* name = scene.itemWith("text", "name of w");
    EXPECT_THAT(scene.texts(), Contains("<1M"));
    scene.advance(10);
    EXPECT_THAT(scene.texts(), Contains("1M"));
    EXPECT_EQ(scene.itemWith("text", "name of w"), name);
}

TEST_F(ClaudeWidgetTest, ANameIsNeverReadAsMarkup) {
    auto session = FakeMonitor::session("x", ClaudeStatus::Idle{});
    session.name = "<h1>big</h1>";
    scene.claude.publish({session}, {});
    showWidget(true);
    EXPECT_EQ(scene.itemWith("text", "<h1>big</h1>")->property("textFormat").toInt(), 0 /* Text.PlainText */);
}

TEST_F(ClaudeWidgetTest, WhatHidesInANameOrAnActivityIsSpelled) {
    auto session = working("x", 1);
    session.name = "a\u202Eb\uFFFC";
    session.activity = "Bash: rm\u2003-rf";
    scene.claude.publish({session}, {});
    showWidget(true);
    EXPECT_THAT(scene.texts(), Contains("a⟨U+202E⟩b⟨U+FFFC⟩"));
    EXPECT_THAT(scene.texts(), Contains("Bash: rm⟨U+2003⟩-rf"));
    EXPECT_TRUE(scene.shows("a⟨U+202E⟩b⟨U+FFFC⟩"));
}

TEST_F(ClaudeWidgetTest, WhatHidesInANoticeIsSpelled) {
    auto session =
        FakeMonitor::session("x", ClaudeStatus::NeedsApproval{"Claude needs your permission to use a\u202E",
                                                              scene.platform.time.now()});
    session.name = "b\u2060";
    scene.claude.publish({session}, {});
    scene.show("Claude/Views/ClaudeNotice.qml", {{"agents", QVariant::fromValue(&scene.agents)}}, {300, 60});
    EXPECT_THAT(scene.texts(), Contains("b⟨U+2060⟩"));
    EXPECT_THAT(scene.texts(), Contains("Wants to use a⟨U+202E⟩"));
}

} // namespace
} // namespace veslora
