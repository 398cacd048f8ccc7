// SPDX-License-Identifier: MIT
// The metronome's sounds, by their formula and as they are heard.
#include "VesloraCore/Metronome/MetronomeSounds.h"
#include "tests/VesloraCore/Sound/SoundMeasures.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <iostream>
#include <string>
#include <tuple>

namespace veslora {
namespace {

using testing::strength;

constexpr double rate = MetronomeSounds::sampleRate;
constexpr MetronomeSound audible[] = {MetronomeSound::click, MetronomeSound::woodblock, MetronomeSound::hihat,
                                      MetronomeSound::beep};

std::vector<float> samplesOf(MetronomeSound sound, bool accent) {
    return MetronomeSounds::samples(sound, accent).value();
}

/// Calls `check` with every sound, as a usual beat and as an accent.
void forEach(const std::function<void(MetronomeSound, bool, const std::vector<float>&)>& check) {
    for (const MetronomeSound sound : audible) {
        for (const bool accent : {false, true}) {
            SCOPED_TRACE(std::string(rawValue(sound)) + (accent ? ", accent" : ""));
            check(sound, accent, samplesOf(sound, accent));
        }
    }
}

/// The furthest that two samples in a row are apart.
float steepest(const std::vector<float>& samples) {
    float most = 0;
    for (std::size_t index = 1; index < samples.size(); ++index) {
        most = std::max(most, std::abs(samples[index] - samples[index - 1]));
    }
    return most;
}

TEST(MetronomeSounds, SilentHasNone) {
    EXPECT_EQ(MetronomeSounds::samples(MetronomeSound::silent, false), std::nullopt);
    EXPECT_EQ(MetronomeSounds::samples(MetronomeSound::silent, true), std::nullopt);
}

TEST(MetronomeSounds, FollowTheirFormulas) {
    // Samples 20, 53, 101 and 655, worked out apart from the program.
    struct Case {
        MetronomeSound sound;
        bool accent;
        std::size_t length;
        std::array<float, 4> samples;
    };
    const Case cases[] = {
        {MetronomeSound::click, false, 720, {-0.251241F, 0.534797F, 0.383199F, 0.005451F}},
        {MetronomeSound::click, true, 720, {0.290108F, 0.511518F, 0.366519F, -0.002160F}},
        {MetronomeSound::woodblock, false, 1920, {0.000000F, 0.226015F, -0.000790F, 0.020063F}},
        {MetronomeSound::woodblock, true, 1920, {-0.091342F, -0.510327F, 0.100809F, -0.125844F}},
        {MetronomeSound::hihat, false, 1440, {0.046370F, 0.258597F, -0.085169F, 0.024811F}},
        {MetronomeSound::hihat, true, 2160, {-0.157656F, 0.486666F, 0.191632F, 0.145992F}},
        {MetronomeSound::beep, false, 2880, {0.247715F, -0.141668F, -0.642254F, 0.041869F}},
        {MetronomeSound::beep, true, 2880, {-0.103006F, 0.211098F, -0.788087F, 0.062767F}},
    };
    for (const Case& expected : cases) {
        const std::vector<float> samples = samplesOf(expected.sound, expected.accent);
        SCOPED_TRACE(std::string(rawValue(expected.sound)) + (expected.accent ? ", accent" : ""));
        ASSERT_EQ(samples.size(), expected.length);
        EXPECT_NEAR(samples[20], expected.samples[0], 2e-6F);
        EXPECT_NEAR(samples[53], expected.samples[1], 2e-6F);
        EXPECT_NEAR(samples[101], expected.samples[2], 2e-6F);
        EXPECT_NEAR(samples[655], expected.samples[3], 2e-6F);
    }
}

TEST(MetronomeSounds, StartAndEndAtZero) {
    forEach([](MetronomeSound, bool, const std::vector<float>& samples) {
        EXPECT_EQ(samples.front(), 0);
        EXPECT_EQ(samples.back(), 0);
        EXPECT_LT(std::abs(samples[1]), 0.02F);
        EXPECT_LT(std::abs(samples[samples.size() - 2]), 0.01F);
    });
}

TEST(MetronomeSounds, AreNeverLouderThanTheyMay) {
    forEach([](MetronomeSound, bool, const std::vector<float>& samples) {
        for (const float sample : samples) {
            ASSERT_TRUE(std::abs(sample) <= 0.8F);
        }
    });
}

TEST(MetronomeSounds, AreTheSameEveryTime) {
    forEach([](MetronomeSound sound, bool accent, const std::vector<float>& samples) {
        EXPECT_EQ(samples, samplesOf(sound, accent));
    });
}

TEST(MetronomeSounds, NothingClicksWithin) {
    // What the fastest partial of each rises by at most from one sample to the next, at full level.
    const auto limit = [](double hertz) { return 0.8 * 2 * std::numbers::pi * hertz / rate + 0.8 / 48; };
    for (const bool accent : {false, true}) {
        EXPECT_LT(steepest(samplesOf(MetronomeSound::click, accent)), limit(accent ? 3000 : 2000));
        EXPECT_LT(steepest(samplesOf(MetronomeSound::woodblock, accent)), limit(accent ? 3200 : 2400));
        EXPECT_LT(steepest(samplesOf(MetronomeSound::beep, accent)), limit(accent ? 1320 : 880));
    }
}

TEST(MetronomeSounds, RiseAtOnce) {
    forEach([](MetronomeSound, bool, const std::vector<float>& samples) {
        EXPECT_LT(testing::riseTime(samples, rate), 0.003) << "a beat is heard when it begins";
    });
}

TEST(MetronomeSounds, HaveTheirPitches) {
    const std::tuple<MetronomeSound, bool, double> pitches[] = {
        {MetronomeSound::click, false, 2000},     {MetronomeSound::click, true, 3000},
        {MetronomeSound::woodblock, false, 1200}, {MetronomeSound::woodblock, true, 1600},
        {MetronomeSound::beep, false, 880},       {MetronomeSound::beep, true, 1320}};
    for (const auto& [sound, accent, hertz] : pitches) {
        const std::vector<float> samples = samplesOf(sound, accent);
        const double length = static_cast<double>(samples.size()) / rate;
        EXPECT_NEAR(testing::pitchAt(samples, rate, 0, length), hertz, 0.02 * hertz) << rawValue(sound);
    }
}

TEST(MetronomeSounds, HaveTheirPartials) {
    for (const bool accent : {false, true}) {
        const std::vector<float> beep = samplesOf(MetronomeSound::beep, accent);
        const double note = accent ? 1320 : 880;
        for (const double ratio : {0.5, 1.5, 2.0, 3.0, 4.0}) {
            EXPECT_LT(strength(beep, ratio * note, rate), 0.005 * strength(beep, note, rate)) << ratio;
        }
        const std::vector<float> wood = samplesOf(MetronomeSound::woodblock, accent);
        const double knock = accent ? 1600 : 1200;
        const double fundamental = strength(wood, knock, rate);
        EXPECT_NEAR(strength(wood, 2 * knock, rate) / fundamental, 0.5, 0.05)
            << "its octave at half the level";
        EXPECT_LT(strength(wood, 3 * knock, rate), 0.1 * fundamental);
    }
}

TEST(MetronomeSounds, TheHiHatHasNoPitchAndIsBright) {
    for (const bool accent : {false, true}) {
        const std::vector<float> hihat = samplesOf(MetronomeSound::hihat, accent);
        EXPECT_GT(testing::centroid(hihat, rate), 10000);
        double loudest = 0;
        double sum = 0;
        int count = 0;
        for (double hertz = 1000; hertz < 23000; hertz += 100) {
            const double here = strength(hihat, hertz, rate);
            loudest = std::max(loudest, here);
            sum += here;
            ++count;
        }
        EXPECT_LT(loudest, 4 * sum / count) << "no frequency stands out";
    }
}

/// What a listener can tell of a sound.
struct Heard {
    double loudness = 0; ///< LUFS
    double centroid = 0; ///< hertz
    double seconds = 0;  ///< until all but a hundredth of its energy has passed
};

Heard hear(MetronomeSound sound, bool accent) {
    const std::vector<float> samples = samplesOf(sound, accent);
    const double all = testing::energy(samples);
    std::size_t passed = 0;
    for (double sum = 0; sum < 0.99 * all; ++passed) {
        sum += static_cast<double>(samples[passed]) * static_cast<double>(samples[passed]);
    }
    const Heard heard{testing::loudness(samples), testing::centroid(samples, rate),
                      static_cast<double>(passed) / rate};
    std::cout << "[ measured ] " << rawValue(sound) << (accent ? ", accent: " : ": ") << heard.loudness
              << " LUFS, centroid " << heard.centroid << " Hz, " << 1000 * heard.seconds << " ms\n";
    return heard;
}

double larger(double left, double right) {
    return std::max(left / right, right / left);
}

TEST(MetronomeSounds, AnAccentIsToldFromABeat) {
    for (const MetronomeSound sound : audible) {
        const Heard beat = hear(sound, false);
        const Heard accent = hear(sound, true);
        if (sound == MetronomeSound::hihat) {
            EXPECT_GT(accent.loudness, beat.loudness + 6);
            EXPECT_GT(accent.seconds, 1.3 * beat.seconds);
        } else {
            // At least a major third higher, and hardly louder.
            EXPECT_GT(accent.centroid, 1.26 * beat.centroid) << rawValue(sound);
            EXPECT_LT(std::abs(accent.loudness - beat.loudness), 3) << rawValue(sound);
        }
    }
}

TEST(MetronomeSounds, OneIsToldFromAnother) {
    for (const bool accent : {false, true}) {
        for (std::size_t left = 0; left < std::size(audible); ++left) {
            for (std::size_t right = 0; right < left; ++right) {
                const Heard one = hear(audible[left], accent);
                const Heard other = hear(audible[right], accent);
                // An octave in brightness tells them apart alone; else two of three: a minor third in
                // brightness, twice the length, 3 dB.
                const double brightness = larger(one.centroid, other.centroid);
                const int differences = (brightness > 1.2 ? 1 : 0) + (brightness > 2 ? 1 : 0) +
                                        (larger(one.seconds, other.seconds) > 2 ? 1 : 0) +
                                        (std::abs(one.loudness - other.loudness) > 3 ? 1 : 0);
                EXPECT_GE(differences, 2) << rawValue(audible[left]) << ", " << rawValue(audible[right]);
            }
        }
    }
}

} // namespace
} // namespace veslora
