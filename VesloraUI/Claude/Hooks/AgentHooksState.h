// SPDX-License-Identifier: MIT
// How an agent's hooks stand in its configuration. Plain value, any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

namespace veslora {

struct AgentHooksState {
    bool areInstalled = false;
    bool areOutdated = false; ///< some of it is there, not all
    /// The user has told the agent to run them, as far as that can be read. False only of hooks that are
    /// installed.
    bool areTrusted = true;
    Timestamp changedAt = distantPast; ///< when the configuration was written last
    bool operator==(const AgentHooksState&) const = default;
};

} // namespace veslora
