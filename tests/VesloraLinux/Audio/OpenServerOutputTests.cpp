// SPDX-License-Identifier: MIT
// An output that stays open, on sound servers of the test's own: its samples, its clock, and what becomes of
// it when the server, or the device, is another.
#include "VesloraLinux/Audio/PulseSoundServer.h"
#include "tests/VesloraLinux/Audio/OpenOutputSuite.h"

#include <csignal>

namespace veslora {
namespace {

using std::chrono::milliseconds;
using testing::mostMilliseconds;
using testing::waitUntil;

/// So much that no load of the machine lets the stream run dry.
constexpr milliseconds ample{2000};

OpenServerOutput::Servers pulse(PulseOptions options = {}) {
    OpenServerOutput::Servers servers;
    servers.push_back(std::make_unique<PulseSoundServer>(std::move(options)));
    return servers;
}

class PulseBehindIt : public testing::PulseServer {
  public:
    using testing::PulseServer::PulseServer;

    [[nodiscard]] OpenServerOutput::Servers servers(milliseconds patience = milliseconds(5000)) const {
        return pulse({.server = address(), .patience = patience});
    }
};

class OpenServerOutputTests : public testing::OpenOutputFixture {
  protected:
    /// Plays beats at 30 a minute, and one soon after, and looks for each of them in the recording.
    void expectOnsets(const std::string& server) {
        const testing::Recorder recorder(environment, server, "cap");
        const auto click = std::make_shared<const std::vector<float>>(std::vector{0.5F, -0.25F, 0.125F});
        OpenServerOutput output(pulse({.server = server, .buffer = ample}));
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
};

TEST_F(OpenServerOutputTests, StaysOpenBetweenSlowBeatsAndKeepsThemOnTheirSamples) {
    const testing::PulseServer server(environment);
    expectOnsets(server.address());
}

TEST_F(OpenServerOutputTests, StaysOpenOnPipeWireToo) {
    const testing::PipeWireServer server(environment);
    expectOnsets(server.address());
}

/// At its first moments the server does not tell the latency yet.
TEST_F(OpenServerOutputTests, NoSampleSeemsToBeHeardBeforeItCanBe) {
    const testing::PulseServer server(environment);
    OpenServerOutput output(pulse({.server = server.address()}));
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(start(output));
    std::int64_t furthest = std::numeric_limits<std::int64_t>::min();
    ASSERT_TRUE(waitUntil([&] {
        if (const auto sample = output.currentSample()) {
            furthest = std::max<std::int64_t>(furthest, *sample - output.latency() - timer.elapsed() * 48);
        }
        return mixer->position() > 24000;
    }));
    constexpr std::int64_t wandering = 2400; // of a server's own figures
    EXPECT_LT(furthest, wandering);
}

TEST_F(OpenServerOutputTests, ItsLatencyIsMeasuredAndHeld) {
    const testing::PulseServer server(environment);
    OpenServerOutput output(pulse({.server = server.address()}));
    EXPECT_EQ(output.latency(), 0);
    ASSERT_TRUE(start(output));
    ASSERT_TRUE(play(2));
    const std::int64_t latency = output.latency();
    EXPECT_GT(latency, 2400) << "most of the fifth of a second that the server holds";
    EXPECT_LT(latency, 48000);
    ASSERT_TRUE(play(3));
    EXPECT_EQ(output.latency(), latency);
}

TEST_F(OpenServerOutputTests, WithoutAServerAStartFailsAtOnce) {
    OpenServerOutput output(pulse());
    expectToFailAtOnce(output);
    EXPECT_LT(shortest([&] { static_cast<void>(start(output)); }), mostMilliseconds);
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
    EXPECT_EQ(loss, std::nullopt);
}

TEST_F(OpenServerOutputTests, WithoutTheLibraryAStartFailsAtOnce) {
    for (const char* const library : {"libno-such-library.so.0", "libc.so.6", ""}) {
        OpenServerOutput output(pulse({.library = library}));
        SCOPED_TRACE(library);
        expectToFailAtOnce(output);
    }
}

TEST_F(OpenServerOutputTests, AServerThatNeverAnswersIsAFailureLater) {
    const testing::PulseServer server(environment);
    kill(server.program().pid(), SIGSTOP);
    OpenServerOutput output(pulse({.server = server.address(), .patience = milliseconds(200)}));
    EXPECT_TRUE(start(output));
    EXPECT_TRUE(waitForLoss(Loss::failed));
    EXPECT_EQ(output.currentSample(), std::nullopt);
    kill(server.program().pid(), SIGCONT);
}

} // namespace

namespace testing {
INSTANTIATE_TYPED_TEST_SUITE_P(Pulse, OpenOutputSuite, PulseBehindIt);
} // namespace testing

} // namespace veslora
