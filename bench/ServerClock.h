// SPDX-License-Identifier: MIT
// The X server's clock, by which frames and events are stamped, beside the harness's own.
#pragma once

namespace veslora::bench {

/// Ties the two clocks by a number of requests, each of which the server stamps between its sending and the
/// arrival of its event: the server counts whole milliseconds, but no two requests meet it at the same place
/// of one, so that together they tell more than each of them.
class ServerClock {
  public:
    /// Asks the display that $DISPLAY names. Throws where the server's clock doesn't go as ours does.
    ServerClock();

    /// On the monotonic clock, the middle of the millisecond that the server calls `serverTime`; in seconds.
    [[nodiscard]] double monotonic(double serverTime) const { return serverTime + m_offset; }

  private:
    double m_offset = 0;
};

} // namespace veslora::bench
