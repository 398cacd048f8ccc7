// SPDX-License-Identifier: MIT
// An output that stays open, on sound servers of the test's own: its samples, its clock, and what becomes of
// it when the server, or the device, is another.
#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/PulseOpenOutput.h"
#include "tests/VesloraLinux/Support/SoundServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace veslora {
namespace {

using std::chrono::milliseconds;
using testing::askServer;
using testing::waitUntil;
using Loss = OpenAudioOutput::Loss;

/// So much that no load of the machine lets the stream run dry.
constexpr milliseconds ample{2000};

/// What the main thread may be held for.
constexpr int mostMilliseconds = 16;

std::ptrdiff_t countOf(const std::string& kind) {
    return std::distance(std::filesystem::directory_iterator("/proc/self/" + kind), {});
}

class PulseOpenOutputTests : public ::testing::Test {
  protected:
    bool start(PulseOpenOutput& output) {
        loss.reset();
        mixer = std::make_shared<Mixer>();
        return output.start(mixer, [this](Loss how) { loss = how; });
    }
    [[nodiscard]] bool waitForLoss(Loss how) {
        return waitUntil([this] { return loss.has_value(); }) && loss == how;
    }
    /// The shortest of some starts: a loaded machine may hold up any one of them.
    template <class Try>
    static qint64 shortest(Try attempt) {
        qint64 best = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 7; ++round) {
            QElapsedTimer timer;
            timer.start();
            attempt();
            best = std::min(best, timer.elapsed());
        }
        return best;
    }
    /// Lets it play for so many seconds of its own clock.
    [[nodiscard]] bool play(double seconds) {
        return waitUntil([&] { return mixer->position() > static_cast<std::int64_t>(seconds * 48000); });
    }

    /// Plays beats at 30 a minute, and one soon after, and looks for each of them in the recording.
    void expectOnsets(const std::string& server) {
        const testing::Recorder recorder(environment, server, "cap");
        const auto click = std::make_shared<const std::vector<float>>(std::vector{0.5F, -0.25F, 0.125F});
        PulseOpenOutput output({.server = server, .buffer = ample});
        ASSERT_TRUE(start(output));
        std::vector<float> expected(205000);
        // Queued after the start, as a metronome does it.
        for (const std::int64_t onset : {4800, 100800, 196800, 204000}) {
            ASSERT_TRUE(mixer->schedule(click, onset, Mixer::Late::dropped));
            std::ranges::copy(*click, expected.begin() + onset);
        }
        EXPECT_TRUE(waitUntil([&] { return recorder.has(expected); }));
        EXPECT_EQ(mixer->missed(), 0U);
        EXPECT_EQ(loss, std::nullopt);
    }

    testing::CoreApplication application;
    testing::SoundEnvironment environment;
    std::shared_ptr<Mixer> mixer;
    std::optional<Loss> loss;
};

TEST_F(PulseOpenOutputTests, StaysOpenBetweenSlowBeatsAndKeepsThemOnTheirSamples) {
    const testing::PulseServer server(environment);
    expectOnsets(server.address());
}

TEST_F(PulseOpenOutputTests, StaysOpenOnPipeWireToo) {
    const testing::PipeWireServer server(environment);
    expectOnsets(server.address());
}

TEST_F(PulseOpenOutputTests, RendersNothingBeforeTheEventLoopHasItsTurn) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    ASSERT_TRUE(start(output));
    std::this_thread::sleep_for(milliseconds(150));
    EXPECT_EQ(mixer->position(), 0) << "what is queued now must be in time";
    EXPECT_EQ(output.currentSample(), std::nullopt);
    EXPECT_TRUE(play(0.1));
    output.stop();
    EXPECT_EQ(output.currentSample(), std::nullopt);
}

