// SPDX-License-Identifier: MIT
// Records what a sound server plays to one of its sinks, bit for bit, and when it came. A thread of its own
// reads what parec hands over: nothing that the harness does meanwhile delays it.
#pragma once

#include "bench/Recording.h"
#include "tests/VesloraLinux/Support/Program.h"

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace veslora::bench {

class Capture {
  public:
    /// Returns once something has come. The server renders 20 milliseconds at a time as long as this is
    /// there. A pipe is made in `folder`.
    Capture(const std::string& folder, const std::string& server, const std::string& sink);
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture();

    /// Everything so far.
    [[nodiscard]] Recording recording() const;

  private:
    void read();
    void take();

    const std::string m_path;
    const int m_pipe;
    mutable std::mutex m_mutex;
    std::vector<char> m_bytes;
    std::vector<Arrival> m_arrivals;
    std::atomic<bool> m_isOver = false;
    testing::Program m_program;
    std::thread m_thread;
};

} // namespace veslora::bench
