// SPDX-License-Identifier: MIT
// One window of an agent's plan: how much of it is used, and when it begins again. Plain values, any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <optional>

namespace veslora {

struct ClaudeLimit {
    double percent = 0;                ///< used so far, 0 to 100
    std::optional<Timestamp> resetsAt; ///< absent when the agent didn't say
    bool operator==(const ClaudeLimit&) const = default;
};

} // namespace veslora
