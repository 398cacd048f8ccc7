// SPDX-License-Identifier: MIT
// Running an event loop until something has happened, and no longer than a test can bear.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace veslora::testing {

/// Generous, since it only costs time when a test fails: a loaded machine must not look like a defect.
inline constexpr int patienceMilliseconds = 20000;

/// Handles events until `condition` holds; tells whether it does.
inline bool waitUntil(const std::function<bool()>& condition, int milliseconds = patienceMilliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    // Wakes the loop, so that conditions which no event announces are looked at too.
    QTimer poll;
    poll.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Handles events for a given time: only to show that something does not happen.
inline void handleEventsFor(int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    waitUntil([&deadline] { return deadline.hasExpired(); }, milliseconds + patienceMilliseconds);
}

/// An application object without a display.
class CoreApplication {
  private:
    int m_count = 1;
    char m_name[8] = "veslora";
    char* m_arguments[2] = {m_name, nullptr};
    QCoreApplication m_application{m_count, m_arguments};
};

} // namespace veslora::testing
