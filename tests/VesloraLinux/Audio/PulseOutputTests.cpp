// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/AlertPlayer.h"
#include "VesloraLinux/Audio/PulseOutput.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "tests/VesloraLinux/Support/SoundServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <optional>

namespace veslora {
namespace {

using std::chrono::milliseconds;
using testing::waitUntil;

/// A reason for which no server would let a test wait this long.
constexpr milliseconds veryLong{60000};

/// So much that no load of the machine lets the stream run dry, which would put silence into a recording.
constexpr milliseconds ample{2000};

/// What this process has of "task" or "fd".
std::ptrdiff_t countOf(const std::string& kind) {
    return std::distance(std::filesystem::directory_iterator("/proc/self/" + kind), {});
}

Samples longSound() {
    return std::make_shared<const std::vector<float>>(60 * Mixer::sampleRate, 0.25F);
}

class PulseOutputTests : public ::testing::Test {
  protected:
    void start(PulseOutput& output, Mixer& mixer) {
        end.reset();
        output.start(mixer, [this](AudioEnd how) { end = how; });
    }
    [[nodiscard]] bool waitForEnd(AudioEnd how) {
        return waitUntil([this] { return end.has_value(); }) && end == how;
    }
    /// Plays beats at 137 a minute, and some close together, and looks for each of them in the recording.
    void expectOnsets(const std::string& server) {
        const testing::Recorder recorder(environment, server, "cap");
        const auto click = std::make_shared<const std::vector<float>>(std::vector{0.5F, -0.25F, 0.125F});
        Mixer mixer;
        std::vector<float> expected(110100);
        for (const std::int64_t onset : {4800, 4803, 4807, 25822, 46844, 67866, 88889, 109911, 110000}) {
            ASSERT_TRUE(mixer.schedule(click, onset));
            std::ranges::copy(*click, expected.begin() + onset);
        }
        PulseOutput output({.server = server, .buffer = ample});
        start(output, mixer);
        EXPECT_TRUE(waitForEnd(AudioEnd::played));
        EXPECT_TRUE(waitUntil([&] { return recorder.has(expected); }));
        EXPECT_EQ(mixer.missed(), 0U);
    }

    testing::CoreApplication application;
    testing::SoundEnvironment environment;
    std::optional<AudioEnd> end;
};

TEST_F(PulseOutputTests, EveryOnsetFallsOnItsSample) {
    const testing::PulseServer server(environment);
    expectOnsets(server.address());
}

TEST_F(PulseOutputTests, EveryOnsetFallsOnItsSampleOnPipeWire) {
    const testing::PipeWireServer server(environment);
    expectOnsets(server.address());
}

TEST_F(PulseOutputTests, EveryAlertSoundIsHeardAsItWasRendered) {
    const testing::PulseServer server(environment);
    LinuxScheduler scheduler;
    for (const char* const name : {"Glass", "Ping", "Hero", "Submarine"}) {
        const testing::Recorder recorder(environment, server.address(), "cap");
        AlertPlayer player(scheduler,
                           std::make_unique<PulseOutput>(PulseOptions{.server = server.address()}));
        player.play(name);
        const auto expected = AlertSounds::samples(*AlertSounds::named(name), Mixer::sampleRate);
        EXPECT_TRUE(waitUntil([&] { return recorder.has(expected); })) << name;
    }
}

TEST_F(PulseOutputTests, FindsTheServerOfTheSession) {
    const testing::PulseServer server(environment);
    environment.set("PULSE_SERVER", server.address());
    const testing::Recorder recorder(environment, server.address(), "cap");
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(longSound()));
    PulseOutput output;
    start(output, mixer);
    EXPECT_TRUE(waitUntil([&] { return recorder.hasSound(); }));
}

TEST_F(PulseOutputTests, NothingOfItLivesOnceTheSoundWasHeard) {
    const testing::PulseServer server(environment);
    ManualScheduler scheduler;
    AlertPlayer player(scheduler, std::make_unique<PulseOutput>(PulseOptions{.server = server.address()}));
    const std::ptrdiff_t threads = countOf("task");
    const std::ptrdiff_t descriptors = countOf("fd");
    for (int round = 0; round < 2; ++round) {
        player.play("Ping");
        scheduler.runBackground();
        EXPECT_EQ(countOf("task"), threads + 1);
        EXPECT_TRUE(waitUntil([&] { return countOf("task") == threads; }));
        EXPECT_EQ(countOf("fd"), descriptors);
    }
}

TEST_F(PulseOutputTests, StopsAtOnceAndSaysNothing) {
    const testing::PulseServer server(environment);
    const testing::Recorder recorder(environment, server.address(), "cap");
    const std::ptrdiff_t before = countOf("task");
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(longSound()));
    PulseOutput output({.server = server.address(), .patience = veryLong});
    start(output, mixer);
    ASSERT_TRUE(waitUntil([&] { return recorder.hasSound(); }));
    output.stop();
    EXPECT_EQ(countOf("task"), before);
    const std::int64_t position = mixer.position();
    testing::handleEventsFor(100);
    EXPECT_EQ(mixer.position(), position);
    EXPECT_EQ(end, std::nullopt);
    output.stop();
}

