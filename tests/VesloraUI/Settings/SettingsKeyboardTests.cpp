// SPDX-License-Identifier: MIT
// The settings window by keyboard alone, and on screens that are shorter than its pages.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;

/// Between the window's edges, as a part of the page.
bool isInSight(const SettingsScene& scene, const QString& name) {
    const auto* part = scene.part(name);
    if (!part) {
        return false;
    }
    const QRectF room = scene.page().mapRectToScene(QRectF({}, scene.page().size()));
    return room.contains(QRectF(scene.window().mapFromGlobal(part->rect().topLeft()), part->rect().size()));
}

double scrolled(const SettingsScene& scene) {
    return scene.page().property("contentY").toDouble();
}

double farthest(const SettingsScene& scene) {
    return scene.page().property("contentHeight").toDouble() - scene.page().height();
}

/// Null while none shows.
QQuickItem* scrollBar(const SettingsScene& scene) {
    for (QQuickItem* item : scene.page().childItems()) {
        if (item->inherits("QQuickScrollBar") && item->isVisible()) {
            return item;
        }
    }
    return nullptr;
}

constexpr int shortHeight = 300;

TEST(SettingsKeyboard, EscapeClosesTheWindow) {
    SettingsScene scene;
    scene.key(Qt::Key_Escape);
    EXPECT_FALSE(scene.window().isVisible());
}

TEST(SettingsKeyboard, EscapeClosesTheWindowAlsoAfterThePageWithTheFocusHasGone) {
    SettingsScene scene("Timer");
    scene.press("Notify when a timer ends");
    scene.press("General");
    scene.key(Qt::Key_Escape);
    EXPECT_FALSE(scene.window().isVisible());
}

TEST(SettingsKeyboard, EscapeClosesAnOpenListFirst) {
    SettingsScene scene("Timer");
    scene.press("Sound when done");
    scene.advance(0);
    ASSERT_TRUE(scene.shows("None"));
    scene.key(Qt::Key_Escape);
    EXPECT_FALSE(scene.shows("None"));
    EXPECT_TRUE(scene.window().isVisible());
    scene.key(Qt::Key_Escape);
    EXPECT_FALSE(scene.window().isVisible());
}

TEST(SettingsKeyboard, ControlWClosesTheWindow) {
    SettingsScene scene;
    scene.key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(scene.window().isVisible());
}

/// Presses a key again and again, and sees which tabs that leads to.
void expectTabs(SettingsScene& scene, Qt::Key key, Qt::KeyboardModifiers modifiers,
                const std::vector<const char*>& names) {
    for (const char* name : names) {
        scene.key(key, modifiers);
        EXPECT_EQ(scene.selectedTab(), name);
    }
}

TEST(SettingsKeyboard, ControlTabGoesThroughTheTabsAndAroundTheirEnds) {
    SettingsScene scene;
    expectTabs(scene, Qt::Key_Tab, Qt::ControlModifier,
               {"Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake", "General"});
    // So the window system names the key while shift is held.
    expectTabs(scene, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier,
               {"Keep Awake", "Agents", "Metronome", "Music", "Timer", "Island", "General"});
}

TEST(SettingsKeyboard, ControlPageDownAndUpGoThroughTheTabsAndAroundTheirEnds) {
    SettingsScene scene;
    expectTabs(scene, Qt::Key_PageDown, Qt::ControlModifier,
               {"Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake", "General"});
    expectTabs(scene, Qt::Key_PageUp, Qt::ControlModifier,
               {"Keep Awake", "Agents", "Metronome", "Music", "Timer", "Island", "General"});
}

TEST(SettingsKeyboard, ArrowsChangeTheTabThatHasTheFocus) {
    SettingsScene scene;
    scene.key(Qt::Key_Tab);
    EXPECT_EQ(scene.focused(), "General");
    scene.key(Qt::Key_Right);
    EXPECT_EQ(scene.focused(), "Island");
    EXPECT_EQ(scene.selectedTab(), "Island");
    scene.key(Qt::Key_Left);
    scene.key(Qt::Key_Left);
    EXPECT_EQ(scene.focused(), "Keep Awake");
    EXPECT_EQ(scene.selectedTab(), "Keep Awake");
    scene.key(Qt::Key_Home);
    EXPECT_EQ(scene.selectedTab(), "General");
    scene.key(Qt::Key_End);
    EXPECT_EQ(scene.selectedTab(), "Keep Awake");
}

TEST(SettingsKeyboard, ArrowsOutsideOfTheTabsLeaveThemAlone) {
    SettingsScene scene("Keep Awake");
    scene.key(Qt::Key_Tab);
    ASSERT_EQ(scene.focused(), "Keep the display on");
    scene.key(Qt::Key_Right);
    EXPECT_EQ(scene.selectedTab(), "Keep Awake");
}

