// SPDX-License-Identifier: MIT
// The small island of the settings window: a timer of its own, and nothing of the user's.
#include "VesloraUI/Island/NotchViewModel.h"
#include "VesloraUI/Settings/AccentPreview.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::IsEmpty;
using ::testing::Not;

class AccentPreviewTests : public ::testing::Test {
  protected:
    [[nodiscard]] IslandModels& models() { return *scene.settingsParts.accentPreview.model()->models(); }

    SettingsScene scene{"Island"};
};

TEST_F(AccentPreviewTests, ShowsATimerOfItsOwn) {
    EXPECT_EQ(scene.settingsParts.accentPreview.model()->content(), NotchViewModel::TimerRunning);
    EXPECT_EQ(models().timer()->countdown()->duration, 25 * 60);
    EXPECT_FALSE(scene.timer.countdown()) << "the user's";
    EXPECT_FALSE(scene.platform.disk.exists(scene.platform.paths.configuration +
                                            "/settings.VesloraAccentPreview.json"));
}

TEST_F(AccentPreviewTests, ItsModelsBeginWithTheDefaults) {
    EXPECT_EQ(models().metronome()->bpm(), 120);
    EXPECT_EQ(models().rack()->spacingValue(), 60);
    EXPECT_EQ(models().rack()->layout(), scene.rack.layout());
}

TEST_F(AccentPreviewTests, BeginsAgainInsteadOfAnAlertAndSaysNothing) {
    for (int round = 0; round < 3; ++round) {
        scene.advance(25 * 60 + 1);
        EXPECT_EQ(scene.settingsParts.accentPreview.model()->state(), IslandState::liveActivity);
        EXPECT_TRUE(models().timer()->countdown());
    }
    EXPECT_THAT(scene.platform.sound.played, IsEmpty());
    EXPECT_THAT(scene.platform.notices.log, IsEmpty());
}

TEST_F(AccentPreviewTests, APromptOfTheUsersNeverShowsThere) {
    scene.claude.publish({FakeMonitor::session("s1", ClaudeStatus::NeedsApproval{"m", 1})},
                         {FakeMonitor::request("r1", scene.platform.time.now(), "a text")});
    scene.advance(1);
    EXPECT_EQ(scene.settingsParts.accentPreview.model()->content(), NotchViewModel::TimerRunning);
    EXPECT_THAT(models().agents()->pendingRequests(), IsEmpty());
    EXPECT_EQ(models().agents()->answer("r1", ClaudeDecision::allow), AnswerOutcome::tooLate);
    EXPECT_THAT(scene.claude.answered, IsEmpty());
}

/// As nobody can press them, they must not be offered to anybody either.
TEST_F(AccentPreviewTests, ItsPartsOfferNothing) {
    for (QAccessibleInterface* const control : scene.controls()) {
        EXPECT_THAT(control->text(QAccessible::Name), Not(::testing::AnyOf("Pause", "Cancel")));
    }
}

} // namespace
} // namespace veslora
