// SPDX-License-Identifier: MIT
// The metronome's sounds on their samples, on loudspeakers that a test moves.
#include "VesloraCore/Metronome/MetronomeSounds.h"
#include "VesloraLinux/Audio/MetronomeEngine.h"
#include "tests/VesloraLinux/Support/ManualOpenOutput.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace veslora {
namespace {

using ::testing::Each;
using Loss = OpenAudioOutput::Loss;

std::vector<float> samplesOf(MetronomeSound sound, bool accent = false) {
    return MetronomeSounds::samples(sound, accent).value();
}

class MetronomeEngineTests : public ::testing::Test {
  protected:
    MetronomeEngineTests() {
        engine.onConfigurationChange = [this] { ++changes; };
        engine.onFailure = [this] { ++failures; };
    }
    std::int64_t start() { return std::get<std::int64_t>(engine.start()); }

    testing::ManualOpenOutput* output = new testing::ManualOpenOutput;
    MetronomeEngine engine{std::unique_ptr<OpenAudioOutput>(output)};
    int changes = 0;
    int failures = 0;
};

TEST_F(MetronomeEngineTests, ItsClockIsTheDevices) {
    EXPECT_EQ(engine.sampleRate(), 48000);
    EXPECT_EQ(engine.currentSample(), std::nullopt);
    start();
    EXPECT_EQ(engine.currentSample(), std::nullopt) << "not before the device has taken anything";
    output->render(480);
    EXPECT_EQ(engine.currentSample(), 480);
    output->heardLater = 9600;
    EXPECT_EQ(engine.outputLatency(), 9600);
    engine.stop();
    EXPECT_EQ(engine.currentSample(), std::nullopt);
}

TEST_F(MetronomeEngineTests, TheFirstBeatLiesATenthOfASecondAhead) {
    EXPECT_EQ(start(), 4800);
    output->render(1000);
    EXPECT_EQ(start(), 5800) << "it runs already, so its clock goes on";
    EXPECT_EQ(output->starts, 1);
    engine.stop();
    EXPECT_EQ(start(), 4800) << "a new clock";
}

TEST_F(MetronomeEngineTests, EverySoundBeginsOnItsSample) {
    start();
    engine.schedule(MetronomeSound::click, true, 4800);
    engine.schedule(MetronomeSound::beep, false, 9601);
    const std::vector<float> heard = output->render(20000);
    std::vector<float> expected(20000);
    std::ranges::copy(samplesOf(MetronomeSound::click, true), expected.begin() + 4800);
    std::ranges::copy(samplesOf(MetronomeSound::beep), expected.begin() + 9601);
    EXPECT_EQ(heard, expected);
}

TEST_F(MetronomeEngineTests, SilentQueuesNothing) {
    start();
    engine.schedule(MetronomeSound::silent, true, 100);
    EXPECT_THAT(output->render(10000), Each(0.0F));
}

TEST_F(MetronomeEngineTests, ABeatWhoseSampleHasPassedIsNotHeardInPart) {
    start();
    output->render(1000);
    engine.schedule(MetronomeSound::beep, false, 999);
    EXPECT_THAT(output->render(5000), Each(0.0F));
    engine.schedule(MetronomeSound::beep, false, 6000);
    EXPECT_NE(output->render(100)[10], 0);
}

TEST_F(MetronomeEngineTests, StopDropsWhatIsQueued) {
    start();
    engine.schedule(MetronomeSound::click, false, 4800);
    engine.stop();
    EXPECT_FALSE(output->isStarted());
    start();
    EXPECT_THAT(output->render(20000), Each(0.0F));
}

TEST_F(MetronomeEngineTests, NothingIsQueuedWhileItIsStopped) {
    engine.schedule(MetronomeSound::click, false, 0);
    start();
    EXPECT_THAT(output->render(2000), Each(0.0F));
}

TEST_F(MetronomeEngineTests, TheVolumeHoldsFromTheFirstSampleAndOverAStop) {
    engine.setVolume(0.5F);
    for (int round = 0; round < 2; ++round) {
        start();
        engine.schedule(MetronomeSound::beep, false, 0);
        const std::vector<float> beep = samplesOf(MetronomeSound::beep);
        const std::vector<float> heard = output->render(beep.size());
        for (std::size_t index = 0; index < beep.size(); ++index) {
            ASSERT_NEAR(heard[index], beep[index] / 2, 1e-6F) << index;
        }
        engine.stop();
    }
    start();
    engine.setVolume(0);
    output->render(10);
    engine.schedule(MetronomeSound::beep, false, 10);
    EXPECT_THAT(output->render(1000), Each(0.0F));
}

TEST_F(MetronomeEngineTests, AnOutputThatWontStartIsAFailedStart) {
    output->canStart = false;
    EXPECT_EQ(engine.start(), MetronomePlaying::StartResult(MetronomeError::engineFailed));
    EXPECT_EQ(engine.currentSample(), std::nullopt);
    EXPECT_EQ(failures, 0) << "it was said already";
    output->canStart = true;
    EXPECT_EQ(start(), 4800);
}

TEST_F(MetronomeEngineTests, AWayThatIsFoundClosedLaterIsAFailure) {
    start();
    output->lose(Loss::failed);
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(engine.currentSample(), std::nullopt);
}

TEST_F(MetronomeEngineTests, AnotherDeviceIsAChangeOfTheConfiguration) {
    std::optional<MetronomePlaying::StartResult> next;
    engine.onConfigurationChange = [&] {
        engine.stop();
        next = engine.start();
    };
    start();
    output->render(48000);
    output->lose(Loss::changed);
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(next, MetronomePlaying::StartResult(std::int64_t{4800}));
    EXPECT_TRUE(output->isStarted());
}

TEST_F(MetronomeEngineTests, AWayThatIsLostAtOnceIsNotTriedForEver) {
    start();
    output->render(47999);
    output->lose(Loss::changed);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(failures, 1);
}

TEST_F(MetronomeEngineTests, NobodyNeedsToHearOfALoss) {
    engine.onFailure = nullptr;
    start();
    output->lose(Loss::failed);
    EXPECT_EQ(engine.currentSample(), std::nullopt);
}

} // namespace
} // namespace veslora
