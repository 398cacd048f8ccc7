// SPDX-License-Identifier: MIT
// See ClaudePermissionRequest.h.
#include "VesloraCore/ClaudePermissionRequest.h"

#include "VesloraCore/ClaudeRequestText.h"
#include "VesloraCore/ToolUse.h"

namespace veslora {

std::optional<ClaudePermissionRequest> ClaudePermissionRequest::parse(std::string_view payload,
                                                                      std::string_view id,
                                                                      Timestamp receivedAt,
                                                                      std::string_view home) {
    const std::optional<Json> root = Json::parse(payload);
    if (!root || root->textAt("hook_event_name") != "PermissionRequest")
        return std::nullopt;
    ClaudePermissionRequest request;
    request.sessionId = root->textAt("session_id");
    request.tool = root->textAt("tool_name");
    if (request.sessionId.empty() || request.tool.empty())
        return std::nullopt;
    const Json& input = ToolUse::inputOf(*root);
    request.id = id;
    request.cwd = root->textAt("cwd");
    request.text = ClaudeRequestText::describe(request.tool, input, home);
    request.receivedAt = receivedAt;
    request.input = ToolUse::inputText(input);
    return request;
}

} // namespace veslora
