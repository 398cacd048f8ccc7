// SPDX-License-Identifier: MIT
// An output that stays open, on a PipeWire of the test's own and without its service for PulseAudio's
// programs in between.
#include "VesloraLinux/Audio/PipeWireSoundServer.h"
#include "VesloraLinux/Audio/PulseSoundServer.h"
#include "tests/VesloraLinux/Audio/OpenOutputSuite.h"

#include <algorithm>
#include <csignal>

namespace veslora {
namespace {

using std::chrono::milliseconds;
using testing::waitUntil;

OpenServerOutput::Servers pipeWire(PipeWireOptions options = {}) {
    OpenServerOutput::Servers servers;
    servers.push_back(std::make_unique<PipeWireSoundServer>(std::move(options)));
    return servers;
}

/// PipeWire first, and then that PulseAudio.
OpenServerOutput::Servers pipeWireBefore(PulseOptions pulse, PipeWireOptions options = {}) {
    OpenServerOutput::Servers servers = pipeWire(std::move(options));
    servers.push_back(std::make_unique<PulseSoundServer>(std::move(pulse)));
    return servers;
}

class PipeWireBehindIt : public testing::PipeWireServer {
  public:
    using testing::PipeWireServer::PipeWireServer;

    [[nodiscard]] OpenServerOutput::Servers servers(milliseconds patience = milliseconds(5000)) const {
        return pipeWire({.patience = patience});
    }
};

/// Must not be asked.
class UnwantedServer final : public SoundServer {
  public:
    [[nodiscard]] std::optional<SessionEnd> play(OpenStream& /*stream*/) const override {
        ADD_FAILURE() << "the one before it plays";
        return std::nullopt;
    }
    [[nodiscard]] bool isThere(const OpenStream& /*stream*/) const override { return false; }
    [[nodiscard]] milliseconds patience() const override { return milliseconds(0); }
};

using PipeWireSoundServerTests = testing::OpenOutputFixture;

/// A loaded machine may take a block from any one try: here nothing is played ahead.
TEST_F(PipeWireSoundServerTests, StaysOpenBetweenSlowBeatsAndKeepsThemOnTheirSamples) {
    const testing::PipeWireServer server(environment);
    const auto click = std::make_shared<const std::vector<float>>(std::vector{0.5F, -0.25F, 0.125F});
    bool isHeard = false;
    for (int tries = 0; tries < 8 && !isHeard; ++tries) {
        const testing::Recorder recorder(environment, server.address(), "cap");
        OpenServerOutput output(pipeWire());
        ASSERT_TRUE(start(output));
        std::vector<float> expected(109000);
        // Queued after the start, as a metronome does it.
        for (const std::int64_t onset : {4800, 100800, 108000}) {
            ASSERT_TRUE(mixer->schedule(click, onset, Mixer::Late::dropped));
            std::ranges::copy(*click, expected.begin() + onset);
        }
        ASSERT_TRUE(play(3));
        EXPECT_EQ(mixer->missed(), 0U);
        EXPECT_EQ(loss, std::nullopt);
        isHeard = waitUntil([&] { return recorder.has(expected); }, 1000);
    }
    EXPECT_TRUE(isHeard);
}

TEST_F(PipeWireSoundServerTests, WithoutPipeWireAStartFailsAtOnce) {
    OpenServerOutput output(pipeWire());
    expectToFailAtOnce(output);
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
}

TEST_F(PipeWireSoundServerTests, WithoutTheLibraryAStartFailsAtOnce) {
    const testing::PipeWireDaemon daemon(environment);
    for (const char* const library : {"libno-such-library.so.0", "libc.so.6", ""}) {
        OpenServerOutput output(pipeWire({.library = library}));
        SCOPED_TRACE(library);
        expectToFailAtOnce(output);
    }
}

/// The start itself, or what is told of it later where the machine was slow to answer.
TEST_F(PipeWireSoundServerTests, OneThatOnlySharesTheScreenIsPassedOver) {
    const testing::PipeWireDaemon daemon(environment);
    OpenServerOutput alone(pipeWire());
    EXPECT_TRUE(!start(alone) || waitForLoss(Loss::failed));
    const testing::PulseServer pulse(environment);
    OpenServerOutput output(pipeWireBefore({.server = pulse.address()}));
    ASSERT_TRUE(start(output));
    EXPECT_TRUE(play(0.2));
    EXPECT_EQ(loss, std::nullopt);
}

TEST_F(PipeWireSoundServerTests, OneThatNeverAnswersIsPassedOver) {
    const testing::PipeWireDaemon daemon(environment);
    const testing::PulseServer pulse(environment);
    kill(daemon.program().pid(), SIGSTOP);
    OpenServerOutput output(pipeWireBefore({.server = pulse.address()}, {.answer = milliseconds(100)}));
    ASSERT_TRUE(start(output));
    EXPECT_TRUE(play(0.2));
    kill(daemon.program().pid(), SIGCONT);
}

TEST_F(PipeWireSoundServerTests, PipeWireItselfIsPreferredToItsService) {
    const testing::PipeWireServer server(environment);
    OpenServerOutput::Servers servers = pipeWire();
    servers.push_back(std::make_unique<UnwantedServer>());
    OpenServerOutput output(std::move(servers));
    ASSERT_TRUE(start(output));
    EXPECT_TRUE(play(0.2));
}

} // namespace

namespace testing {
INSTANTIATE_TYPED_TEST_SUITE_P(PipeWire, OpenOutputSuite, PipeWireBehindIt);
} // namespace testing

} // namespace veslora
