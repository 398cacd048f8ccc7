// SPDX-License-Identifier: MIT
// What an ear would tell of a sound, as numbers.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

namespace veslora::testing {

/// How strong one frequency is in a stretch, by Goertzel's recurrence under a Hann window.
inline double strength(std::span<const float> stretch, double hertz, double sampleRate) {
    const double coefficient = 2 * std::cos(2 * std::numbers::pi * hertz / sampleRate);
    const double turn = 2 * std::numbers::pi / static_cast<double>(stretch.size());
    double last = 0;
    double beforeLast = 0;
    for (std::size_t index = 0; index < stretch.size(); ++index) {
        const double window = 0.5 - 0.5 * std::cos(turn * static_cast<double>(index));
        const double next = window * stretch[index] + coefficient * last - beforeLast;
        beforeLast = std::exchange(last, next);
    }
    return std::sqrt(std::max(0.0, last * last + beforeLast * beforeLast - coefficient * last * beforeLast));
}

/// The strongest frequency between 100 and 6000 Hz of the stretch that starts at `start`, in seconds.
inline double pitchAt(const std::vector<float>& samples, double sampleRate, double start, double length) {
    const std::span<const float> stretch = std::span(samples).subspan(
        static_cast<std::size_t>(start * sampleRate), static_cast<std::size_t>(length * sampleRate));
    double best = 0;
    double bestStrength = 0;
    for (double hertz = 100; hertz <= 6000; hertz *= 1.006) {
        const double here = strength(stretch, hertz, sampleRate);
        if (here > bestStrength) {
            best = hertz;
            bestStrength = here;
        }
    }
    return best;
}

inline double energy(std::span<const float> stretch) {
    return std::accumulate(stretch.begin(), stretch.end(), 0.0, [](double sum, float sample) {
        return sum + static_cast<double>(sample) * static_cast<double>(sample);
    });
}

/// How long it takes from the first sample to the first that reaches nine tenths of the loudest, in seconds.
inline double riseTime(std::span<const float> samples, double sampleRate) {
    const auto magnitude = [](float sample) { return std::abs(sample); };
    const float loudest = std::ranges::max(samples, {}, magnitude);
    const auto reached = std::ranges::find_if(
        samples, [&](float sample) { return magnitude(sample) >= 0.9F * std::abs(loudest); });
    return static_cast<double>(reached - samples.begin()) / sampleRate;
}

/// The mean frequency of its energy, in hertz: what makes a sound bright or dull.
inline double centroid(std::span<const float> samples, double sampleRate) {
    double energies = 0;
    double sum = 0;
    for (double hertz = 50; hertz < sampleRate / 2; hertz += 50) {
        const double here = strength(samples, hertz, sampleRate);
        energies += here * here;
        sum += hertz * here * here;
    }
    return sum / energies;
}

/// A filter of second order, by its coefficients.
class Biquad {
  public:
    Biquad(std::array<double, 3> forward, std::array<double, 2> back) : m_forward(forward), m_back(back) {}

    double next(double input) {
        const double output = m_forward[0] * input + m_first;
        m_first = m_forward[1] * input - m_back[0] * output + m_second;
        m_second = m_forward[2] * input - m_back[1] * output;
        return output;
    }

  private:
    std::array<double, 3> m_forward;
    std::array<double, 2> m_back;
    double m_first = 0;
    double m_second = 0;
};

/// How loud a short sound at 48000 hertz is among silence, in LUFS: weighted as ITU-R BS.1770 weights a
/// channel, over its window of 0.4 seconds.
inline double loudness(std::span<const float> samples) {
    constexpr std::size_t window = 19200;
    Biquad head({1.53512485958697, -2.69169618940638, 1.19839281085285},
                {-1.69065929318241, 0.73248077421585});
    Biquad highPass({1, -2, 1}, {-1.99004745483398, 0.99007225036621});
    double sum = 0;
    for (std::size_t index = 0; index < window; ++index) {
        const double sample = index < samples.size() ? static_cast<double>(samples[index]) : 0;
        const double weighted = highPass.next(head.next(sample));
        sum += weighted * weighted;
    }
    return -0.691 + 10 * std::log10(sum / static_cast<double>(window));
}

} // namespace veslora::testing
