// SPDX-License-Identifier: MIT
// The metronome from its model to the samples that a device takes, on loudspeakers and in a time that a test
// moves together, a hundredth of a second at once.
#include "VesloraCore/Metronome/MetronomeSounds.h"
#include "VesloraLinux/Audio/MetronomeEngine.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Platform/Suspension.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraLinux/Support/ManualOpenOutput.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace veslora {
namespace {

using ::testing::Optional;

constexpr std::size_t block = 480;

class MetronomeOnItsSamples : public ::testing::Test {
  protected:
    MetronomeOnItsSamples() {
        SettingsKeys::registerDefaults(settings);
        settings.set(SettingsKeys::metronomeVolume, 1.0);
    }

    void play(double seconds) {
        for (int count = static_cast<int>(seconds * 100); count > 0; --count) {
            render();
            scheduler.advance(0.01);
        }
    }
    /// The device goes on while the main thread does nothing.
    void stall(double seconds) {
        for (int count = static_cast<int>(seconds * 100); count > 0; --count) {
            render();
            scheduler.suspend(0.01);
        }
    }
    void render() {
        if (!output->isStarted()) {
            return;
        }
        const std::vector<float> samples = output->render(block);
        heard.insert(heard.end(), samples.begin(), samples.end());
    }
    /// What was heard is these beats on their samples, each whole, and nothing else.
    void expectBeats(const std::vector<std::pair<std::int64_t, bool>>& beats) const {
        std::vector<float> expected(heard.size());
        for (const auto& [sample, accent] : beats) {
            const std::vector<float> sound = *MetronomeSounds::samples(metronome.sound(), accent);
            ASSERT_LE(sample + static_cast<std::int64_t>(sound.size()),
                      static_cast<std::int64_t>(expected.size()));
            std::ranges::copy(sound, expected.begin() + sample);
        }
        EXPECT_TRUE(heard == expected);
    }

    MemoryFiles files;
    FakeDirectoryWatcher watcher;
    Defaults settings{files, watcher, "/configuration"};
    ManualScheduler scheduler;
    Suspension suspension;
    testing::ManualOpenOutput* output = new testing::ManualOpenOutput;
    MetronomeEngine engine{std::unique_ptr<OpenAudioOutput>(output)};
    MetronomeModel metronome{settings, {scheduler, engine, suspension}};
    std::vector<float> heard;
};

TEST_F(MetronomeOnItsSamples, EveryBeatIsWhole) {
    metronome.start();
    play(2.2);
    expectBeats({{4800, true}, {28800, false}, {52800, false}, {76800, false}, {100800, true}});
}

TEST_F(MetronomeOnItsSamples, TempoAndSignatureChangeOnTheWay) {
    metronome.start();
    play(1.15);
    // Queued until 1.6 seconds.
    metronome.setBpm(137);
    metronome.setSignature({3, 4});
    play(1.2);
    expectBeats({{4800, true}, {28800, false}, {52800, false}, {76800, false}, {76800 + 21022, true}});
}

TEST_F(MetronomeOnItsSamples, ASecondWithoutTheMainThreadLosesBeatsAndBurstsNothing) {
    metronome.start();
    play(0.55);
    stall(1.25);
    play(1.5);
    // Queued until 1.0 seconds; the beats at 1.1 and 1.6 were lost.
    expectBeats({{4800, true}, {28800, false}, {100800, true}, {124800, false}, {148800, false}});
}

TEST_F(MetronomeOnItsSamples, AStallThatTheQueueBearsCostsNothing) {
    metronome.start();
    for (int round = 0; round < 4; ++round) {
        stall(0.3);
        play(0.3);
    }
    expectBeats({{4800, true}, {28800, false}, {52800, false}, {76800, false}, {100800, true}});
}

TEST_F(MetronomeOnItsSamples, LightsFollowTheDevice) {
    output->heardLater = 4800;
    metronome.start();
    play(0.15);
    EXPECT_EQ(metronome.currentBeat(), std::nullopt);
    play(0.1);
    EXPECT_THAT(metronome.currentBeat(), Optional(0));
    EXPECT_NEAR(metronome.beatPhase()->secondsIntoBeat, 0.05, 1e-9);
}

TEST_F(MetronomeOnItsSamples, HeadphonesThatArePulledOutStartItAgain) {
    metronome.start();
    play(1.3);
    output->lose(OpenAudioOutput::Loss::changed);
    EXPECT_TRUE(metronome.isRunning());
    EXPECT_EQ(output->starts, 2);
    heard.clear();
    play(0.7);
    expectBeats({{4800, true}, {28800, false}});
}

TEST_F(MetronomeOnItsSamples, WithoutLoudspeakersItStaysStopped) {
    output->canStart = false;
    metronome.start();
    EXPECT_FALSE(metronome.isRunning());
    output->canStart = true;
    metronome.start();
    output->lose(OpenAudioOutput::Loss::failed);
    EXPECT_FALSE(metronome.isRunning());
    EXPECT_EQ(scheduler.pending(), 0U);
}

TEST_F(MetronomeOnItsSamples, APreviewIsTwoHits) {
    metronome.preview();
    play(1.2);
    expectBeats({{4800, true}, {4800 + 16800, false}});
    EXPECT_FALSE(output->isStarted());
}

} // namespace
} // namespace veslora
