// SPDX-License-Identifier: MIT
// See ClaudePermissionRequest.h.
#include "VesloraCore/Agents/ClaudePermissionRequest.h"

#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraCore/Agents/Hooks/ToolUse.h"

namespace veslora {

std::optional<ClaudePermissionRequest> ClaudePermissionRequest::of(const HookPayload& payload,
                                                                   std::string_view id, Timestamp receivedAt,
                                                                   std::string_view home) {
    const std::optional<Json> input = payload.isRequest() ? payload.input() : std::nullopt;
    if (!input) {
        return std::nullopt;
    }
    ClaudePermissionRequest request;
    request.sessionId = *payload.sessionId;
    request.tool = payload.tool;
    request.id = id;
    request.cwd = payload.cwd;
    request.text = ClaudeRequestText::describe(request.tool, *input, home);
    request.receivedAt = receivedAt;
    request.input = ToolUse::inputText(*input);
    return request;
}

std::optional<ClaudePermissionRequest> ClaudePermissionRequest::parse(std::string_view payload,
                                                                      std::string_view id,
                                                                      Timestamp receivedAt,
                                                                      std::string_view home) {
    if (payload.size() > longestPayload) {
        return std::nullopt;
    }
    const std::optional<HookPayload> read = HookPayload::parse(payload);
    return read ? of(*read, id, receivedAt, home) : std::nullopt;
}

} // namespace veslora
