// SPDX-License-Identifier: MIT
// The sign that an agent's hooks are heard, and the made-up prompt.
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::Not;

const QString untrusted = "Codex has not been told to trust the hooks: run /hooks in it.";
const QString nothingYet = "No event yet: the next thing a session does shows here.";

class AgentSignTest : public testing::Test {
  protected:
    /// A moment of the day on which the tests run, in the zone that they run in.
    [[nodiscard]] HookSign sign(HookSign::Kind kind, double secondsAgo = 0) const {
        return {kind, scene.platform.time.now() - secondsAgo};
    }

    SettingsScene scene{"Agents"};
};

TEST_F(AgentSignTest, WithoutHooksNothingIsSaid) {
    EXPECT_THAT(scene.texts(), Not(Contains(nothingYet)));
    EXPECT_FALSE(scene.part("Try It"));
}

TEST_F(AgentSignTest, TellsTheLastEventWithItsTime) {
    scene.claude.setHooks({.areInstalled = true});
    EXPECT_THAT(scene.texts(), Contains(nothingYet));
    const HookSign prompt = sign(HookSign::Kind::prompt);
    scene.claude.setLastSign(prompt);
    const QString clock = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(prompt.time)).toString("HH:mm");
    EXPECT_THAT(scene.texts(), Contains("Last event: a prompt was sent, " + clock + "."));
    scene.claude.setLastSign(sign(HookSign::Kind::turnEnd, 3 * 86400));
    EXPECT_THAT(scene.texts(),
                Contains(testing::ResultOf([](const QString& text) { return text.count(','); }, 2)))
        << "of another day";
}

TEST_F(AgentSignTest, SaysWhatIsMissingUntilSomethingIsHeard) {
    scene.codex.setHooks({.areInstalled = true, .areTrusted = false, .changedAt = scene.platform.time.now()});
    EXPECT_THAT(scene.texts(), Contains(untrusted));
    scene.codex.setLastSign(sign(HookSign::Kind::prompt, 60));
    EXPECT_THAT(scene.texts(), Contains(untrusted)) << "heard before these hooks were put in";
    scene.codex.setLastSign(sign(HookSign::Kind::prompt));
    EXPECT_THAT(scene.texts(), Not(Contains(untrusted)));
}

TEST_F(AgentSignTest, ATrialTellsWhatCameBack) {
    const std::pair<HookTrialResult, QString> results[] = {
        {HookTrialResult::allowed, "It works: you allowed it. Nothing was run."},
        {HookTrialResult::denied, "It works: you denied it."},
        {HookTrialResult::unanswered, "No answer: an agent would ask in its terminal now."},
        {HookTrialResult::passedOn,
         "The prompt went straight to the terminal: answering from the island is off or paused."},
        {HookTrialResult::failed, "The script in Veslora's folder couldn't be run."},
    };
    scene.claude.setHooks({.areInstalled = true});
    for (const auto& [result, text] : results) {
        scene.press("Try It");
        scene.advance(0);
        EXPECT_THAT(scene.texts(), Contains("A made-up prompt is on the island: answer it there."));
        EXPECT_FALSE(scene.isEnabled("Try It")) << "one at a time";
        scene.claude.endTrial(result);
        EXPECT_THAT(scene.texts(), Contains(text));
        EXPECT_TRUE(scene.isEnabled("Try It"));
    }
    EXPECT_EQ(scene.claude.trials, 5);
    EXPECT_EQ(scene.codex.trials, 0);
}

TEST_F(AgentSignTest, ATrialIsWithdrawnWithThePageAndWithTheHooks) {
    scene.claude.setHooks({.areInstalled = true});
    scene.press("Try It");
    EXPECT_TRUE(scene.claude.isTrying());
    scene.press("General");
    scene.advance(0);
    EXPECT_FALSE(scene.claude.isTrying());
    scene.press("Agents");
    scene.advance(0);
    scene.press("Try It");
    scene.claude.setHooks({});
    EXPECT_FALSE(scene.claude.isTrying());
}

} // namespace
} // namespace veslora