TEST_F(PulseOutputTests, FollowsTheDefaultSink) {
    const testing::PulseServer server(environment);
    const testing::Recorder recorder(environment, server.address(), "cap");
    const testing::Recorder other(environment, server.address(), "other");
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(longSound()));
    PulseOutput output({.server = server.address()});
    start(output, mixer);
    ASSERT_TRUE(waitUntil([&] { return recorder.hasSound(); }));
    EXPECT_FALSE(other.hasSound());
    ASSERT_TRUE(testing::askServer(server.address(), {"set-default-sink", "other"}));
    EXPECT_TRUE(waitUntil([&] { return other.hasSound(); }));
    EXPECT_EQ(end, std::nullopt);
}

TEST_F(PulseOutputTests, FailsWithoutAServerAndStartsNone) {
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(longSound()));
    PulseOutput output({.patience = veryLong});
    start(output, mixer);
    EXPECT_TRUE(waitForEnd(AudioEnd::failed));
    EXPECT_EQ(mixer.position(), 0);
    EXPECT_FALSE(std::filesystem::exists(environment.folder().path("PULSE_RUNTIME_PATH/native")));
    EXPECT_FALSE(std::filesystem::exists(environment.folder().path("PULSE_RUNTIME_PATH/pid")));
}

TEST_F(PulseOutputTests, FailsWithoutTheLibraryOrWithAnotherOne) {
    for (const char* const library : {"libno-such-library.so.0", "libc.so.6", ""}) {
        Mixer mixer;
        PulseOutput output({.library = library});
        start(output, mixer);
        EXPECT_TRUE(waitForEnd(AudioEnd::failed)) << library;
    }
}

TEST_F(PulseOutputTests, FailsWhenTheServerDiesAndFindsTheNextOne) {
    std::optional<testing::PulseServer> server(environment);
    const std::string address = server->address();
    PulseOutput output({.server = address, .patience = veryLong});
    {
        const testing::Recorder recorder(environment, address, "cap");
        Mixer mixer;
        ASSERT_TRUE(mixer.schedule(longSound()));
        start(output, mixer);
        ASSERT_TRUE(waitUntil([&] { return recorder.hasSound(); }));
        server->crash();
        EXPECT_TRUE(waitForEnd(AudioEnd::failed));
        start(output, mixer);
        EXPECT_TRUE(waitForEnd(AudioEnd::failed));
    }
    server.emplace(environment);
    expectOnsets(address);
}

TEST_F(PulseOutputTests, AServerThatNeverAnswersBlocksNobodyAndHasALimit) {
    const testing::PulseServer server(environment);
    kill(server.program().pid(), SIGSTOP);
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(longSound()));
    QElapsedTimer timer;
    timer.start();
    {
        PulseOutput patient({.server = server.address(), .patience = veryLong});
        start(patient, mixer);
        testing::handleEventsFor(50);
        EXPECT_EQ(end, std::nullopt);
    }
    EXPECT_LT(timer.elapsed(), veryLong.count() / 2);
    PulseOutput impatient({.server = server.address(), .patience = milliseconds(200)});
    start(impatient, mixer);
    EXPECT_TRUE(waitForEnd(AudioEnd::failed));
    EXPECT_GE(timer.elapsed(), 200);
    kill(server.program().pid(), SIGCONT);
    expectOnsets(server.address());
}

TEST_F(PulseOutputTests, AServerThatFreezesInMidPlayHasALimit) {
    const testing::PulseServer server(environment);
    Mixer mixer;
    ASSERT_TRUE(mixer.schedule(longSound()));
    PulseOutput output({.server = server.address(), .patience = milliseconds(2000)});
    start(output, mixer);
    ASSERT_TRUE(waitUntil([&] { return mixer.position() > 2 * Mixer::sampleRate / 10; }));
    kill(server.program().pid(), SIGSTOP);
    EXPECT_TRUE(waitForEnd(AudioEnd::failed));
    kill(server.program().pid(), SIGCONT);
}

} // namespace
} // namespace veslora