TEST_F(PulseOpenOutputTests, ItsClockNeverGoesBackAndIsNeverBehindWhatWasRendered) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    ASSERT_TRUE(start(output));
    std::int64_t last = 0;
    std::int64_t steps = 0;
    ASSERT_TRUE(waitUntil([&] {
        const std::int64_t rendered = mixer->position();
        const auto sample = output.currentSample();
        if (sample) {
            EXPECT_GE(*sample, last);
            EXPECT_GE(*sample, rendered);
            steps += *sample > last ? 1 : 0;
            last = *sample;
        }
        return last > 48000;
    }));
    EXPECT_GT(steps, 50) << "it moves on between the blocks too";
}

TEST_F(PulseOpenOutputTests, ItsLatencyIsMeasuredAndHeld) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    EXPECT_EQ(output.latency(), 0);
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(2));
    const std::int64_t latency = output.latency();
    EXPECT_GT(latency, 2400) << "most of the fifth of a second that the server holds";
    EXPECT_LT(latency, 48000);
    ASSERT_TRUE(play(3));
    EXPECT_EQ(output.latency(), latency);
}

TEST_F(PulseOpenOutputTests, WithoutAServerAStartFailsAtOnce) {
    PulseOpenOutput output;
    ASSERT_FALSE(start(output)) << "this one has loaded the library";
    EXPECT_LT(shortest([&] { EXPECT_FALSE(start(output)); }), mostMilliseconds);
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
    EXPECT_EQ(loss, std::nullopt);
}

TEST_F(PulseOpenOutputTests, WithoutTheLibraryAStartFailsAtOnce) {
    for (const char* const library : {"libno-such-library.so.0", "libc.so.6", ""}) {
        PulseOpenOutput output({.library = library});
        EXPECT_FALSE(start(output)) << library;
    }
}

TEST_F(PulseOpenOutputTests, NeitherAStartNorAStopWaitsForAServer) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    bool isStarted = false;
    const auto startAndStop = [&] {
        // Nobody takes connections from a frozen server's queue, which a few of them fill.
        isStarted = start(output);
        output.stop();
    };
    startAndStop();
    EXPECT_TRUE(isStarted);
    EXPECT_LT(shortest(startAndStop), mostMilliseconds);
    EXPECT_TRUE(isStarted);
    kill(server.program().pid(), SIGSTOP);
    startAndStop();
    EXPECT_TRUE(isStarted);
    EXPECT_LT(shortest(startAndStop), mostMilliseconds);
    kill(server.program().pid(), SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
}

TEST_F(PulseOpenOutputTests, AServerThatNeverAnswersIsAFailureLater) {
    const testing::PulseServer server(environment);
    kill(server.program().pid(), SIGSTOP);
    PulseOpenOutput output({.server = server.address(), .patience = milliseconds(200)});
    EXPECT_TRUE(start(output));
    EXPECT_TRUE(waitForLoss(Loss::failed));
    EXPECT_EQ(output.currentSample(), std::nullopt);
    kill(server.program().pid(), SIGCONT);
}

TEST_F(PulseOpenOutputTests, AServerThatFreezesInMidPlayIsAFailure) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address(), .patience = milliseconds(1000)});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(0.5));
    kill(server.program().pid(), SIGSTOP);
    EXPECT_TRUE(waitForLoss(Loss::failed));
    kill(server.program().pid(), SIGCONT);
}

TEST_F(PulseOpenOutputTests, AStopLeavesNothingBehindAndSaysNothing) {
    const testing::PulseServer server(environment);
    const testing::Recorder recorder(environment, server.address(), "cap");
    const std::ptrdiff_t threads = countOf("task");
    const std::ptrdiff_t descriptors = countOf("fd");
    PulseOpenOutput output({.server = server.address()});
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(start(output));
        ASSERT_TRUE(play(0.2));
        output.stop();
        EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
        const std::int64_t position = mixer->position();
        testing::handleEventsFor(50);
        EXPECT_EQ(mixer->position(), position);
        EXPECT_EQ(mixer.use_count(), 1);
        EXPECT_EQ(countOf("task"), threads);
        EXPECT_EQ(countOf("fd"), descriptors);
    }
    EXPECT_EQ(loss, std::nullopt);
}

