// SPDX-License-Identifier: MIT
#include "VesloraCore/Sound/AlertSounds.h"
#include "tests/VesloraCore/Sound/SoundMeasures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace veslora {

namespace {

using testing::energy;
using testing::pitchAt;
using testing::strength;

constexpr AlertSound everySound[] = {AlertSound::glass, AlertSound::ping, AlertSound::hero,
                                     AlertSound::submarine};

class EverySound : public ::testing::TestWithParam<double> {
  protected:
    /// Calls `check` with every sound at this rate.
    void forEach(const std::function<void(AlertSound, const std::vector<float>&)>& check) const {
        for (const AlertSound sound : everySound) {
            SCOPED_TRACE(static_cast<int>(sound));
            check(sound, AlertSounds::samples(sound, m_rate));
        }
    }
    double m_rate = GetParam();
};

TEST_P(EverySound, LastsFromHalfASecondTo1Point8) {
    forEach([this](AlertSound, const std::vector<float>& samples) {
        EXPECT_GE(static_cast<double>(samples.size()), 0.5 * m_rate);
        EXPECT_LE(static_cast<double>(samples.size()), 1.8 * m_rate);
    });
}

TEST_P(EverySound, IsAsLoudAsItMayBeAndNoLouder) {
    forEach([](AlertSound, const std::vector<float>& samples) {
        float loudest = 0;
        for (const float sample : samples) {
            ASSERT_TRUE(std::isfinite(sample));
            loudest = std::max(loudest, std::abs(sample));
        }
        EXPECT_LE(loudest, 0.8F);
        EXPECT_GE(loudest, 0.79F);
    });
}

TEST_P(EverySound, StartsAndEndsWithoutAClick) {
    forEach([this](AlertSound, const std::vector<float>& samples) {
        EXPECT_EQ(samples.front(), 0);
        EXPECT_EQ(samples.back(), 0);
        // A quarter of a millisecond in, and a millisecond before the end, it is still hardly there.
        const auto inside = static_cast<std::size_t>(0.00025 * m_rate);
        const auto outside = static_cast<std::size_t>(0.001 * m_rate);
        for (std::size_t index = 0; index < inside; ++index) {
            EXPECT_LT(std::abs(samples[index]), 0.15F) << index;
        }
        for (std::size_t index = samples.size() - outside; index < samples.size(); ++index) {
            EXPECT_LT(std::abs(samples[index]), 0.001F) << index;
        }
    });
}

TEST_P(EverySound, HasNoOffset) {
    forEach([](AlertSound, const std::vector<float>& samples) {
        const double sum = std::accumulate(samples.begin(), samples.end(), 0.0);
        EXPECT_LT(std::abs(sum / static_cast<double>(samples.size())), 0.0001);
    });
}

TEST_P(EverySound, FadesAway) {
    forEach([](AlertSound, const std::vector<float>& samples) {
        const std::span<const float> all(samples);
        const std::size_t third = all.size() / 3;
        EXPECT_GT(energy(all.first(third)), 2 * energy(all.last(third)));
    });
}

TEST_P(EverySound, IsTheSameEveryTime) {
    forEach([this](AlertSound sound, const std::vector<float>& samples) {
        EXPECT_EQ(samples, AlertSounds::samples(sound, m_rate));
    });
}

INSTANTIATE_TEST_SUITE_P(AlertSounds, EverySound, ::testing::Values(8000.0, 44100.0, 48000.0, 44099.7));

class AtUsualRates : public ::testing::TestWithParam<double> {
  protected:
    [[nodiscard]] std::vector<float> samples(AlertSound sound) const {
        return AlertSounds::samples(sound, m_rate);
    }
    double m_rate = GetParam();
};

TEST_P(AtUsualRates, NothingClicksWithin) {
    // What the fastest of its tones may rise by from one sample to the next at 48000 hertz.
    const std::pair<AlertSound, double> limits[] = {{AlertSound::glass, 0.4},
                                                    {AlertSound::ping, 0.22},
                                                    {AlertSound::hero, 0.25},
                                                    {AlertSound::submarine, 0.07}};
    for (const auto& [sound, limit] : limits) {
        const std::vector<float> all = samples(sound);
        for (std::size_t index = 1; index < all.size(); ++index) {
            ASSERT_LT(std::abs(all[index] - all[index - 1]), limit * 48000 / m_rate) << index;
        }
    }
}

TEST_P(AtUsualRates, GlassRingsInModesThatAreNoMultiples) {
    const std::vector<float> glass = samples(AlertSound::glass);
    EXPECT_NEAR(pitchAt(glass, m_rate, 0.05, 0.2), 1480, 15);
    const std::span<const float> tap = std::span(glass).first(static_cast<std::size_t>(0.1 * m_rate));
    for (const double ratio : {2.32, 4.25, 6.63}) {
        const double mode = strength(tap, 1480 * ratio, m_rate);
        const double multiple = strength(tap, 1480 * std::round(ratio), m_rate);
        EXPECT_GT(mode, 4 * multiple) << ratio;
    }
}

TEST_P(AtUsualRates, PingIsOneClearNote) {
    const std::vector<float> ping = samples(AlertSound::ping);
    EXPECT_NEAR(pitchAt(ping, m_rate, 0, 0.15), 1175, 12);
    EXPECT_NEAR(pitchAt(ping, m_rate, 0.4, 0.3), 1175, 12);
    const std::span<const float> stretch = std::span(ping).first(static_cast<std::size_t>(0.2 * m_rate));
    const double note = strength(stretch, 1174.66, m_rate);
    for (const double hertz : {500.0, 800.0, 1600.0, 1900.0, 3000.0, 5000.0}) {
        EXPECT_LT(strength(stretch, hertz, m_rate), 0.02 * note) << hertz;
    }
}

TEST_P(AtUsualRates, HeroRisesUpAChord) {
    const std::vector<float> hero = samples(AlertSound::hero);
    const double notes[] = {392.00, 523.25, 659.26, 783.99};
    for (std::size_t step = 0; step < std::size(notes); ++step) {
        const double start = 0.13 * static_cast<double>(step) + 0.01;
        EXPECT_NEAR(pitchAt(hero, m_rate, start, 0.11), notes[step], 0.02 * notes[step]) << step;
    }
    EXPECT_NEAR(pitchAt(hero, m_rate, 0.8, 0.3), 783.99, 10);
}

TEST_P(AtUsualRates, SubmarineSinks) {
    const std::vector<float> submarine = samples(AlertSound::submarine);
    double before = 450;
    for (const double start : {0.1, 0.4, 0.7, 1.0}) {
        const double pitch = pitchAt(submarine, m_rate, start, 0.15);
        EXPECT_LT(pitch, 0.91 * before) << start;
        before = pitch;
    }
    EXPECT_GT(before, 165);
    EXPECT_LT(before, 250);
}

INSTANTIATE_TEST_SUITE_P(AlertSounds, AtUsualRates, ::testing::Values(44100.0, 48000.0, 31987.5));

TEST(AlertSounds, AreFoundByTheirNames) {
    EXPECT_EQ(AlertSounds::named("Glass"), AlertSound::glass);
    EXPECT_EQ(AlertSounds::named("Ping"), AlertSound::ping);
    EXPECT_EQ(AlertSounds::named("Hero"), AlertSound::hero);
    EXPECT_EQ(AlertSounds::named("Submarine"), AlertSound::submarine);
}

TEST(AlertSounds, NoOtherNameIsOne) {
    for (const std::string& name :
         {std::string(), std::string("None"), std::string("glass"), std::string("Glass "),
          std::string("Glass\0", 6), std::string("\xff\xfe"), std::string(1000000, 'G')}) {
        EXPECT_EQ(AlertSounds::named(name), std::nullopt);
    }
}

TEST(AlertSounds, NoRateBeyondReasonIsRendered) {
    for (const double rate : {0.0, -48000.0, 7999.0, 384001.0, 1e300, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_TRUE(AlertSounds::samples(AlertSound::glass, rate).empty()) << rate;
    }
}

TEST(AlertSounds, TonesThatARateCannotCarryAreLeftOut) {
    // Folded back at half of 8000, the glass's second mode above the limit would lie at 1709 Hz.
    const std::vector<float> samples = AlertSounds::samples(AlertSound::glass, 8000);
    const std::span<const float> tap = std::span(samples).first(800);
    EXPECT_LT(strength(tap, 8000 - 1480 * 4.25, 8000), 0.02 * strength(tap, 1480, 8000));
}

} // namespace
} // namespace veslora
