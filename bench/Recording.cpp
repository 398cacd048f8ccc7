// SPDX-License-Identifier: MIT
#include "bench/Recording.h"

#include "bench/Report.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace veslora::bench {

namespace {

double secondsOf(std::int64_t samples) {
    return static_cast<double>(samples) / Recording::sampleRate;
}

/// The length of the usual block. It may come in several pieces, though all at once.
double blockOf(const std::vector<Arrival>& arrivals) {
    constexpr double sameMoment = 0.002;
    std::vector<double> blocks;
    std::int64_t begin = arrivals.front().until;
    for (std::size_t index = 1; index < arrivals.size(); ++index) {
        const bool isWhole =
            index + 1 == arrivals.size() || arrivals[index + 1].time - arrivals[index].time > sameMoment;
        if (isWhole) {
            blocks.push_back(secondsOf(arrivals[index].until - begin));
            begin = arrivals[index].until;
        }
    }
    return median(blocks);
}

} // namespace

std::vector<std::int64_t> onsetsIn(const std::vector<float>& recording) {
    constexpr std::int64_t silence = 480;
    std::vector<std::int64_t> onsets;
    std::int64_t lastSound = -silence;
    for (std::size_t index = 0; index < recording.size(); ++index) {
        if (std::abs(recording[index]) > 1e-6F) {
            const auto sample = static_cast<std::int64_t>(index);
            if (sample - lastSound > silence) {
                onsets.push_back(sample);
            }
            lastSound = sample;
        }
    }
    return onsets;
}

HearingClock::HearingClock(std::vector<Arrival> arrivals) : m_arrivals(std::move(arrivals)) {
    constexpr std::size_t fewest = 10;
    if (m_arrivals.size() < fewest) {
        throw std::runtime_error("too little was recorded to tell when it was heard");
    }
    m_block = blockOf(m_arrivals);
}

double HearingClock::timeOf(std::int64_t sample) const {
    // Wide enough to hold an arrival that nothing delayed; the server's clock and ours hardly part in it.
    constexpr std::int64_t neighbourhood = Recording::sampleRate;
    const auto first = std::ranges::lower_bound(m_arrivals, sample - neighbourhood, {}, &Arrival::until);
    const auto last = std::ranges::upper_bound(m_arrivals, sample + neighbourhood, {}, &Arrival::until);
    double earliest = std::numeric_limits<double>::infinity();
    for (auto arrival = first; arrival < last; ++arrival) {
        earliest = std::min(earliest, arrival->time - secondsOf(arrival->until));
    }
    return earliest + secondsOf(sample) + m_block;
}

} // namespace veslora::bench
