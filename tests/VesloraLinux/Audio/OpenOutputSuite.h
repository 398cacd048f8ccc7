// SPDX-License-Identifier: MIT
// What every kind of sound server must be like under an output that stays open: its clock, and what becomes
// of the output when the server, or the device, is another. `TypeParam` is a server with its sinks that runs
// as long as it is there, and its `servers` leads to it.
#pragma once

#include "VesloraLinux/Audio/OpenStream.h"
#include "tests/VesloraLinux/Audio/OpenOutputFixture.h"

#include <chrono>
#include <csignal>
#include <thread>
#include <utility>

namespace veslora::testing {

template <class Server>
class OpenOutputSuite : public OpenOutputFixture {};

TYPED_TEST_SUITE_P(OpenOutputSuite);

TYPED_TEST_P(OpenOutputSuite, RendersNothingBeforeTheEventLoopHasItsTurn) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers());
    ASSERT_TRUE(this->start(output));
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    EXPECT_EQ(this->mixer->position(), 0) << "what is queued now must be in time";
    EXPECT_EQ(output.currentSample(), std::nullopt);
    EXPECT_TRUE(this->play(0.1));
    output.stop();
    EXPECT_EQ(output.currentSample(), std::nullopt);
}

TYPED_TEST_P(OpenOutputSuite, ItsClockNeverGoesBackAndIsNeverBehindWhatWasRendered) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers());
    ASSERT_TRUE(this->start(output));
    std::int64_t last = 0;
    std::int64_t steps = 0;
    std::int64_t rendered = 0;
    std::int64_t marked = 0;
    ASSERT_TRUE(waitUntil([&] {
        // The clock learns of a block right after it was rendered, and so, for certain, before the next one
        // is.
        if (const std::int64_t now = this->mixer->position(); now != rendered) {
            marked = std::exchange(rendered, now);
        }
        const auto sample = output.currentSample();
        if (sample) {
            EXPECT_GE(*sample, last);
            EXPECT_GE(*sample, marked);
            steps += *sample > last ? 1 : 0;
            last = *sample;
        }
        return last > 48000;
    }));
    EXPECT_GT(steps, 50) << "it moves on between the blocks too";
}

TYPED_TEST_P(OpenOutputSuite, NeitherAStartNorAStopWaitsForAServer) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers());
    bool isStarted = false;
    const auto startAndStop = [&] {
        // Nobody takes connections from a frozen server's queue, which a few of them fill.
        isStarted = this->start(output);
        output.stop();
    };
    startAndStop();
    EXPECT_TRUE(isStarted);
    EXPECT_LT(this->shortest(startAndStop), mostMilliseconds);
    EXPECT_TRUE(isStarted);
    kill(server.program().pid(), SIGSTOP);
    startAndStop();
    EXPECT_TRUE(isStarted);
    EXPECT_LT(this->shortest(startAndStop), mostMilliseconds);
    kill(server.program().pid(), SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
}

TYPED_TEST_P(OpenOutputSuite, AServerThatFreezesInMidPlayIsAFailure) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers(std::chrono::milliseconds(1000)));
    ASSERT_TRUE(this->start(output));
    ASSERT_TRUE(this->play(0.5));
    kill(server.program().pid(), SIGSTOP);
    EXPECT_TRUE(this->waitForLoss(OpenAudioOutput::Loss::failed));
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; })) << "to end it needs no answer either";
    kill(server.program().pid(), SIGCONT);
}

/// From the second start on: libraries keep what they make at the first.
TYPED_TEST_P(OpenOutputSuite, AStopLeavesNothingBehindAndSaysNothing) {
    const TypeParam server(this->environment);
    const Recorder recorder(this->environment, server.address(), "cap");
    OpenServerOutput output(server.servers());
    std::ptrdiff_t threads = 0;
    std::ptrdiff_t descriptors = 0;
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(this->start(output));
        ASSERT_TRUE(this->play(0.2));
        output.stop();
        EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
        const std::int64_t position = this->mixer->position();
        handleEventsFor(50);
        EXPECT_EQ(this->mixer->position(), position);
        EXPECT_EQ(this->mixer.use_count(), 1);
        if (round > 0) {
            EXPECT_EQ(this->countOf("task"), threads);
            EXPECT_EQ(this->countOf("fd"), descriptors);
        }
        threads = this->countOf("task");
        descriptors = this->countOf("fd");
    }
    EXPECT_EQ(this->loss, std::nullopt);
}

TYPED_TEST_P(OpenOutputSuite, CanBeStartedAgainAtOnce) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers());
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(this->start(output));
        output.stop();
    }
    ASSERT_TRUE(this->start(output));
    EXPECT_TRUE(this->play(0.2));
    EXPECT_EQ(this->loss, std::nullopt);
}

TYPED_TEST_P(OpenOutputSuite, CanEndAtAnyTime) {
    const TypeParam server(this->environment);
    for (const double seconds : {0.0, 0.1}) {
        OpenServerOutput output(server.servers());
        ASSERT_TRUE(this->start(output));
        ASSERT_TRUE(seconds == 0 || this->play(seconds));
    }
}

