// SPDX-License-Identifier: MIT
// The rack under a pointer: the long press that begins to edit it, its menu, and the drag that rearranges it.
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Widgets/RackGestures.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace veslora {
namespace {

using testing::AllOf;
using testing::Contains;

class RackGesturesTest : public testing::Test {
  protected:
    RackGesturesTest() { showRackOf("timer,meters,clock"); }
    void TearDown() override { scene.close(); }

    void showRackOf(const std::string& layout) {
        scene.close();
        scene.settings.set(SettingsKeys::widgetLayout, layout);
        scene.settings.set(SettingsKeys::widgetSpacingAutomatic, false);
        scene.settings.set(SettingsKeys::widgetSpacing, 40.0);
        rack = std::make_unique<RackModel>(scene.settings, scene.platform.taps);
        rack->setScreenWidth(1440);
        // Room on all sides, as beneath the notch.
        scene.showText(R"(
            Item {
                property IslandModels models
                RackView {
                    anchors.centerIn: parent
                    height: 112
                    models: parent.models
                    width: models.rack.islandWidth - 64
                }
            })",
                       {1200, 200}, {{"models", QVariant::fromValue(&modelsOf(*rack))}});
    }
    IslandModels& modelsOf(RackModel& shown) {
        models = std::make_unique<IslandModels>(IslandModels::References{
            scene.agents, scene.keepAwake, scene.metronome, scene.music, scene.timer, shown, scene.sampler});
        return *models;
    }
    /// The middle of a module on the page, in the window.
    [[nodiscard]] QPoint middleOf(WidgetID id) const {
        for (const ModuleFrame& frame : rack->frames()) {
            if (frame.id == id) {
                return {static_cast<int>(600 + frame.midX() - rack->width() / 2), 100};
            }
        }
        ADD_FAILURE() << rawValue(id) << " is not on the page";
        return {};
    }
    void pressAt(QPoint point, Qt::MouseButton button = Qt::LeftButton) {
        at = point;
        QTest::mousePress(&scene.window(), button, {}, at);
    }
    void moveTo(QPoint point) {
        at = point;
        QTest::mouseMove(&scene.window(), at);
    }
    void moveBy(int points) { moveTo(at + QPoint(points, 0)); }
    void release(Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(&scene.window(), button, {}, at);
        scene.advance(0);
    }
    void edit() {
        rack->enterEditing();
        scene.advance(0);
    }
    [[nodiscard]] std::string kept() const { return rack->layout().storedValue(); }
    [[nodiscard]] RackGhost ghost() const { return scene.view().findChild<RackGestures*>()->ghost(); }

    Scene scene;
    std::unique_ptr<RackModel> rack;
    std::unique_ptr<IslandModels> models;
    QPoint at;
};

TEST_F(RackGesturesTest, HoldingAModuleForHalfASecondBeginsToEdit) {
    pressAt(middleOf(WidgetID::clock));
    scene.advance(0.49);
    EXPECT_FALSE(rack->isEditing());
    scene.advance(0.01);
    EXPECT_TRUE(rack->isEditing());
    release();
    EXPECT_TRUE(rack->isEditing());
}

TEST_F(RackGesturesTest, AReleaseInTimeOrAMoveByMoreThanTenPointsDoesNot) {
    pressAt(middleOf(WidgetID::clock));
    scene.advance(0.4);
    release();
    scene.advance(1);
    EXPECT_FALSE(rack->isEditing());
    pressAt(middleOf(WidgetID::clock));
    moveBy(11);
    moveBy(-11);
    scene.advance(1);
    EXPECT_FALSE(rack->isEditing()) << "also where it came back";
    release();
    pressAt(middleOf(WidgetID::clock));
    moveBy(10);
    scene.advance(0.5);
    EXPECT_TRUE(rack->isEditing()) << "a hand that trembles";
}

TEST_F(RackGesturesTest, BetweenTheModulesThereIsNothingToHold) {
    pressAt({middleOf(WidgetID::timer).x() + 230 / 2 + 20, 100});
    scene.advance(1);
    EXPECT_FALSE(rack->isEditing());
}

TEST_F(RackGesturesTest, AKeyThatIsHeldBeginsToEditAndIsNotPressed) {
    const QPoint key = scene.centerOf("Start").toPoint();
    pressAt(key);
    scene.advance(0.5);
    ASSERT_TRUE(rack->isEditing());
    release();
    EXPECT_FALSE(scene.timer.isLiveActivityVisible()) << "the timer has not started";
    rack->exitEditing();
    scene.advance(0);
    pressAt(key);
    scene.advance(0.2);
    release();
    EXPECT_TRUE(scene.timer.isLiveActivityVisible()) << "a short press is the key's";
    EXPECT_FALSE(rack->isEditing());
}

TEST_F(RackGesturesTest, AnEmptyRackIsHeldAnywhere) {
    showRackOf("");
    EXPECT_THAT(scene.texts(), Contains(QString("No widgets · hold or right-click to edit")));
    pressAt({600, 100});
    scene.advance(0.5);
    EXPECT_TRUE(rack->isEditing());
    EXPECT_TRUE(scene.texts().isEmpty()) << "while it is edited it shows nothing";
}

TEST_F(RackGesturesTest, TheOtherButtonOpensTheMenu) {
    pressAt({600, 100}, Qt::RightButton);
    release(Qt::RightButton);
    ASSERT_TRUE(scene.shows("Edit Widgets"));
    scene.press("Edit Widgets");
    scene.advance(0);
    EXPECT_TRUE(rack->isEditing());
    EXPECT_FALSE(scene.shows("Edit Widgets"));
    pressAt({600, 100}, Qt::RightButton);
    release(Qt::RightButton);
    EXPECT_FALSE(scene.shows("Edit Widgets")) << "which is empty while it is edited";
}

TEST_F(RackGesturesTest, APressBesideTheMenuOnlyClosesIt) {
    pressAt({600, 100}, Qt::RightButton);
    release(Qt::RightButton);
    ASSERT_TRUE(scene.shows("Edit Widgets"));
    pressAt(middleOf(WidgetID::timer) + QPoint(90, 40)); // “Start”
    release();
    EXPECT_FALSE(scene.shows("Edit Widgets"));
    EXPECT_FALSE(scene.timer.isLiveActivityVisible());
    EXPECT_FALSE(rack->isEditing());
}

TEST_F(RackGesturesTest, TheMenuGoesWhereEditingBeginsWithoutIt) {
    pressAt({600, 100}, Qt::RightButton);
    release(Qt::RightButton);
    ASSERT_TRUE(scene.shows("Edit Widgets"));
    edit();
    EXPECT_FALSE(scene.shows("Edit Widgets"));
    rack->exitEditing();
    scene.advance(0);
    EXPECT_FALSE(scene.shows("Edit Widgets"));
}

TEST_F(RackGesturesTest, AWidgetIsNotOperatedWhileItIsEdited) {
    const QPoint key = scene.centerOf("Start").toPoint();
    edit();
    pressAt(key);
    release();
    EXPECT_FALSE(scene.timer.isLiveActivityVisible());
}

TEST_F(RackGesturesTest, ADragBeginsAfterFourPoints) {
    edit();
    pressAt(middleOf(WidgetID::meters));
    moveBy(3);
    EXPECT_EQ(rack->draggingID(), std::nullopt);
    EXPECT_FALSE(ghost().isHeld);
    moveBy(1);
    EXPECT_EQ(rack->draggingID(), WidgetID::meters);
    EXPECT_TRUE(ghost().isHeld);
    release();
    EXPECT_EQ(rack->draggingID(), std::nullopt);
    EXPECT_FALSE(ghost().isHeld);
    EXPECT_EQ(kept(), "timer,meters,clock");
}

TEST_F(RackGesturesTest, TheWidgetIsDroppedWhereItShows) {
    edit();
    pressAt(middleOf(WidgetID::timer));
    moveTo(middleOf(WidgetID::meters) + QPoint(30, 0));
    EXPECT_EQ(rack->previewLayout().storedValue(), "meters,timer,clock");
    EXPECT_EQ(kept(), "timer,meters,clock");
    release();
    EXPECT_EQ(kept(), "meters,timer,clock");
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::widgetLayout), "meters,timer,clock");
}