TEST(SettingsKeyboard, TheFocusIsOnTheTabAfterAKeyHasChangedIt) {
    SettingsScene scene("Timer");
    scene.key(Qt::Key_Tab);
    ASSERT_EQ(scene.focused(), "Sound when done");
    scene.key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(scene.focused(), "Music");
    scene.key(Qt::Key_Tab);
    EXPECT_EQ(scene.focused(), "Show other apps");
}

TEST(SettingsKeyboard, TabGoesThroughTheOpenTabAndAllControlsOfItsPage) {
    SettingsScene scene("Keep Awake");
    QStringList order;
    for (int i = 0; i < 4; ++i) {
        scene.key(Qt::Key_Tab);
        order << scene.focused();
    }
    EXPECT_THAT(order, ElementsAre("Keep the display on", "Stay awake while an agent is working",
                                   "Show a live activity", "Keep Awake"));
    scene.key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(scene.focused(), "Show a live activity");
}

TEST(SettingsKeyboard, WhatAKeyHasFocusedIsMarked) {
    SettingsScene scene("Agents");
    for (const char* name : {"Install", "Install", "Approval alerts"}) {
        scene.key(Qt::Key_Tab);
        ASSERT_EQ(scene.focused(), name);
        EXPECT_TRUE(scene.window().activeFocusItem()->property("visualFocus").toBool()) << name;
    }
    scene.key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(scene.window().activeFocusItem()->property("visualFocus").toBool()) << "of a tab";
}

TEST(SettingsKeyboard, SpaceAndEnterDoWhatAClickDoes) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        SettingsScene scene("Agents");
        scene.key(Qt::Key_Tab);
        scene.key(key);
        EXPECT_TRUE(scene.claude.hooksInstalled()) << key;
        scene.focus("Approval alerts");
        scene.key(key);
        EXPECT_FALSE(scene.settings.boolValue(SettingsKeys::claudeApprovalAlerts)) << key;
    }
}

TEST(SettingsKeyboard, AHeldEnterKeyInstallsOnceAndRemovesNothing) {
    SettingsScene scene("Agents");
    scene.key(Qt::Key_Tab);
    QTest::keyPress(&scene.window(), Qt::Key_Return);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true);
    QCoreApplication::sendEvent(&scene.window(), &repeated);
    QTest::keyRelease(&scene.window(), Qt::Key_Return);
    EXPECT_TRUE(scene.claude.hooksInstalled());
}

TEST(SettingsKeyboard, APickersListOpensAndIsPickedFromByKeys) {
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        SettingsScene scene("Timer");
        scene.key(Qt::Key_Tab);
        scene.key(key);
        ASSERT_TRUE(scene.shows("None")) << key;
        scene.key(Qt::Key_Down);
        scene.key(key);
        EXPECT_FALSE(scene.shows("None")) << key;
        EXPECT_EQ(scene.settings.stringValue(SettingsKeys::timerSound), "Ping") << key;
    }
}

