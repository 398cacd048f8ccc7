// SPDX-License-Identifier: MIT
#include "bench/Capture.h"

#include "bench/Clock.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace veslora::bench {

namespace {

/// Also held open for writing, so that it never seems to have ended.
int makePipe(const std::string& path) {
    unlink(path.c_str());
    const int pipe = mkfifo(path.c_str(), S_IRUSR | S_IWUSR) == 0
                         ? open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC)
                         : -1;
    if (pipe < 0) {
        throw std::runtime_error("no pipe for the recording");
    }
    return pipe;
}

} // namespace

Capture::Capture(const std::string& folder, const std::string& server, const std::string& sink)
    : m_path(folder + "/capture-of-" + sink), m_pipe(makePipe(m_path)),
      m_program({"parec", "--server=" + server, "--device=" + sink + ".monitor", "--raw",
                 "--format=float32le", "--rate=" + std::to_string(Recording::sampleRate), "--channels=1",
                 "--latency-msec=20", m_path}),
      m_thread([this] { read(); }) {
    try {
        waitUntil("the recording", [this] { return !recording().arrivals.empty(); });
    } catch (...) {
        m_isOver = true;
        m_thread.join();
        throw;
    }
}

Capture::~Capture() {
    m_isOver = true;
    m_thread.join();
    close(m_pipe);
}

Recording Capture::recording() const {
    const std::scoped_lock lock(m_mutex);
    Recording result;
    result.samples.resize(m_bytes.size() / sizeof(float));
    std::memcpy(result.samples.data(), m_bytes.data(), result.samples.size() * sizeof(float));
    result.arrivals = m_arrivals;
    return result;
}

void Capture::read() {
    constexpr int lookMilliseconds = 50;
    pollfd ready{m_pipe, POLLIN, 0};
    while (!m_isOver) {
        if (poll(&ready, 1, lookMilliseconds) > 0) {
            take();
        }
    }
}

void Capture::take() {
    std::array<char, 65536> bytes{};
    const ssize_t size = ::read(m_pipe, bytes.data(), bytes.size());
    // Afterwards: what comes between a look at the clock and the reading would seem to have come too early.
    const double now = monotonicNow();
    if (size > 0) {
        const std::scoped_lock lock(m_mutex);
        m_bytes.insert(m_bytes.end(), bytes.data(), bytes.data() + size);
        m_arrivals.push_back({now, static_cast<std::int64_t>(m_bytes.size() / sizeof(float))});
    }
}

} // namespace veslora::bench
