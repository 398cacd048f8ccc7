// SPDX-License-Identifier: MIT
// The rack, drawn: which view shows each widget, and that it stays while its place in the rack changes.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QPointer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>

namespace veslora {
namespace {

using testing::ElementsAre;

class RackViewTest : public testing::Test {
  protected:
    void showRackOf(const std::string& layout) {
        scene.close();
        scene.settings.set(SettingsKeys::widgetLayout, layout);
        rack = std::make_unique<RackModel>(scene.settings, scene.platform.taps);
        scene.showRack(*rack, {700, 112});
    }
    void TearDown() override { scene.close(); }

    /// What is in the places of the rack, from left to right.
    [[nodiscard]] std::vector<QPointer<QQuickItem>> views() const {
        std::vector<QPointer<QQuickItem>> found;
        const auto* row = scene.view().findChild<QQuickItem*>(QString(), Qt::FindDirectChildrenOnly);
        for (const auto* module : row->childItems()) {
            if (typeOf(*module) == "RackModule") {
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

    Scene scene;
    std::unique_ptr<RackModel> rack;
};

TEST_F(RackViewTest, EveryWidgetHasItsOwnView) {
    const std::map<WidgetID, std::string> built{
        {WidgetID::claude, "ClaudeWidget"}, {WidgetID::claudeUsage, "ClaudeUsageWidget"},
        {WidgetID::clock, "ClockView"},     {WidgetID::keepAwake, "KeepAwakeWidget"},
        {WidgetID::meters, "MetersWidget"}, {WidgetID::timer, "TimerWidgetView"},
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
    scene.advance(0);
    ASSERT_EQ(views(), before);
    EXPECT_FALSE(before[1]->property("isWide").toBool()) << "and hears of its new size";
    rack->drag(WidgetID::clock, 0);
    rack->endDrag();
    scene.advance(0);
    EXPECT_THAT(views(), ElementsAre(before[2], before[0], before[1]));
    rack->remove(WidgetID::timer);
    rack->add(WidgetID::meters);
    scene.advance(0);
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

} // namespace
} // namespace veslora
