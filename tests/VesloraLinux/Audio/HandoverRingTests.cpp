// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/HandoverRing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <thread>

namespace veslora {
namespace {

TEST(HandoverRing, GivesBackInOrder) {
    HandoverRing<int, 4> ring;
    EXPECT_TRUE(ring.isEmpty());
    EXPECT_EQ(ring.pop(), std::nullopt);
    for (int round = 0; round < 10; ++round) {
        EXPECT_TRUE(ring.push(2 * round));
        EXPECT_TRUE(ring.push(2 * round + 1));
        EXPECT_FALSE(ring.isEmpty());
        EXPECT_EQ(ring.pop(), 2 * round);
        EXPECT_EQ(ring.pop(), 2 * round + 1);
    }
    EXPECT_TRUE(ring.isEmpty());
}

TEST(HandoverRing, RefusesWhenFullAndKeepsWhatItHas) {
    HandoverRing<int, 4> ring;
    for (int value = 0; value < 4; ++value) {
        EXPECT_TRUE(ring.push(value));
    }
    EXPECT_FALSE(ring.push(4));
    EXPECT_EQ(ring.pop(), 0);
    EXPECT_TRUE(ring.push(5));
    for (const int value : {1, 2, 3, 5}) {
        EXPECT_EQ(ring.pop(), value);
    }
    EXPECT_EQ(ring.pop(), std::nullopt);
}

TEST(HandoverRing, LosesNothingBetweenTwoThreads) {
    constexpr std::uint64_t count = 200000;
    struct Pair {
        std::uint64_t value = 0, square = 0;
    };
    HandoverRing<Pair, 8> ring;
    std::thread giving([&ring] {
        for (std::uint64_t value = 0; value < count;) {
            if (ring.push({value, value * value})) {
                ++value;
            } else {
                std::this_thread::yield();
            }
        }
    });
    std::uint64_t wrong = 0;
    for (std::uint64_t expected = 0; expected < count;) {
        if (const auto pair = ring.pop()) {
            wrong += pair->value == expected && pair->square == expected * expected ? 0 : 1;
            ++expected;
        } else {
            std::this_thread::yield();
        }
    }
    giving.join();
    EXPECT_EQ(wrong, 0U);
    EXPECT_TRUE(ring.isEmpty());
}

} // namespace
} // namespace veslora
