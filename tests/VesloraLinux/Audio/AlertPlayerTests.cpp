// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/AlertPlayer.h"
#include "tests/VesloraLinux/Audio/ManualOutput.h"
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>

#include <cmath>

namespace veslora {
namespace {

std::vector<float> samplesOf(AlertSound sound) {
    return AlertSounds::samples(sound, Mixer::sampleRate);
}

class AlertPlayerTests : public ::testing::Test {
  protected:
    void runBackground() {
        while (scheduler.runBackground() > 0) {
        }
    }
    /// Renders what is left and ends.
    void finish() {
        while (!output->isSilent()) {
            output->render(4800);
        }
        output->end(AudioEnd::played);
    }

    ManualScheduler scheduler;
    testing::ManualOutput* output = new testing::ManualOutput;
    std::unique_ptr<AlertPlayer> player =
        std::make_unique<AlertPlayer>(scheduler, std::unique_ptr<AudioOutput>(output));
};

TEST_F(AlertPlayerTests, PlaysEachSoundWholeAndThenNothing) {
    const std::pair<const char*, AlertSound> sounds[] = {{"Glass", AlertSound::glass},
                                                         {"Ping", AlertSound::ping},
                                                         {"Hero", AlertSound::hero},
                                                         {"Submarine", AlertSound::submarine}};
    int starts = 0;
    for (const auto& [name, sound] : sounds) {
        player->play(name);
        runBackground();
        EXPECT_EQ(output->starts, ++starts);
        const std::vector<float> expected = samplesOf(sound);
        EXPECT_EQ(output->render(expected.size()), expected) << name;
        EXPECT_TRUE(output->isSilent());
        output->end(AudioEnd::played);
    }
    EXPECT_EQ(output->starts, 4);
    EXPECT_FALSE(output->isStarted());
}

TEST_F(AlertPlayerTests, RendersNothingOnTheMainThread) {
    player->play("Hero");
    EXPECT_EQ(scheduler.pendingBackground(), 1U);
    EXPECT_EQ(output->starts, 0);
}

TEST_F(AlertPlayerTests, NoneAndUnknownNamesPlayNothing) {
    for (const std::string& name : {std::string("None"), std::string(), std::string("glass"),
                                    std::string("../Glass"), std::string(100000, 'x')}) {
        player->play(name);
    }
    EXPECT_EQ(scheduler.pendingBackground(), 0U);
    EXPECT_EQ(output->starts, 0);
}

TEST_F(AlertPlayerTests, MixesASoundIntoTheOneThatPlays) {
    const std::vector<float> ping = samplesOf(AlertSound::ping);
    const std::vector<float> submarine = samplesOf(AlertSound::submarine);
    player->play("Submarine");
    runBackground();
    output->render(40000);
    player->play("Ping");
    runBackground();
    EXPECT_EQ(output->starts, 1);
    const std::vector<float> heard = output->render(ping.size());
    for (std::size_t index = 0; index < ping.size(); ++index) {
        const float before = 40000 + index < submarine.size() ? submarine[40000 + index] : 0;
        if (std::abs(before + ping[index]) <= 0.8F) {
            ASSERT_NEAR(heard[index], before + ping[index], 1e-6F) << index;
        } else {
            ASSERT_LT(std::abs(heard[index]), 1) << index;
        }
    }
    EXPECT_TRUE(output->isSilent());
}

TEST_F(AlertPlayerTests, PlaysEverySoundOfSeveralAskedForAtOnce) {
    player->play("Glass");
    player->play("Ping");
    EXPECT_EQ(scheduler.pendingBackground(), 1U);
    runBackground();
    EXPECT_EQ(output->starts, 1);
    const std::vector<float> glass = samplesOf(AlertSound::glass);
    const std::vector<float> ping = samplesOf(AlertSound::ping);
    const std::vector<float> heard = output->render(glass.size());
    EXPECT_NEAR(heard[2000], glass[2000] + ping[2000], 1e-6F);
    EXPECT_NEAR(heard[30000], glass[30000] + ping[30000], 1e-6F);
    EXPECT_TRUE(output->isSilent());
}

TEST_F(AlertPlayerTests, DropsWhatNobodyCouldTellApart) {
    for (std::size_t count = 0; count < 3 * AlertPlayer::mostAtOnce; ++count) {
        player->play("Ping");
    }
    std::size_t rendered = 0;
    for (std::size_t done = scheduler.runBackground(); done > 0; done = scheduler.runBackground()) {
        rendered += done;
    }
    EXPECT_EQ(rendered, AlertPlayer::mostAtOnce);
    player->play("Ping");
    EXPECT_EQ(scheduler.pendingBackground(), 0U);
    finish();
    player->play("Ping");
    runBackground();
    EXPECT_EQ(output->starts, 2);
}

TEST_F(AlertPlayerTests, AFailureDropsItsSoundsAndTheNextSoundTriesAgain) {
    player->play("Hero");
    player->play("Ping");
    runBackground();
    output->end(AudioEnd::failed);
    scheduler.advance(3600);
    runBackground();
    EXPECT_EQ(output->starts, 1);
    player->play("Ping");
    runBackground();
    EXPECT_EQ(output->starts, 2);
    EXPECT_EQ(output->render(samplesOf(AlertSound::ping).size()), samplesOf(AlertSound::ping));
}

TEST_F(AlertPlayerTests, ASoundThatCameTooLateForTheStreamGetsAnother) {
    player->play("Ping");
    runBackground();
    const std::vector<float> ping = samplesOf(AlertSound::ping);
    output->render(ping.size());
    player->play("Ping");
    runBackground();
    output->end(AudioEnd::played);
    EXPECT_EQ(output->starts, 2);
    EXPECT_EQ(output->render(ping.size()), ping);
    output->end(AudioEnd::played);
    EXPECT_EQ(output->starts, 2);
}

TEST_F(AlertPlayerTests, ASoundBeingRenderedWhenTheStreamEndsGetsAnother) {
    player->play("Ping");
    runBackground();
    player->play("Glass");
    finish();
    EXPECT_FALSE(output->isStarted());
    runBackground();
    EXPECT_EQ(output->starts, 2);
    EXPECT_EQ(output->render(samplesOf(AlertSound::glass).size()), samplesOf(AlertSound::glass));
}

TEST_F(AlertPlayerTests, CanEndAtAnyTime) {
    player->play("Glass");
    player->play("Ping");
    scheduler.runBackground();
    EXPECT_TRUE(output->isStarted());
    player.reset();
    runBackground();
}

} // namespace
} // namespace veslora