TYPED_TEST_P(OpenOutputSuite, AMoveToAnotherSinkIsAChange) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers());
    ASSERT_TRUE(this->start(output));
    ASSERT_TRUE(this->play(1.1));
    ASSERT_TRUE(askServer(server.address(), {"set-default-sink", "other"}));
    EXPECT_TRUE(this->waitForLoss(OpenAudioOutput::Loss::changed));
    EXPECT_EQ(output.currentSample(), std::nullopt);
    EXPECT_TRUE(this->start(output)) << "at once, while the old stream ends";
    EXPECT_TRUE(this->play(0.2));
}

/// Tried again where a loaded machine took so long that the start was over.
TYPED_TEST_P(OpenOutputSuite, AMoveRightAfterTheStartIsTheServersOwnBusiness) {
    const TypeParam server(this->environment);
    const Recorder other(this->environment, server.address(), "other");
    bool isMovedInTime = false;
    for (int tries = 0; tries < 8 && !isMovedInTime; ++tries) {
        ASSERT_TRUE(askServer(server.address(), {"set-default-sink", "cap"}));
        OpenServerOutput output(server.servers());
        ASSERT_TRUE(this->start(output));
        ASSERT_TRUE(this->mixer->schedule(std::make_shared<const std::vector<float>>(480000, 0.25F)));
        ASSERT_TRUE(this->play(0.1));
        ASSERT_TRUE(askServer(server.address(), {"set-default-sink", "other"}));
        isMovedInTime = this->mixer->position() < OpenStream::settling / 2;
        EXPECT_TRUE(waitUntil([&] { return other.hasSound(); }));
        EXPECT_TRUE(!isMovedInTime || this->loss == std::nullopt);
    }
    EXPECT_TRUE(isMovedInTime);
}

TYPED_TEST_P(OpenOutputSuite, ASinkThatIsTakenAwayIsAChange) {
    const TypeParam server(this->environment);
    OpenServerOutput output(server.servers());
    ASSERT_TRUE(this->start(output));
    ASSERT_TRUE(this->play(1.1));
    // The first of the modules that the server was started with.
    ASSERT_TRUE(askServer(server.address(), {"unload-module", "module-null-sink"}) ||
                askServer(server.address(), {"unload-module", "0"}));
    EXPECT_TRUE(this->waitForLoss(OpenAudioOutput::Loss::changed));
}

TYPED_TEST_P(OpenOutputSuite, AServerThatComesBackIsAChange) {
    std::optional<TypeParam> server(this->environment);
    OpenServerOutput output(server->servers(std::chrono::milliseconds(20000)));
    ASSERT_TRUE(this->start(output));
    ASSERT_TRUE(this->play(1.1));
    server->crash();
    EXPECT_TRUE(waitUntil([&] { return !output.currentSample(); }));
    EXPECT_EQ(this->loss, std::nullopt) << "nothing could be started yet";
    server.reset();
    server.emplace(this->environment);
    EXPECT_TRUE(this->waitForLoss(OpenAudioOutput::Loss::changed));
    EXPECT_TRUE(this->start(output));
    EXPECT_TRUE(this->play(0.2));
}

TYPED_TEST_P(OpenOutputSuite, AServerThatStaysAwayIsAFailure) {
    std::optional<TypeParam> server(this->environment);
    OpenServerOutput output(server->servers(std::chrono::milliseconds(600)));
    ASSERT_TRUE(this->start(output));
    ASSERT_TRUE(this->play(0.3));
    server->crash();
    EXPECT_TRUE(this->waitForLoss(OpenAudioOutput::Loss::failed));
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }));
}

TYPED_TEST_P(OpenOutputSuite, AStopEndsTheWaitForAServer) {
    std::optional<TypeParam> server(this->environment);
    OpenServerOutput output(server->servers(std::chrono::milliseconds(60000)));
    ASSERT_TRUE(this->start(output));
    ASSERT_TRUE(this->play(0.3));
    server->crash();
    ASSERT_TRUE(waitUntil([&] { return !output.currentSample(); }));
    output.stop();
    EXPECT_TRUE(waitUntil([&] { return output.streams() == 0; }, 5000));
    EXPECT_EQ(this->loss, std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(OpenOutputSuite, RendersNothingBeforeTheEventLoopHasItsTurn,
                            ItsClockNeverGoesBackAndIsNeverBehindWhatWasRendered,
                            NeitherAStartNorAStopWaitsForAServer, AServerThatFreezesInMidPlayIsAFailure,
                            AStopLeavesNothingBehindAndSaysNothing, CanBeStartedAgainAtOnce, CanEndAtAnyTime,
                            AMoveToAnotherSinkIsAChange, AMoveRightAfterTheStartIsTheServersOwnBusiness,
                            ASinkThatIsTakenAwayIsAChange, AServerThatComesBackIsAChange,
                            AServerThatStaysAwayIsAFailure, AStopEndsTheWaitForAServer);

} // namespace veslora::testing