TEST(SettingsScrolling, FocusThatAKeyMovesScrollsIntoView) {
    SettingsScene scene("Agents", shortHeight);
    const std::vector<QString> order{"Install",
                                     "Install",
                                     "Approval alerts",
                                     "Answer approvals from the island",
                                     "Sound for approvals",
                                     "Finished turns",
                                     "Working live activity",
                                     "Follow Do Not Disturb",
                                     "1 Hour",
                                     "Until Tomorrow"};
    for (const QString& name : order) {
        scene.key(Qt::Key_Tab);
        ASSERT_EQ(scene.focused(), name);
        const auto* item = scene.window().activeFocusItem();
        const QRectF row =
            item->parentItem()->mapRectToItem(&scene.page(), item->parentItem()->boundingRect());
        EXPECT_GE(row.top(), 0) << name.toStdString();
        EXPECT_LE(row.bottom(), scene.page().height()) << name.toStdString();
    }
    EXPECT_GT(scrolled(scene), 100);
    for (int i = 0; i < 9; ++i) {
        scene.key(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    EXPECT_TRUE(isInSight(scene, "Install"));
}

TEST(SettingsScrolling, APressWithThePointerDoesNotMoveThePageUnderIt) {
    SettingsScene scene("Agents", shortHeight);
    scene.page().setProperty("contentY", 20);
    scene.advance(0);
    // Its row hangs over the edge.
    scene.press("Install");
    EXPECT_TRUE(scene.claude.hooksInstalled());
    EXPECT_EQ(scrolled(scene), 20);
}

TEST(SettingsScrolling, ABarShowsWhereThePageIsTallerThanTheWindowAndElseNot) {
    const SettingsScene cramped("Agents", shortHeight);
    const QQuickItem* bar = scrollBar(cramped);
    ASSERT_TRUE(bar);
    EXPECT_GE(bar->width(), 6);
    const SettingsScene roomy("Agents");
    EXPECT_FALSE(scrollBar(roomy));
    const SettingsScene brief("Timer", shortHeight);
    EXPECT_FALSE(scrollBar(brief));
}

TEST(SettingsScrolling, TheBarIsDraggedToTheEnd) {
    SettingsScene scene("Agents", shortHeight);
    const QQuickItem* bar = scrollBar(scene);
    ASSERT_TRUE(bar);
    const QPoint top = bar->mapToScene({bar->width() / 2, 8}).toPoint();
    QTest::mousePress(&scene.window(), Qt::LeftButton, {}, top);
    QTest::mouseMove(&scene.window(), top + QPoint(0, 20));
    const QPoint foot(top.x(), scene.window().height() - 1);
    QTest::mouseMove(&scene.window(), foot);
    QTest::mouseRelease(&scene.window(), Qt::LeftButton, {}, foot);
    EXPECT_NEAR(scrolled(scene), farthest(scene), 1);
}

/// Turns the wheel over a control, so many eighths of a degree each time, and sees how far that scrolls.
double scrolledByWheel(const QString& name, const std::vector<int>& turns) {
    testing::AnimationTime time;
    time.install();
    SettingsScene scene("Agents", shortHeight);
    const QPointF place = scene.centerOf(name);
    unsigned long milliseconds = 100;
    for (const int turn : turns) {
        QWheelEvent wheel(place, scene.window().mapToGlobal(place), {}, {0, turn}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        wheel.setTimestamp(milliseconds += 16);
        QCoreApplication::sendEvent(&scene.window(), &wheel);
        time.advance(16);
    }
    for (int frame = 0; frame < 60; ++frame) {
        time.advance(16);
    }
    return scrolled(scene);
}

TEST(SettingsScrolling, AWheelsNotchScrollsAlsoOverAControl) {
    EXPECT_GT(scrolledByWheel("Install", {-120}), 10);
}

TEST(SettingsScrolling, ATouchpadsSmallStepsScrollAlsoOverAControl) {
    EXPECT_GT(scrolledByWheel("Install", {-15, -15, -15, -15}), 10);
}

TEST(SettingsScrolling, PageDownAndUpReachThePagesEnds) {
    SettingsScene scene("Agents", shortHeight);
    for (int i = 0; i < 6; ++i) {
        scene.key(Qt::Key_PageDown);
    }
    EXPECT_EQ(scrolled(scene), farthest(scene));
    scene.key(Qt::Key_PageUp);
    EXPECT_LT(scrolled(scene), farthest(scene));
    for (int i = 0; i < 6; ++i) {
        scene.key(Qt::Key_PageUp);
    }
    EXPECT_EQ(scrolled(scene), 0);
}

TEST(SettingsScrolling, AnotherPageBeginsAtItsTop) {
    SettingsScene scene("Agents", shortHeight);
    scene.page().setProperty("contentY", farthest(scene));
    scene.press("General");
    scene.advance(0);
    EXPECT_EQ(scrolled(scene), 0);
    EXPECT_TRUE(isInSight(scene, "Version 1.2.3"));
}

TEST(SettingsScrolling, APickersListStaysInsideAShortWindow) {
    SettingsScene scene("Timer", 240);
    scene.press("Sound when done");
    scene.advance(0);
    for (const char* name : {"Ping", "None"}) {
        const auto* choice = scene.part(name);
        ASSERT_TRUE(choice) << name;
        const QRect place(scene.window().mapFromGlobal(choice->rect().topLeft()), choice->rect().size());
        EXPECT_TRUE(QRect({}, scene.window().size()).contains(place)) << name;
    }
}

TEST(SettingsLook, ATabsContentStandsInTheMiddleOfItsPill) {
    const SettingsScene scene;
    for (const char* name : {"General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake"}) {
        const auto* tab = scene.itemNamed(name);
        ASSERT_TRUE(tab) << name;
        const QRectF pill = tab->mapRectToScene(tab->boundingRect());
        const auto* content = tab->property("contentItem").value<QQuickItem*>();
        QRectF shown;
        for (const auto* child : content->childItems()) {
            shown |= child->mapRectToScene(child->boundingRect());
        }
        EXPECT_NEAR(shown.center().x(), pill.center().x(), 0.6) << name;
        EXPECT_NEAR(shown.center().y(), pill.center().y(), 0.6) << name;
    }
}

TEST(SettingsLook, APickersListStandsUnderItsFieldsText) {
    SettingsScene scene("Timer");
    const auto textAt = [&](const QString& name) {
        const auto* item = scene.itemWith("text", name);
        return item ? item->mapToScene({item->property("leftPadding").toDouble(), 0}).x() : -1;
    };
    const double field = textAt("Glass");
    scene.press("Sound when done");
    scene.advance(0);
    ASSERT_TRUE(scene.itemWith("text", "Submarine"));
    EXPECT_EQ(textAt("Submarine"), field);
}

} // namespace
} // namespace veslora
