// SPDX-License-Identifier: MIT
// One prompt in which an agent asks for permission to run a tool, from the payload of its permission hook.
// Plain values, any thread.
#pragma once

#include "VesloraCore/Agents/AgentKind.h"
#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "VesloraCore/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora {

struct ClaudePermissionRequest {
    /// A longer payload gives no request, in bytes: an alert shows a hundred characters of it.
    static constexpr std::size_t longestPayload = HookPayload::longestInput;

    std::string id;        ///< of the spool file, and the name of the answer file
    std::string sessionId; ///< never empty
    std::string cwd;       ///< working directory, possibly empty
    std::string tool;      ///< as the agent named it, never empty
    std::string text;      ///< what it wants to do, whole; see ClaudeRequestText
    /// When the hook filed it, by the wall clock as the agent knows it; for comparing with what the agent
    /// tells.
    Timestamp receivedAt = 0;
    AgentKind agent = AgentKind::claude;
    std::string input; ///< what the tool would be given, as ToolUse::inputText writes it
    /// When it can no longer be answered, on a clock that nobody can set; see ClaudePermissions::answerBy.
    double answerBy = 0;
    bool operator==(const ClaudePermissionRequest&) const = default;

    /// Nothing for a payload that is no request, or whose input is too long to be built. `home` is the path
    /// that the text shortens to "~"; `agent` is always Claude, and `answerBy` is left to the caller, who has
    /// the clock.
    [[nodiscard]] static std::optional<ClaudePermissionRequest>
    of(const HookPayload& payload, std::string_view id, Timestamp receivedAt, std::string_view home);
    /// The same of bytes; nothing for those that are no JSON object or are too long.
    [[nodiscard]] static std::optional<ClaudePermissionRequest>
    parse(std::string_view payload, std::string_view id, Timestamp receivedAt, std::string_view home);
};

} // namespace veslora
