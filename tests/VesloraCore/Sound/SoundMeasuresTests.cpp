// SPDX-License-Identifier: MIT
// That the measures of a sound measure what they say.
#include "tests/VesloraCore/Sound/SoundMeasures.h"

#include <gtest/gtest.h>

#include <functional>

namespace veslora::testing {
namespace {

std::vector<float> tone(double hertz, double seconds, double level = 1) {
    std::vector<float> samples(static_cast<std::size_t>(seconds * 48000));
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double time = static_cast<double>(index) / 48000;
        samples[index] = static_cast<float>(level * std::sin(2 * std::numbers::pi * hertz * time));
    }
    return samples;
}

TEST(SoundMeasures, AFullToneOf997HertzHasTheLoudnessThatTheStandardGivesIt) {
    EXPECT_NEAR(loudness(tone(997, 0.4)), -3.01, 0.05);
    EXPECT_NEAR(loudness(tone(997, 0.4, 0.1)), -23.01, 0.05);
    EXPECT_NEAR(loudness(tone(997, 0.2)), -6.02, 0.05) << "half as long has half the energy";
    EXPECT_LT(loudness(tone(40, 0.4)), loudness(tone(997, 0.4)) - 4);
    EXPECT_GT(loudness(tone(5000, 0.4)), loudness(tone(997, 0.4)) + 2.5);
}

TEST(SoundMeasures, TheCentroidLiesBetweenTwoTones) {
    EXPECT_NEAR(centroid(tone(2000, 0.05), 48000), 2000, 20);
    std::vector<float> both = tone(2000, 0.05);
    const std::vector<float> other = tone(4000, 0.05);
    std::ranges::transform(both, other, both.begin(), std::plus());
    EXPECT_NEAR(centroid(both, 48000), 3000, 30);
}

TEST(SoundMeasures, TheRiseEndsNearTheLoudest) {
    std::vector<float> samples(480);
    for (std::size_t index = 0; index < samples.size(); ++index) {
        samples[index] = (index % 2 == 0 ? 0.5F : -0.5F) * static_cast<float>(index) / 480;
    }
    EXPECT_NEAR(riseTime(samples, 48000), 0.009, 0.0001);
}

} // namespace
} // namespace veslora::testing
