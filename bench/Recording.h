// SPDX-License-Identifier: MIT
// What was captured of a sound server, at 48000 hertz in one channel, and when each sample was heard.
#pragma once

#include <cstdint>
#include <vector>

namespace veslora::bench {

/// A piece of a recording that came at once.
struct Arrival {
    double time = 0;        ///< on the monotonic clock, when it was there
    std::int64_t until = 0; ///< how many samples there were then
};

struct Recording {
    static constexpr int sampleRate = 48000;

    std::vector<float> samples;
    std::vector<Arrival> arrivals;
};

/// Where sounds begin that silence of at least a hundredth of a second comes before.
[[nodiscard]] std::vector<std::int64_t> onsetsIn(const std::vector<float>& recording);

/// When the samples of a recording were heard. A server renders a block in the moment in which the one before
/// it has been heard, and the recording gets it right then. So the end of what has arrived is heard one block
/// after its arrival. Arrivals come late, by what the machine has to do meanwhile, but never early: the
/// earliest of those around a sample tells when the sample's block was due. Nothing here depends on what a
/// server or a program says of latencies. What is left is the way of the samples from the server to the
/// harness, by which everything seems to be heard later than it was: less than a millisecond on an idle
/// machine.
class HearingClock {
  public:
    /// Throws where there are too few arrivals to tell.
    explicit HearingClock(std::vector<Arrival> arrivals);

    /// On the monotonic clock, in seconds.
    [[nodiscard]] double timeOf(std::int64_t sample) const;
    /// Seconds of sound that the server renders at a time.
    [[nodiscard]] double block() const { return m_block; }

  private:
    std::vector<Arrival> m_arrivals;
    double m_block = 0;
};

} // namespace veslora::bench