TEST_F(PulseOpenOutputTests, CanBeStartedAgainAtOnce) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(start(output));
        output.stop();
    }
    ASSERT_TRUE(start(output));
    EXPECT_TRUE(play(0.2));
    EXPECT_EQ(loss, std::nullopt);
}

TEST_F(PulseOpenOutputTests, CanEndAtAnyTime) {
    const testing::PulseServer server(environment);
    for (const double seconds : {0.0, 0.1}) {
        PulseOpenOutput output({.server = server.address()});
        ASSERT_TRUE(start(output));
        ASSERT_TRUE(seconds == 0 || play(seconds));
    }
}

TEST_F(PulseOpenOutputTests, AMoveToAnotherSinkIsAChange) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(1.1));
    ASSERT_TRUE(askServer(server.address(), {"set-default-sink", "other"}));
    EXPECT_TRUE(waitForLoss(Loss::changed));
    EXPECT_EQ(output.currentSample(), std::nullopt);
    EXPECT_TRUE(start(output)) << "at once, while the old stream ends";
    EXPECT_TRUE(play(0.2));
}

TEST_F(PulseOpenOutputTests, AMoveRightAfterTheStartIsTheServersOwnBusiness) {
    const testing::PulseServer server(environment);
    const testing::Recorder other(environment, server.address(), "other");
    PulseOpenOutput output({.server = server.address()});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(mixer->schedule(std::make_shared<const std::vector<float>>(480000, 0.25F)));
    ASSERT_TRUE(play(0.1));
    ASSERT_LT(mixer->position(), 48000);
    ASSERT_TRUE(askServer(server.address(), {"set-default-sink", "other"}));
    EXPECT_TRUE(waitUntil([&] { return other.hasSound(); }));
    EXPECT_EQ(loss, std::nullopt);
}

TEST_F(PulseOpenOutputTests, ASinkThatIsTakenAwayIsAChange) {
    const testing::PulseServer server(environment);
    PulseOpenOutput output({.server = server.address()});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(1.1));
    // The first of the modules that the server was started with.
    ASSERT_TRUE(askServer(server.address(), {"unload-module", "module-null-sink"}) ||
                askServer(server.address(), {"unload-module", "0"}));
    EXPECT_TRUE(waitForLoss(Loss::changed));
}

TEST_F(PulseOpenOutputTests, AServerThatComesBackIsAChange) {
    std::optional<testing::PulseServer> server(environment);
    const std::string address = server->address();
    PulseOpenOutput output({.server = address, .patience = milliseconds(20000)});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(1.1));
    server->crash();
    EXPECT_TRUE(waitUntil([&] { return !output.currentSample(); }));
    EXPECT_EQ(loss, std::nullopt) << "nothing could be started yet";
    server.emplace(environment);
    EXPECT_TRUE(waitForLoss(Loss::changed));
    EXPECT_TRUE(start(output));
    EXPECT_TRUE(play(0.2));
}

TEST_F(PulseOpenOutputTests, AServerThatStaysAwayIsAFailure) {
    std::optional<testing::PulseServer> server(environment);
    PulseOpenOutput output({.server = server->address(), .patience = milliseconds(600)});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(0.3));
    server->crash();
    EXPECT_TRUE(waitForLoss(Loss::failed));
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
}

TEST_F(PulseOpenOutputTests, AStopEndsTheWaitForAServer) {
    std::optional<testing::PulseServer> server(environment);
    PulseOpenOutput output({.server = server->address(), .patience = milliseconds(60000)});
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(0.3));
    server->crash();
    ASSERT_TRUE(waitUntil([&] { return !output.currentSample(); }));
    output.stop();
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }, 5000));
    EXPECT_EQ(loss, std::nullopt);
}

} // namespace
} // namespace veslora
