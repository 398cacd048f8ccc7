// SPDX-License-Identifier: MIT
// What a session of either agent is doing, as everything that shows sessions sees it. Plain values, any
// thread.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace veslora {

namespace ClaudeStatus {

/// The session waits for the user.
struct NeedsApproval {
    std::string message;
    Timestamp since = 0;
    bool operator==(const NeedsApproval&) const = default;
};
/// The turn ended moments ago and the user has not seen it.
struct Finished {
    Timestamp at = 0;
    bool operator==(const Finished&) const = default;
};
/// The session is busy.
struct Working {
    Timestamp since = 0;
    bool operator==(const Working&) const = default;
};
struct Idle {
    bool operator==(const Idle&) const = default;
};

} // namespace ClaudeStatus

using ClaudeSessionStatus = std::variant<ClaudeStatus::Idle, ClaudeStatus::NeedsApproval,
                                         ClaudeStatus::Finished, ClaudeStatus::Working>;

struct ClaudeSessionSummary {
    std::string id;       ///< the session identifier
    std::string name;     ///< for display
    std::int32_t pid = 0; ///< the agent's process; 0 where it is not known
    ClaudeSessionStatus status;
    std::optional<std::string> activity; ///< the last tool's line
    AgentKind agent = AgentKind::claude;
    bool operator==(const ClaudeSessionSummary&) const = default;
};

} // namespace veslora
