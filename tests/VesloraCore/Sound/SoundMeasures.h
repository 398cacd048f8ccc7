// SPDX-License-Identifier: MIT
// What an ear would tell of a sound, as numbers.
#pragma once

#include <algorithm>
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

} // namespace veslora::testing
