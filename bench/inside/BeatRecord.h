// SPDX-License-Identifier: MIT
// What a metronome should have played, counted apart from the program's own clock, and what was heard of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veslora::bench {

/// The samples of beats at 48000 hertz, by whole numbers alone.
class BeatPlan {
  public:
    BeatPlan(std::int64_t start, int bpm) : m_segments{{0, start, bpm}} {}

    /// From the last of `queued` beats on, they follow each other at the new tempo.
    void change(std::size_t queued, int bpm);
    [[nodiscard]] std::int64_t timeOf(std::int64_t beat) const;

  private:
    struct Segment {
        std::int64_t beat = 0;
        std::int64_t time = 0;
        int bpm = 0;
    };
    std::vector<Segment> m_segments;
};

struct Comparison {
    std::int64_t worst = 0; ///< samples by which an onset is beside its beat, as far as any is
    int heard = 0;
    int missing = 0; ///< beats that have none
};

/// The first onset counts as the first beat. Of the last beats, those are missed that lie a tenth of a second
/// and more before `heardUntil`.
[[nodiscard]] Comparison compare(const BeatPlan& plan, const std::vector<std::int64_t>& onsets,
                                 std::int64_t heardUntil);

} // namespace veslora::bench
