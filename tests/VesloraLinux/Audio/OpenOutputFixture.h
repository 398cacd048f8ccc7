// SPDX-License-Identifier: MIT
// For tests of an output that stays open: starts it, lets it play, and waits for what becomes of it.
#pragma once

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/OpenServerOutput.h"
#include "tests/VesloraLinux/Support/SoundServer.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace veslora::testing {

/// What the main thread may be held for.
inline constexpr int mostMilliseconds = 16;

class OpenOutputFixture : public ::testing::Test {
  protected:
    using Loss = OpenAudioOutput::Loss;

    bool start(OpenServerOutput& output) {
        loss.reset();
        mixer = std::make_shared<Mixer>();
        return output.start(mixer, [this](Loss how) { loss = how; });
    }
    [[nodiscard]] bool waitForLoss(Loss how) {
        return waitUntil([this] { return loss.has_value(); }) && loss == how;
    }
    /// Every start fails, and some at once: a loaded machine may have others say so only later.
    void expectToFailAtOnce(OpenServerOutput& output) {
        bool isAtOnce = false;
        for (int round = 0; round < 7; ++round) {
            const bool isStarted = start(output);
            isAtOnce = isAtOnce || !isStarted;
            EXPECT_TRUE(!isStarted || waitForLoss(Loss::failed));
        }
        EXPECT_TRUE(isAtOnce);
    }
    /// Lets it play for so many seconds of its own clock.
    [[nodiscard]] bool play(double seconds) {
        return waitUntil([&] { return mixer->position() > static_cast<std::int64_t>(seconds * 48000); });
    }
    /// The shortest of some tries, in milliseconds: a loaded machine may hold up any one of them.
    template <class Try>
    [[nodiscard]] static qint64 shortest(Try attempt) {
        qint64 best = std::numeric_limits<qint64>::max();
        for (int round = 0; round < 7; ++round) {
            QElapsedTimer timer;
            timer.start();
            attempt();
            best = std::min(best, timer.elapsed());
        }
        return best;
    }
    /// How many entries this process has there, such as "task" or "fd".
    [[nodiscard]] static std::ptrdiff_t countOf(const std::string& kind) {
        return std::distance(std::filesystem::directory_iterator("/proc/self/" + kind), {});
    }

    CoreApplication application;
    SoundEnvironment environment;
    std::shared_ptr<Mixer> mixer;
    std::optional<Loss> loss;
};

} // namespace veslora::testing
