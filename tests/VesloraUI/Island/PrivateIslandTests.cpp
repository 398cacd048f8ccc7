// SPDX-License-Identifier: MIT
// An island of private models with nothing behind them, as a preview shows it beside the real one.
#include "VesloraUI/Island/NotchViewModel.h"
#include "VesloraUI/Platform/TextMeasuring.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::IsEmpty;

class PrivateIslandTests : public testing::Test {
  protected:
    PrivateIslandTests() {
        SettingsKeys::registerDefaults(settings);
        // The user's own sessions and requests go on beside it.
        scene.claude.publish({FakeMonitor::session("s1", ClaudeStatus::NeedsApproval{"m", 1})},
                             {FakeMonitor::request("r1", scene.platform.time.now(), "a text")});
    }
    void TearDown() override { scene.close(); }

    Scene scene;
    Defaults settings{scene.platform.disk, scene.platform.watches, scene.platform.paths.configuration,
                      "preview"};
    AgentsModel agents{{}};
    RackModel rack{settings, scene.platform.taps};
    SystemSampler sampler{scene.platform.time, scene.platform.readings};
    RecordingPower power;
    KeepAwakeModel keepAwake{settings, power, scene.platform.time};
    TimerModel timer{settings, {scene.platform.time, scene.platform.sound, scene.platform.taps, nullptr}};
    IslandModels models{{agents, keepAwake, scene.metronome, scene.music, timer, rack, sampler}};
    PresentationJudge judge{models, settings, scene.platform.measuring};
    NotchViewModel model{NotchGeometry(scene.platform.displays.screens[0].metrics), models,
                         judge.judge(scene.platform.time.now())};
};

TEST_F(PrivateIslandTests, IsDrawnClosedAndOpenWithoutWhatBelongsToTheUser) {
    scene.show("Island/NotchView.qml", {{"model", QVariant::fromValue(&model)}}, {1134, 250});
    EXPECT_THAT(scene.texts(), IsEmpty());
    EXPECT_EQ(model.state(), IslandState::closed);
    model.setExpanded(true);
    EXPECT_TRUE(QTest::qWaitFor([this] { return scene.shows("Start"); })) << "once it has faded in";
    EXPECT_FALSE(scene.shows("name of s1"));
}

TEST_F(PrivateIslandTests, ShowsATimerOfItsOwnAndLeavesTheUsersAlone) {
    timer.start();
    judge.judge(scene.platform.time.now());
    model.refresh();
    EXPECT_EQ(model.state(), IslandState::liveActivity);
    EXPECT_FALSE(scene.timer.countdown());
}

TEST_F(PrivateIslandTests, ReachesNoPromptWhateverIsAsked) {
    EXPECT_THAT(agents.pendingRequests(), IsEmpty());
    EXPECT_EQ(agents.answer("r1", ClaudeDecision::allow), AnswerOutcome::tooLate);
    agents.jump("s1");
    agents.dismissApproval("s1");
    agents.start();
    agents.stop();
    EXPECT_THAT(scene.claude.answered, IsEmpty());
    EXPECT_THAT(scene.claude.log, IsEmpty());
    EXPECT_EQ(scene.claude.pendingRequests().size(), 1U);
}

} // namespace
} // namespace veslora
