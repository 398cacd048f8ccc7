// SPDX-License-Identifier: MIT
#include "bench/Clock.h"

#include <cmath>
#include <ctime>
#include <stdexcept>

namespace veslora::bench {

namespace {
constexpr double patience = 20;
}

double monotonicNow() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double processorMilliseconds(const rusage& used) {
    const auto of = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return of(used.ru_utime) + of(used.ru_stime);
}

void sleepFor(double seconds) {
    if (seconds <= 0) {
        return;
    }
    const double whole = std::floor(seconds);
    timespec left{static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
    while (clock_nanosleep(CLOCK_MONOTONIC, 0, &left, &left) != 0) {
    }
}

double waitUntil(const std::string& what, const std::function<bool()>& condition, double pause,
                 double start) {
    const double deadline = monotonicNow() + patience;
    while (!condition()) {
        if (monotonicNow() > deadline) {
            throw std::runtime_error("waited in vain for " + what);
        }
        sleepFor(pause);
    }
    return monotonicNow() - start;
}

} // namespace veslora::bench
