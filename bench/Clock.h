// SPDX-License-Identifier: MIT
// Time for the harness: the clock that everything is measured with, and waiting for what another program
// does.
#pragma once

#include <sys/resource.h>

#include <functional>
#include <string>

namespace veslora::bench {

/// Seconds on the monotonic clock.
[[nodiscard]] double monotonicNow();

/// What the kernel put down to a process, its own work and what it did for it.
[[nodiscard]] double processorMilliseconds(const rusage& used);

void sleepFor(double seconds);

/// Looks every `pause` seconds until `condition` holds and tells how many seconds that took from `start`.
/// Throws after a time that no working program needs.
double waitUntil(const std::string& what, const std::function<bool()>& condition, double pause = 0.001,
                 double start = monotonicNow());

} // namespace veslora::bench
