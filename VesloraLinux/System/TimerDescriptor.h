// SPDX-License-Identifier: MIT
// One timer of the kernel's, told of by the event loop of the thread that made it.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"

#include <QSocketNotifier>

#include <ctime>
#include <functional>
#include <memory>
#include <optional>

namespace veslora {

class TimerDescriptor {
  public:
    /// `fired` is called whenever the armed moment is reached; then the timer is no longer armed.
    TimerDescriptor(clockid_t clock, std::function<void()> fired);

    /// Arms for `moment`, in seconds on the timer's clock; one that has passed fires at the next turn of the
    /// loop. Absent disarms, so that the kernel has no reason to wake the program.
    void arm(std::optional<double> moment);

    /// Arms for a moment that never comes, to be told when the clock is set. Only for CLOCK_REALTIME.
    void armForClockChange();

    [[nodiscard]] int descriptor() const { return m_descriptor.value(); }

  private:
    void drain();

    FileDescriptor m_descriptor;
    std::optional<double> m_moment;
    std::function<void()> m_fired;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// What `clock` shows, in seconds.
[[nodiscard]] double readClock(clockid_t clock);

} // namespace veslora
