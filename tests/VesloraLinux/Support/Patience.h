// SPDX-License-Identifier: MIT
// Waiting for what another program does, without an event loop.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace veslora::testing {

/// Looks again and again until `condition` holds; tells whether it does within a minute.
inline bool becomesTrue(const std::function<bool()>& condition) {
    using namespace std::chrono_literals;
    const auto deadline = std::chrono::steady_clock::now() + 60s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(20ms);
    }
    return true;
}

} // namespace veslora::testing
