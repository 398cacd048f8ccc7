// SPDX-License-Identifier: MIT
// Time for the harness: the clock that everything is measured with, and waiting for what another program
// does.
#pragma once

#include <functional>
#include <string>

namespace veslora::bench {

/// Seconds on the monotonic clock.
[[nodiscard]] double monotonicNow();

void sleepFor(double seconds);

/// Looks every `pause` seconds until `condition` holds and tells how many seconds that took from `start`.
/// Throws after a time that no working program needs.
double waitUntil(const std::string& what, const std::function<bool()>& condition, double pause = 0.001,
                 double start = monotonicNow());

} // namespace veslora::bench
