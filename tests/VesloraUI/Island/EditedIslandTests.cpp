// SPDX-License-Identifier: MIT
// The island while its rack is edited: what may come up then, and that all of it moves as one.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Fixtures/AnimationTime.h"
#include "tests/VesloraUI/Fixtures/ControlledIsland.h"
#include "tests/VesloraUI/Fixtures/SceneIsland.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EditedIslandTest : public ::testing::Test, protected ControlledIsland {
  protected:
    void SetUp() override { controller.start(); }
    void TearDown() override { controller.stop(); }
    [[nodiscard]] IslandState state() const { return controller.model()->state(); }
};

TEST_F(EditedIslandTest, APromptSoundsAtOnceAndShowsWhenTheEditingIsDone) {
    settings.set(SettingsKeys::claudeApprovalSound, true);
    controller.rack().enterEditing();
    claude.publish({FakeMonitor::session("s1", ClaudeStatus::NeedsApproval{"", 1})},
                   {FakeMonitor::request("r1", platform.time.now(), "make check")});
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass"));
    EXPECT_EQ(state(), IslandState::expanded);
    EXPECT_TRUE(controller.rack().isEditing());
    controller.rack().exitEditing();
    EXPECT_EQ(state(), IslandState::claudeAlert);
    EXPECT_THAT(platform.sound.played, ElementsAre("Glass")) << "once";
}

TEST_F(EditedIslandTest, APromptThatRunsOutMeanwhileLeavesNothing) {
    controller.rack().enterEditing();
    claude.publish({}, {FakeMonitor::request("r1", platform.time.now(), "make check")});
    claude.publish({}, {});
    controller.rack().exitEditing();
    EXPECT_NE(state(), IslandState::claudeAlert);
    EXPECT_THAT(claude.answered, IsEmpty());
}

TEST_F(EditedIslandTest, ADragThatTheProgramsEndInterruptsLosesNothing) {
    const std::string before = controller.rack().layout().storedValue();
    controller.rack().enterEditing();
    controller.rack().drag(WidgetID::timer, 1);
    controller.stop();
    EXPECT_EQ(controller.rack().layout().storedValue(), before);
    EXPECT_EQ(RackModel(settings, platform.taps).layout().storedValue(), before);
    EXPECT_FALSE(controller.rack().isEditing());
}

TEST_F(EditedIslandTest, AnotherScreenKeepsItEdited) {
    controller.rack().enterEditing();
    platform.displays.screens[0].metrics.frame.width = 1024;
    emit platform.displays.changed();
    EXPECT_TRUE(controller.rack().isEditing());
    EXPECT_EQ(state(), IslandState::expanded);
}

class MovingIslandTest : public ::testing::Test {
  protected:
    MovingIslandTest() {
        time.install();
        for (const WidgetID id : scene.rack.layout().ids()) {
            scene.rack.remove(id);
        }
        for (const WidgetID id : {WidgetID::timer, WidgetID::meters, WidgetID::clock}) {
            scene.rack.add(id);
        }
        scene.rack.stepSpacing(0);
    }
    void settle() {
        for (int frame = 0; frame < 60; ++frame) {
            time.advance(50);
        }
        scene.advance(0);
    }
    /// The edges, in the window, of all that belongs to the open island while it is edited.
    [[nodiscard]] std::vector<double> edges() const {
        std::vector<double> found{island.outline().mapToScene({}).x(),
                                  island.outline().mapToScene({island.outline().width(), 0}).x()};
        for (const char* name : {"Remove Timer", "Remove Meters", "Remove Clock", "Done", "Edit widgets"}) {
            const auto* item = scene.itemNamed(name);
            found.push_back(item ? item->mapToScene({}).x() : -1);
        }
        return found;
    }

    testing::AnimationTime time;
    Scene scene;
    SceneIsland island{scene};
};

TEST_F(MovingIslandTest, IslandModulesAndKeysMoveAsOne) {
    island.show();
    scene.rack.enterEditing();
    island.model.setExpanded(true);
    settle();
    const auto before = edges();
    for (const double edge : before) {
        ASSERT_GE(edge, 0);
    }
    scene.rack.stepSpacing(10);
    for (int frame = 0; frame < 12; ++frame) {
        time.advance(16);
        const auto now = edges();
        auto target = before;
        // Everything is as far on its way as the island's own edge.
        const double way = (island.model.islandWidth() - (before[1] - before[0])) / 2;
        const double progress = (before[0] - now[0]) / way;
        target[0] -= way;
        target[1] += way;
        EXPECT_NEAR(now[1], std::lerp(before[1], target[1], progress), 0.01);
        EXPECT_NEAR(now[5] - before[5], way * progress, 0.01) << "the key at the right end";
        EXPECT_NEAR(before[6] - now[6], way * progress, 0.01) << "the label at the left end";
        EXPECT_NEAR(before[2] - now[2], way * progress, 0.01) << "the first module";
        EXPECT_NEAR(now[4] - before[4], way * progress, 0.01) << "the last module";
        EXPECT_NEAR(now[3], before[3], way) << "what is between them stays between them";
    }
}

} // namespace
} // namespace veslora
