// SPDX-License-Identifier: MIT
#include "bench/inside/BeatRecord.h"

#include <algorithm>
#include <cstdlib>

namespace veslora::bench {

namespace {

constexpr std::int64_t samplesInMinute = std::int64_t{48000} * 60;

} // namespace

void BeatPlan::change(std::size_t queued, int bpm) {
    const std::int64_t beat = queued == 0 ? 0 : static_cast<std::int64_t>(queued) - 1;
    const std::int64_t time = timeOf(beat);
    std::erase_if(m_segments, [beat](const Segment& segment) { return segment.beat >= beat; });
    m_segments.push_back({beat, time, bpm});
}

std::int64_t BeatPlan::timeOf(std::int64_t beat) const {
    const auto segment = std::ranges::find_if(m_segments.rbegin(), m_segments.rend(),
                                              [beat](const Segment& each) { return each.beat <= beat; });
    const std::int64_t beats = beat - segment->beat;
    // Rounded to the nearest whole sample.
    return segment->time + (2 * samplesInMinute * beats + segment->bpm) / (std::int64_t{2} * segment->bpm);
}

Comparison compare(const BeatPlan& plan, const std::vector<std::int64_t>& onsets, std::int64_t heardUntil) {
    Comparison result;
    std::int64_t beat = 0;
    for (const std::int64_t onset : onsets) {
        const std::int64_t time = onset - onsets.front() + plan.timeOf(0);
        // The nearest beat; those that were passed over were not heard.
        const std::int64_t expected = beat;
        while (plan.timeOf(beat + 1) - time <= time - plan.timeOf(beat)) {
            ++beat;
        }
        result.missing += static_cast<int>(beat - expected);
        result.worst = std::max(result.worst, std::abs(time - plan.timeOf(beat)));
        ++result.heard;
        ++beat;
    }
    constexpr std::int64_t margin = 4800;
    for (; plan.timeOf(beat) <= heardUntil - margin; ++beat) {
        ++result.missing;
    }
    return result;
}

} // namespace veslora::bench
