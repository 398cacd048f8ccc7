// SPDX-License-Identifier: MIT
// All motions of one kind together: how evenly they run, and what they cost.
#pragma once

#include "bench/Island.h"

#include <functional>

namespace veslora::bench {

class Motion {
  public:
    /// Sets one off and waits until it has come to rest.
    void add(Island& island, const std::function<void()>& begin);

    [[nodiscard]] double framesPerSecond() const { return m_frames / m_drawnTime; }
    /// Percent of a core, while they run.
    [[nodiscard]] double processor() const { return 100 * m_processor / m_time; }

  private:
    double m_time = 0;      ///< seconds from what set it off to the last frame
    double m_processor = 0; ///< seconds
    double m_drawnTime = 0; ///< seconds from each motion's first frame to its last
    double m_frames = 0;    ///< beside the first of each motion
};

} // namespace veslora::bench
