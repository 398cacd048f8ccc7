// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/MetronomeSounds.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>
#include <utility>

namespace veslora {
namespace {

constexpr double attack = 48;       ///< samples
constexpr double release = 96;      ///< samples
constexpr double beepRelease = 240; ///< samples

double sine(double hertz, double time) {
    return std::sin(2 * std::numbers::pi * hertz * time);
}

double decay(double time, double seconds) {
    return std::exp(-time / seconds);
}

/// Noise without its low half, the same on every run.
class HighNoise {
  public:
    explicit HighNoise(std::uint32_t seed) : m_state(seed) {}

    float next() {
        m_state = m_state * 1664525U + 1013904223U;
        const float noise = 2 * (static_cast<float>(m_state) * 0x1p-32F) - 1;
        return (noise - std::exchange(m_previous, noise)) * 0.5F;
    }

  private:
    std::uint32_t m_state;
    float m_previous = 0;
};

/// Without an edge at either end, which would be heard as a click of its own.
double envelope(std::size_t index, std::size_t length, double releaseLength) {
    const double in = static_cast<double>(index) / attack;
    const double out = static_cast<double>(length - 1 - index) / releaseLength;
    return std::max(0.0, std::min({in, 1.0, out}));
}

/// `raw` takes the time in seconds and is asked for one sample after the other.
template <class Raw>
std::vector<float> render(std::size_t length, double releaseLength, Raw raw) {
    std::vector<float> samples(length);
    for (std::size_t index = 0; index < length; ++index) {
        const double value = raw(static_cast<double>(index) / MetronomeSounds::sampleRate);
        samples[index] =
            static_cast<float>(envelope(index, length, releaseLength) * value) * MetronomeSounds::peak;
    }
    return samples;
}

std::vector<float> click(bool accent) {
    const double pitch = accent ? 3000 : 2000;
    return render(720, release, [pitch](double time) { return sine(pitch, time) * decay(time, 0.003); });
}

/// A short block of wood: its octave sounds with it at half the level.
std::vector<float> woodblock(bool accent) {
    const double pitch = accent ? 1600 : 1200;
    return render(1920, release, [pitch](double time) {
        return decay(time, 0.008) * (sine(pitch, time) + 0.5 * sine(2 * pitch, time)) / 1.5;
    });
}

/// The one sound whose accent is no higher: it is louder and longer, as if the cymbals were left open.
std::vector<float> hihat(bool accent) {
    HighNoise noise(accent ? 7 : 3);
    const double level = accent ? 1.0 : 0.5;
    const double seconds = accent ? 0.012 : 0.008;
    return render(accent ? 2160 : 1440, release, [&noise, level, seconds](double time) {
        return level * decay(time, seconds) * static_cast<double>(noise.next());
    });
}

std::vector<float> beep(bool accent) {
    const double pitch = accent ? 1320 : 880;
    return render(2880, beepRelease, [pitch](double time) { return sine(pitch, time); });
}

} // namespace

std::optional<std::vector<float>> MetronomeSounds::samples(MetronomeSound sound, bool accent) {
    switch (sound) {
    case MetronomeSound::click:
        return click(accent);
    case MetronomeSound::woodblock:
        return woodblock(accent);
    case MetronomeSound::hihat:
        return hihat(accent);
    case MetronomeSound::beep:
        return beep(accent);
    case MetronomeSound::silent:
        break;
    }
    return std::nullopt;
}

} // namespace veslora
