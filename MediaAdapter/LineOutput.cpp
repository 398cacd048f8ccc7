// SPDX-License-Identifier: MIT
#include "MediaAdapter/LineOutput.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

namespace veslora {
namespace {

bool takesMore(int descriptor) {
    pollfd state{descriptor, POLLOUT, 0};
    return poll(&state, 1, 0) == 1;
}

} // namespace

LineOutput::LineOutput(int descriptor)
    : m_descriptor(descriptor), m_writable(descriptor, QSocketNotifier::Write),
      m_broken(descriptor, QSocketNotifier::Exception) {
    m_writable.setEnabled(false);
    connect(&m_writable, &QSocketNotifier::activated, this, &LineOutput::flush);
    // A pipe without a reader has an error pending.
    connect(&m_broken, &QSocketNotifier::activated, this, [this] {
        m_broken.setEnabled(false);
        emit closed();
    });
}

void LineOutput::write(std::string line) {
    m_waiting = std::move(line);
    flush();
}

/// A pipe that says it is ready takes this much without waiting.
void LineOutput::flush() {
    std::size_t written = 0;
    while (written < m_waiting.size() && takesMore(m_descriptor)) {
        const std::size_t portion = std::min<std::size_t>(m_waiting.size() - written, PIPE_BUF);
        const ssize_t taken = ::write(m_descriptor, m_waiting.data() + written, portion);
        if (taken < 0 && errno != EINTR && errno != EAGAIN) {
            m_waiting.clear();
            m_writable.setEnabled(false);
            emit closed();
            return;
        }
        written += taken > 0 ? static_cast<std::size_t>(taken) : 0;
        if (taken < 0 && errno == EAGAIN) {
            break;
        }
    }
    m_waiting.erase(0, written);
    const bool wasWaiting = m_writable.isEnabled();
    m_writable.setEnabled(isBusy());
    if (wasWaiting && !isBusy()) {
        m_waiting.shrink_to_fit();
        emit drained();
    }
}

} // namespace veslora
