// SPDX-License-Identifier: MIT
// See ClaudeHookEvent.h.
#include "VesloraCore/ClaudeHookEvent.h"

#include "VesloraCore/ClaudeActivity.h"

namespace veslora {

namespace {

ClaudeHookEvent::Kind toolStart(const Json& payload) {
    return ClaudeHookEvent::ToolStart{
        ClaudeActivity::describe(payload.textAt("tool_name"), ToolUse::inputOf(payload))};
}

// The type decides where there is one; earlier agents sent the message alone.
ClaudeHookEvent::Kind notification(const Json& payload) {
    const std::string message = payload.textAt("message");
    const std::string* type = payload.stringAt("notification_type");
    const bool isCall = type ? *type == "permission_prompt" || *type == "elicitation_dialog"
                             : message.find("needs your permission") != std::string::npos;
    if (!isCall)
        return ClaudeHookEvent::Ignored{};
    return ClaudeHookEvent::NeedsYou{message};
}

ClaudeHookEvent::Kind kindOf(std::string_view name, const Json& payload) {
    if (name == "UserPromptSubmit")
        return ClaudeHookEvent::Prompt{};
    if (name == "Stop")
        return ClaudeHookEvent::Stop{};
    if (name == "PreToolUse")
        return toolStart(payload);
    if (name == "PostToolUse")
        return ClaudeHookEvent::ToolDone{};
    if (name == "Notification")
        return notification(payload);
    return ClaudeHookEvent::Ignored{};
}

std::optional<ClaudeHookEvent> eventOf(const Json& payload, Timestamp time) {
    const std::string* sessionId = payload.stringAt("session_id");
    const std::string* name = payload.stringAt("hook_event_name");
    if (!sessionId || sessionId->empty() || !name)
        return std::nullopt;
    ClaudeHookEvent event{*sessionId, time, kindOf(*name, payload), std::nullopt};
    if (std::holds_alternative<ClaudeHookEvent::ToolDone>(event.kind))
        event.tool = ToolUse::of(payload);
    return event;
}

} // namespace

std::optional<ClaudeHookEvent> ClaudeHookEvent::parse(std::string_view payload, Timestamp time) {
    const std::optional<Json> root = Json::parse(payload);
    return root ? eventOf(*root, time) : std::nullopt;
}

std::optional<ClaudeHookEvent> ClaudeHookEvent::parse(std::string_view line) {
    const std::optional<Json> root = Json::parse(line);
    const Json* time = root ? root->find("t") : nullptr;
    const Json* payload = root ? root->objectAt("e") : nullptr;
    const std::optional<double> seconds = time ? time->number() : std::nullopt;
    return seconds && payload ? eventOf(*payload, *seconds) : std::nullopt;
}

} // namespace veslora