TEST_F(RackGesturesTest, TheGhostFollowsThePointerAndThenGoesHome) {
    edit();
    const double middle = middleOf(WidgetID::meters).x() - 600;
    pressAt(middleOf(WidgetID::meters) + QPoint(20, 0));
    moveBy(33);
    EXPECT_NEAR(ghost().center, middle + 33, 1) << "by its grip, not by its middle";
    EXPECT_EQ(ghost().id, "meters");
    EXPECT_EQ(ghost().width, width(WidgetID::meters, WidgetSize::small));
    release();
    EXPECT_NEAR(ghost().center, middle, 1);
}

TEST_F(RackGesturesTest, ADragThatIsTakenAwayLeavesTheWidgetWhereItShowed) {
    edit();
    pressAt(middleOf(WidgetID::timer));
    moveTo(middleOf(WidgetID::meters) + QPoint(30, 0));
    scene.window().mouseGrabberItem()->ungrabMouse();
    EXPECT_EQ(rack->draggingID(), std::nullopt);
    EXPECT_EQ(kept(), "meters,timer,clock");
    release();
    EXPECT_EQ(kept(), "meters,timer,clock");
}

TEST_F(RackGesturesTest, AViewThatGoesInMidDragLosesNothing) {
    edit();
    pressAt(middleOf(WidgetID::timer));
    moveTo(middleOf(WidgetID::meters) + QPoint(30, 0));
    scene.close();
    EXPECT_EQ(rack->draggingID(), std::nullopt);
    EXPECT_EQ(kept(), "meters,timer,clock");
}

