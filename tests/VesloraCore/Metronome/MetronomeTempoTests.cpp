// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/MetronomeTempo.h"

#include <gtest/gtest.h>

#include <limits>

using namespace veslora;

TEST(MetronomeTempo, IsHeldBetween30And300) {
    EXPECT_EQ(MetronomeTempo::range.lower, 30);
    EXPECT_EQ(MetronomeTempo::range.upper, 300);
    EXPECT_EQ(MetronomeTempo::defaultBPM, 120);
    for (const auto& [bpm, held] :
         {std::pair{29, 30}, {30, 30}, {31, 31}, {299, 299}, {300, 300}, {301, 300}}) {
        EXPECT_EQ(MetronomeTempo::clamped(bpm), held);
    }
    EXPECT_EQ(MetronomeTempo::clamped(std::numeric_limits<int>::min()), 30);
    EXPECT_EQ(MetronomeTempo::clamped(std::numeric_limits<int>::max()), 300);
}
