// SPDX-License-Identifier: MIT
// The helper as a process: one question in, one answer out.
#pragma once

#include "UpdateFetcher/FetchLimits.h"

namespace veslora::Helper {

/// Before anything else: ends this process with its parent, and takes from it what no job needs. False where
/// the system refuses.
[[nodiscard]] bool prepare(bool limitsMemory);

/// Reads the question from standard input, does it and prints the answer; needs the application object. 0
/// when an answer was printed, also one of a failure; 1 for what is no question.
[[nodiscard]] int run(const FetchLimits& limits);

} // namespace veslora::Helper
