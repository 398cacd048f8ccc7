// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/SampleClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <thread>

namespace veslora {
namespace {

constexpr std::int64_t millisecond = 1'000'000;

TEST(SampleClock, KnowsNothingBeforeTheFirstBlock) {
    const SampleClock clock(48000);
    EXPECT_EQ(clock.sampleAt(0), std::nullopt);
    EXPECT_EQ(clock.sampleAt(std::numeric_limits<std::int64_t>::max()), std::nullopt);
}

TEST(SampleClock, MovesOnBetweenBlocks) {
    SampleClock clock(48000);
    clock.mark(9600, 2400, 1000 * millisecond);
    EXPECT_EQ(clock.sampleAt(1000 * millisecond), 9600);
    EXPECT_EQ(clock.sampleAt(1010 * millisecond), 9600 + 480);
    EXPECT_EQ(clock.sampleAt(1050 * millisecond), 9600 + 2400);
}

TEST(SampleClock, WaitsForABlockThatDoesNotCome) {
    SampleClock clock(48000);
    clock.mark(9600, 2400, 1000 * millisecond);
    EXPECT_EQ(clock.sampleAt(1500 * millisecond), 12000);
    EXPECT_EQ(clock.sampleAt(std::numeric_limits<std::int64_t>::max()), 12000);
}

TEST(SampleClock, AMomentBeforeTheBlockCountsAsItsOwn) {
    SampleClock clock(48000);
    clock.mark(9600, 2400, 1000 * millisecond);
    EXPECT_EQ(clock.sampleAt(900 * millisecond), 9600);
}

TEST(SampleClock, NobodyEverSeesHalfAMark) {
    SampleClock clock(48000);
    std::atomic<bool> isOver = false;
    std::thread audio([&] {
        for (std::int64_t block = 1; !isOver; ++block) {
            clock.mark(block * 1000, block, block * 1000);
        }
    });
    std::int64_t wrong = 0;
    for (int look = 0; look < 200000; ++look) {
        // In the past of every mark, so that it gives a mark's position, and none that was never written.
        const auto sample = clock.sampleAt(0);
        wrong += sample && *sample % 1000 != 0 ? 1 : 0;
    }
    isOver = true;
    audio.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace veslora
