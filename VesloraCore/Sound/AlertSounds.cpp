// SPDX-License-Identifier: MIT
#include "VesloraCore/Sound/AlertSounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <utility>

namespace veslora {
namespace {

constexpr double lowestRate = 8000;
constexpr double highestRate = 384000;
/// The share of the rate up to which a tone is rendered; at half the rate it would fold back as another one.
constexpr double carriedShare = 0.45;

/// One sine of a sound.
struct Tone {
    double start = 0;  ///< seconds
    double length = 0; ///< seconds
    double hertz = 0;
    double level = 1;
    double attack = 0.002; ///< seconds in which it swells
    double decay = 1;      ///< seconds in which it falls to 37 %
    double release = 0.03; ///< seconds at its end in which it fades away
    double lastHertz = hertz;
};

/// From 0 to 1 without an edge, as `share` does.
double swell(double share) {
    return share >= 1 ? 1 : (1 - std::cos(std::numbers::pi * std::max(share, 0.0))) / 2;
}

/// A struck glass rings in modes that rise with about the square of their number. It is never quite round, so
/// that each of them beats.
std::vector<Tone> glass() {
    constexpr double pitch = 1479.98;
    constexpr double length = 1.3;
    constexpr double split = 1.0021;
    struct Mode {
        double ratio, level, decay;
    };
    std::vector<Tone> tones;
    for (const Mode& mode : {Mode{1, 1, 0.30}, Mode{2.32, 0.45, 0.17}, Mode{4.25, 0.22, 0.085},
                             Mode{6.63, 0.12, 0.04}, Mode{9.38, 0.08, 0.012}}) {
        for (const double detune : {1.0, split}) {
            tones.push_back({.length = length,
                             .hertz = pitch * mode.ratio * detune,
                             .level = detune == 1 ? mode.level : mode.level * 0.4,
                             .attack = 0.0015,
                             .decay = mode.decay,
                             .release = 0.2});
        }
    }
    return tones;
}

std::vector<Tone> ping() {
    constexpr double pitch = 1174.66;
    constexpr double length = 0.9;
    return {
        {.length = length, .hertz = pitch, .attack = 0.004, .decay = 0.18, .release = 0.2},
        {.length = length, .hertz = 2 * pitch, .level = 0.16, .attack = 0.003, .decay = 0.09, .release = 0.2},
        {.length = length,
         .hertz = 3 * pitch,
         .level = 0.05,
         .attack = 0.002,
         .decay = 0.04,
         .release = 0.2}};
}

/// A note as of brass: its overtones come a little later than its pitch, and go sooner.
void addBrass(std::vector<Tone>& tones, double start, double length, double pitch, double level) {
    for (int overtone = 1; overtone <= 6; ++overtone) {
        tones.push_back({.start = start,
                         .length = length,
                         .hertz = pitch * overtone,
                         .level = level / std::pow(overtone, 1.4),
                         .attack = 0.010 + 0.004 * overtone,
                         .decay = 1.0 / (0.6 + 0.7 * overtone),
                         .release = std::min(0.35, length / 2)});
    }
}

/// Three steps up a chord; its lower notes return under the last one, which is held.
std::vector<Tone> hero() {
    constexpr double g4 = 392.00;
    constexpr double c5 = 523.25;
    constexpr double e5 = 659.26;
    constexpr double g5 = 783.99;
    constexpr double step = 0.13;
    constexpr double held = 1.0;
    std::vector<Tone> tones;
    addBrass(tones, 0, step, g4, 0.8);
    addBrass(tones, step, step, c5, 0.85);
    addBrass(tones, 2 * step, step, e5, 0.9);
    addBrass(tones, 3 * step, held, g5, 1);
    addBrass(tones, 3 * step, held, e5, 0.3);
    addBrass(tones, 3 * step, held, c5, 0.35);
    return tones;
}

std::vector<Tone> submarine() {
    constexpr double first = 440;
    constexpr double last = 165;
    constexpr double length = 1.5;
    std::vector<Tone> tones;
    for (const auto& [ratio, level] : {std::pair{1.0, 1.0}, {1.008, 0.5}, {2.0, 0.2}, {3.0, 0.07}}) {
        tones.push_back({.length = length,
                         .hertz = first * ratio,
                         .level = level,
                         .attack = 0.05,
                         .decay = 0.8,
                         .release = 0.5,
                         .lastHertz = last * ratio});
    }
    return tones;
}

std::vector<Tone> tonesOf(AlertSound sound) {
    switch (sound) {
    case AlertSound::glass:
        return glass();
    case AlertSound::ping:
        return ping();
    case AlertSound::hero:
        return hero();
    case AlertSound::submarine:
        return submarine();
    }
    return {};
}

/// Adds a tone, whose pitch moves evenly from its first to its last.
void add(const Tone& tone, double sampleRate, std::vector<float>& sum) {
    using Turn = std::complex<double>;
    const double perSample = 2 * std::numbers::pi / sampleRate;
    const auto first = static_cast<std::size_t>(std::ceil(tone.start * sampleRate));
    const auto end = std::min(sum.size(), static_cast<std::size_t>((tone.start + tone.length) * sampleRate));
    // OPTIMIZATION: a sine and a power for every sample took 19 ms for the longest sound; turning and
    // shrinking a pointer takes 8.
    const double bend = perSample * (tone.lastHertz - tone.hertz) / (tone.length * sampleRate);
    const Turn twist = std::polar(1.0, bend);
    Turn step = std::polar(std::exp(-1 / (tone.decay * sampleRate)), perSample * tone.hertz);
    Turn pointer = tone.level;
    for (std::size_t index = first; index < end; ++index) {
        const double time = static_cast<double>(index) / sampleRate - tone.start;
        const double envelope = swell(time / tone.attack) * swell((tone.length - time) / tone.release);
        sum[index] += static_cast<float>(envelope * pointer.imag());
        pointer *= step;
        step *= twist;
    }
}

/// Makes it as loud as `peak` allows.
void normalize(std::vector<float>& samples) {
    float loudest = 0;
    for (const float sample : samples) {
        loudest = std::max(loudest, std::abs(sample));
    }
    const float gain = loudest > 0 ? AlertSounds::peak / loudest : 0;
    for (float& sample : samples) {
        sample = std::clamp(gain * sample, -AlertSounds::peak, AlertSounds::peak);
    }
}

} // namespace

std::optional<AlertSound> AlertSounds::named(std::string_view name) {
    constexpr std::array<std::pair<std::string_view, AlertSound>, 4> sounds{
        {{"Glass", AlertSound::glass},
         {"Ping", AlertSound::ping},
         {"Hero", AlertSound::hero},
         {"Submarine", AlertSound::submarine}}};
    const auto found = std::ranges::find(sounds, name, &std::pair<std::string_view, AlertSound>::first);
    return found == sounds.end() ? std::nullopt : std::optional(found->second);
}

std::vector<float> AlertSounds::samples(AlertSound sound, double sampleRate) {
    if (!(sampleRate >= lowestRate && sampleRate <= highestRate)) {
        return {};
    }
    const std::vector<Tone> tones = tonesOf(sound);
    double seconds = 0;
    for (const Tone& tone : tones) {
        seconds = std::max(seconds, tone.start + tone.length);
    }
    // One more sample than the tones have, which is the 0 at the end.
    std::vector<float> sum(static_cast<std::size_t>(seconds * sampleRate) + 1);
    for (const Tone& tone : tones) {
        if (std::max(tone.hertz, tone.lastHertz) < carriedShare * sampleRate) {
            add(tone, sampleRate, sum);
        }
    }
    normalize(sum);
    return sum;
}

} // namespace veslora
