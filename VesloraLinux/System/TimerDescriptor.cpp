// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/TimerDescriptor.h"

#include "VesloraUI/Platform/Logs.h"

#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace veslora {
namespace {

timespec toTimespec(double seconds) {
    // Above this a double of seconds would not fit the kernel's own count of nanoseconds.
    constexpr double latest = 9e9;
    const double bounded = std::clamp(seconds, 0.0, latest);
    timespec time{};
    time.tv_sec = static_cast<time_t>(std::floor(bounded));
    time.tv_nsec = static_cast<long>((bounded - std::floor(bounded)) * 1e9);
    // All zero would mean disarmed.
    if (time.tv_sec == 0 && time.tv_nsec == 0) {
        time.tv_nsec = 1;
    }
    return time;
}

FileDescriptor makeTimer(clockid_t clock) {
    FileDescriptor timer(timerfd_create(clock, TFD_NONBLOCK | TFD_CLOEXEC));
    if (!timer) {
        qCWarning(Logs::system, "no timer can be had: %s", std::strerror(errno));
    }
    return timer;
}

} // namespace

double readClock(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

TimerDescriptor::TimerDescriptor(clockid_t clock, std::function<void()> fired)
    : m_descriptor(makeTimer(clock)), m_fired(std::move(fired)),
      m_notifier(std::make_unique<QSocketNotifier>(m_descriptor.value(), QSocketNotifier::Read)) {
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { drain(); });
}

void TimerDescriptor::arm(std::optional<double> moment) {
    if (moment == m_moment) {
        return;
    }
    m_moment = moment;
    itimerspec setting{};
    if (moment) {
        setting.it_value = toTimespec(*moment);
    }
    timerfd_settime(m_descriptor.value(), TFD_TIMER_ABSTIME, &setting, nullptr);
}

void TimerDescriptor::armForClockChange() {
    itimerspec setting{};
    setting.it_value = toTimespec(std::numeric_limits<double>::max());
    timerfd_settime(m_descriptor.value(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &setting, nullptr);
}

void TimerDescriptor::drain() {
    std::uint64_t expirations = 0;
    const ssize_t count = read(m_descriptor.value(), &expirations, sizeof expirations);
    // Nothing to read means that it was armed again since the loop looked; a set clock fails with ECANCELED.
    if (count < 0 && errno == EAGAIN) {
        return;
    }
    m_moment.reset();
    m_fired();
}

} // namespace veslora
