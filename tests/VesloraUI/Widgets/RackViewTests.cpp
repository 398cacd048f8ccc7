// SPDX-License-Identifier: MIT
// The rack, drawn: which view shows each widget, and that it stays while its place in the rack changes.
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Widgets/RackGestures.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QPointer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace veslora {
namespace {

using ::testing::ElementsAre;

class RackViewTest : public ::testing::Test {
  protected:
    RackViewTest() { time.install(); }
    void showRackOf(const std::string& layout) {
        scene.close();
        scene.settings.set(SettingsKeys::widgetLayout, layout);
        rack = std::make_unique<RackModel>(scene.settings, scene.platform.taps);
        scene.showRack(*rack, {700, 112});
    }
    void TearDown() override { scene.close(); }

    /// Lets everything come to rest where it belongs.
    void settle() {
        for (int frame = 0; frame < 60; ++frame) {
            time.advance(50);
        }
        scene.advance(0);
    }
    /// What is in the places of the rack, from left to right.
    [[nodiscard]] std::vector<QPointer<QQuickItem>> views() const {
        std::vector<QPointer<QQuickItem>> found;
        const auto* gestures = scene.view().findChild<RackGestures*>();
        for (const auto* module : gestures->childItems()) {
            if (typeOf(*module) == "RackModule" && module->isEnabled()) {
                found.emplace_back(module->childItems().front()->property("item").value<QQuickItem*>());
            }
        }
        std::ranges::sort(found, {}, [](const auto& view) { return view->mapToScene({}).x(); });
        return found;
    }
    /// The name of the file that made it, where it was made by one of ours.
    [[nodiscard]] static std::string typeOf(const QQuickItem& item) {
        const std::string name = item.metaObject()->className();
        return name.substr(0, name.find("_QMLTYPE"));
    }
    [[nodiscard]] std::vector<std::string> types() const {
        std::vector<std::string> types;
        for (const auto& view : views()) {
            types.push_back(typeOf(*view));
        }
        return types;
    }

    testing::AnimationTime time;
    Scene scene;
    std::unique_ptr<RackModel> rack;
};

TEST_F(RackViewTest, EveryWidgetHasItsOwnView) {
    const std::map<WidgetID, std::string> built{
        {WidgetID::claude, "ClaudeWidget"}, {WidgetID::claudeUsage, "ClaudeUsageWidget"},
        {WidgetID::clock, "ClockView"},     {WidgetID::keepAwake, "KeepAwakeWidget"},
        {WidgetID::meters, "MetersWidget"}, {WidgetID::metronome, "MetronomeWidget"},
        {WidgetID::music, "MusicWidget"},   {WidgetID::timer, "TimerWidgetView"},
    };
    for (const WidgetID id : allWidgetIDs) {
        showRackOf(std::string(rawValue(id)));
        const auto found = built.find(id);
        if (found != built.end()) {
            EXPECT_THAT(types(), ElementsAre(found->second)) << rawValue(id);
        } else {
            EXPECT_THAT(scene.texts(), ElementsAre(QString::fromUtf8(title(id))));
        }
    }
}

TEST_F(RackViewTest, ATickMakesNoViewAgain) {
    showRackOf("timer,meters,claude");
    const auto before = views();
    ASSERT_EQ(before.size(), 3u);
    scene.timer.start();
    for (int second = 0; second < 5; ++second) {
        scene.claude.publish({FakeMonitor::session("s" + std::to_string(second), ClaudeStatus::Idle{})}, {});
        rack->stepSpacing(1); // has the whole page read again
        scene.advance(1);
    }
    EXPECT_EQ(views(), before);
}

TEST_F(RackViewTest, AViewStaysWhileItsPlaceInTheRackChanges) {
    showRackOf("timer,claude:2,clock");
    const auto before = views();
    ASSERT_THAT(types(), ElementsAre("TimerWidgetView", "ClaudeWidget", "ClockView"));
    rack->setSize(WidgetID::claude, WidgetSize::small);
    settle();
    ASSERT_EQ(views(), before);
    EXPECT_FALSE(before[1]->property("isWide").toBool()) << "and hears of its new size";
    rack->drag(WidgetID::clock, 0);
    rack->endDrag();
    settle();
    EXPECT_THAT(views(), ElementsAre(before[2], before[0], before[1]));
    rack->remove(WidgetID::timer);
    rack->add(WidgetID::meters);
    settle();
    EXPECT_THAT(types(), ElementsAre("ClockView", "ClaudeWidget", "MetersWidget"));
    EXPECT_EQ(views()[1], before[1]);
}

/// Where the modules are, in the view's own points.
std::vector<QRectF> framesOf(const std::vector<QPointer<QQuickItem>>& views) {
    std::vector<QRectF> frames;
    for (const auto& view : views) {
        frames.emplace_back(view->mapToScene({}), view->size());
    }
    return frames;
}

TEST_F(RackViewTest, OnANarrowScreenTheGapsGiveWayBeforeAnythingIsCutOff) {
    for (const int screen : {1134, 1100, 1000, 900, 800, 720, 600, 450}) {
        for (const bool isAutomatic : {true, false}) {
            scene.close();
            scene.settings.set(SettingsKeys::widgetLayout,
                               std::string("timer,meters,claude:2,claudeUsage,keepAwake"));
            scene.settings.set(SettingsKeys::widgetSpacing, 60.0);
            scene.settings.set(SettingsKeys::widgetSpacingAutomatic, isAutomatic);
            rack = std::make_unique<RackModel>(scene.settings, scene.platform.taps);
            rack->setScreenWidth(screen);
            ASSERT_LE(rack->islandWidth(), screen);
            const int room = static_cast<int>(rack->islandWidth() - 2 * RackModel::sidePadding);
            scene.showRack(*rack, {room, 112});
            const auto frames = framesOf(views());
            ASSERT_FALSE(frames.empty());
            EXPECT_GE(frames.front().left(), -0.01) << screen;
            EXPECT_LE(frames.back().right(), room + 0.01) << screen;
            for (std::size_t i = 1; i < frames.size(); ++i) {
                EXPECT_GE(frames[i].left() - frames[i - 1].right(), 8 - 0.01) << screen;
            }
        }
    }
}

TEST_F(RackViewTest, AModuleThatGrowsDoesNotLoseItsNeighboursForAMoment) {
    showRackOf("timer,claude:1,clock");
    const auto before = views();
    ASSERT_EQ(before.size(), 3u);
    int removed = 0;
    QObject::connect(before[2], &QObject::destroyed, &scene.window(), [&] { ++removed; });
    rack->setSize(WidgetID::claude, WidgetSize::wide);
    scene.advance(0);
    EXPECT_EQ(views(), before);
    EXPECT_EQ(removed, 0);
}

TEST_F(RackViewTest, ModulesGoToTheirNewPlacesAtOneSpeed) {
    showRackOf("timer,meters,clock");
    const auto before = framesOf(views());
    rack->setSize(WidgetID::timer, WidgetSize::small);
    time.advance(60);
    const auto midway = framesOf(views());
    settle();
    const auto after = framesOf(views());
    const double progress = (midway[0].left() - before[0].left()) / (after[0].left() - before[0].left());
    EXPECT_GT(progress, 0.1);
    EXPECT_LT(progress, 0.9);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(midway[i].left(), std::lerp(before[i].left(), after[i].left(), progress), 0.01) << i;
        EXPECT_NEAR(midway[i].width(), std::lerp(before[i].width(), after[i].width(), progress), 0.01) << i;
    }
}

TEST_F(RackViewTest, APageThatTurnsUpIsInItsPlaceFromTheFirstFrame) {
    showRackOf("timer,claude:2,meters,clock,keepAwake");
    rack->flipPage(1);
    time.advance(30);
    const auto first = framesOf(views());
    settle();
    EXPECT_EQ(framesOf(views()), first) << "it fades in and does not come from anywhere";
}

TEST_F(RackViewTest, WhatLeavesThePageTakesNoPresses) {
    showRackOf("timer,claude:2,meters,clock,keepAwake");
    const auto leaving = views();
    rack->flipPage(1);
    time.advance(16);
    EXPECT_TRUE(leaving.front()->isVisible()) << "it fades";
    EXPECT_FALSE(leaving.front()->isEnabled());
    settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(leaving.front().isNull()) << "and is taken down";
}

} // namespace
} // namespace veslora