TEST_F(RackGesturesTest, EditModeThatEndsInMidDragMovesNothing) {
    edit();
    pressAt(middleOf(WidgetID::timer));
    moveTo(middleOf(WidgetID::meters) + QPoint(30, 0));
    rack->exitEditing();
    rack->enterEditing();
    moveBy(50);
    EXPECT_EQ(rack->draggingID(), std::nullopt) << "the button that is still held drags nothing";
    release();
    EXPECT_EQ(kept(), "timer,meters,clock");
}

TEST_F(RackGesturesTest, ADragGoesOnAcrossThePageItTurns) {
    showRackOf("timer,claude:2,meters,clock,keepAwake");
    ASSERT_EQ(rack->pageCount(), 2);
    edit();
    pressAt(middleOf(WidgetID::claude));
    moveTo({static_cast<int>(600 + rack->width() / 2) - 10, 100});
    scene.advance(0.5);
    EXPECT_EQ(rack->page(), 1);
    EXPECT_TRUE(ghost().isHeld);
    moveTo({600, 100});
    EXPECT_EQ(rack->draggingID(), WidgetID::claude);
    release();
    EXPECT_EQ(rack->pageOf(WidgetID::claude), 1);
}

TEST_F(RackGesturesTest, ModulesAreTakenUpJustBesideTheirSides) {
    edit();
    const QPoint corner = middleOf(WidgetID::timer) - QPoint(230 / 2 + 5, 56 + 5);
    pressAt(corner);
    moveBy(20);
    EXPECT_EQ(rack->draggingID(), WidgetID::timer);
    release();
    pressAt(corner - QPoint(0, 3));
    moveBy(20);
    EXPECT_EQ(rack->draggingID(), std::nullopt);
    release();
}

TEST_F(RackGesturesTest, ARightButtonDuringADragChangesNothing) {
    edit();
    pressAt(middleOf(WidgetID::timer));
    moveTo(middleOf(WidgetID::meters) + QPoint(30, 0));
    QTest::mousePress(&scene.window(), Qt::RightButton, {}, at);
    QTest::mouseRelease(&scene.window(), Qt::RightButton, {}, at);
    EXPECT_EQ(rack->draggingID(), WidgetID::timer);
    EXPECT_FALSE(scene.shows("Edit Widgets"));
    release();
    EXPECT_EQ(kept(), "meters,timer,clock");
}

TEST_F(RackGesturesTest, TheKeysOnAModuleChangeItsSizeAndRemoveIt) {
    edit();
    EXPECT_THAT(scene.names(), AllOf(Contains("Timer size 2 units"), Contains("Remove Timer"),
                                     Contains("Meters size 1 unit"), Contains("Remove Clock")));
    EXPECT_TRUE(scene.names().filter("Clock size").isEmpty()) << "it comes in one size";
    EXPECT_EQ(scene.itemNamed("Timer size 2 units")->property("helpText"), "Switch to 1 unit");
    EXPECT_EQ(scene.itemNamed("Remove Timer")->property("helpText"), "Remove");
    EXPECT_THAT(scene.texts(), Contains(QString("2U")));
    scene.press("Timer size 2 units");
    EXPECT_EQ(kept(), "timer:1,meters,clock");
    scene.advance(0);
    EXPECT_EQ(scene.itemNamed("Timer size 1 unit")->property("helpText"), "Switch to 2 units");
    scene.press("Timer size 1 unit");
    EXPECT_EQ(kept(), "timer,meters,clock");
    scene.advance(0);
    scene.press("Remove Clock");
    EXPECT_EQ(kept(), "timer,meters");
    EXPECT_FALSE(scene.timer.isLiveActivityVisible());
}

TEST_F(RackGesturesTest, TheLastWidgetRemovedLeavesAnEmptyRackForGood) {
    showRackOf("clock");
    edit();
    scene.press("Remove Clock");
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::widgetLayout), "");
    EXPECT_TRUE(RackModel(scene.settings, scene.platform.taps).layout().entries.empty());
}

TEST_F(RackGesturesTest, TheChromeIsThereOnlyWhileItIsEdited) {
    EXPECT_FALSE(scene.shows("Remove Clock"));
    edit();
    EXPECT_TRUE(scene.shows("Remove Clock"));
    rack->exitEditing();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !scene.shows("Remove Clock"); }));
}

} // namespace
} // namespace veslora
