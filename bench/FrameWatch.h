// SPDX-License-Identifier: MIT
// Counts the frames that another program draws into one of its windows, by what the server says was damaged.
#pragma once

#include "bench/Display.h"

#include <xcb/damage.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace veslora::bench {

struct Frame {
    double time = 0;           ///< the server's, in seconds, at which it began to arrive
    std::vector<Area> damaged; ///< in the window; they may overlap

    /// Pixels, those that were damaged more than once counted as often.
    [[nodiscard]] double area() const;
};

class FrameWatch {
  public:
    /// Counts from now on. Throws where the server has no damage extension.
    explicit FrameWatch(xcb_window_t window);

    /// All since the watch began.
    [[nodiscard]] const std::vector<Frame>& frames();
    [[nodiscard]] std::vector<Frame> framesSince(std::size_t index);
    [[nodiscard]] std::size_t count() { return frames().size(); }

    /// Waits until no frame has come for `seconds`; at most as long as `waitUntil` does.
    void waitForRest(double seconds = 0.1);

  private:
    struct Close {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };
    void take(const xcb_damage_notify_event_t& damage);

    std::unique_ptr<xcb_connection_t, Close> m_connection;
    std::uint8_t m_event = 0;
    std::uint32_t m_last = 0; ///< when the latest damage came
    std::vector<Frame> m_frames;
};

} // namespace veslora::bench
