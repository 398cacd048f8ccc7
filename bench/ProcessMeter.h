// SPDX-License-Identifier: MIT
// What the kernel counts about another process of our own user.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <map>

namespace veslora::bench {

/// In MB of 1024 * 1024 bytes.
struct Memory {
    /// Shared pages count by their share, but those of the toolkit count whole: whether another program of
    /// the same toolkit happens to run must not change the figure.
    double pss = 0;
    double rss = 0; ///< shared pages count whole
    /// What nobody else maps and no file holds, and what is shared with the display. Unlike `pss` it does not
    /// depend on which other programs use the same libraries at this moment.
    double own = 0;
};

class ProcessMeter {
  public:
    explicit ProcessMeter(pid_t process);

    /// Seconds of processor time of all threads, those that ended included.
    [[nodiscard]] double processorTime() const;
    /// How often each of its threads has gone to sleep by itself, which it has to wake up from, by the
    /// thread's id.
    [[nodiscard]] std::map<pid_t, std::uint64_t> sleeps() const;
    /// Lets so many seconds pass and tells how often any thread woke up in them. Looks every second, so that
    /// a thread that ends meanwhile takes no more along than that.
    [[nodiscard]] std::uint64_t wakeUpsIn(double seconds) const;
    /// What it caused to be written to a disk; files in memory don't count.
    [[nodiscard]] std::uint64_t bytesWritten() const;
    /// What it has read of files, pipes and sockets since it started, from wherever it came.
    [[nodiscard]] std::uint64_t bytesRead() const;
    [[nodiscard]] Memory memory() const;

  private:
    pid_t m_process;
    clockid_t m_clock{};
};

} // namespace veslora::bench
