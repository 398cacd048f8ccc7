// SPDX-License-Identifier: MIT
// See CodexHookEvent.h.
#include "VesloraCore/CodexHookEvent.h"

#include "VesloraCore/ClaudeActivity.h"
#include "VesloraCore/IdentifierText.h"
#include "VesloraCore/ToolUse.h"

namespace veslora {

namespace {

CodexHookEvent::Kind toolStart(const Json& payload) {
    return CodexHookEvent::ToolStart{
        ClaudeActivity::describe(payload.textAt("tool_name"), ToolUse::inputOf(payload))};
}

CodexHookEvent::Kind kindOf(std::string_view name, const Json& payload) {
    if (name == "PreToolUse")
        return toolStart(payload);
    if (name == "SessionStart")
        return CodexHookEvent::Start{};
    if (name == "UserPromptSubmit")
        return CodexHookEvent::Prompt{};
    if (name == "PostToolUse")
        return CodexHookEvent::ToolDone{};
    if (name == "Stop")
        return CodexHookEvent::Stop{};
    if (name == "Interrupt")
        return CodexHookEvent::Interrupt{};
    if (name == "SessionEnd")
        return CodexHookEvent::End{};
    return CodexHookEvent::Ignored{};
}

} // namespace

std::optional<CodexHookEvent> CodexHookEvent::parse(std::string_view payload, Timestamp time,
                                                    std::optional<std::int32_t> pid) {
    const std::optional<Json> root = Json::parse(payload);
    const std::string* sessionId = root ? root->stringAt("session_id") : nullptr;
    const std::string* name = root ? root->stringAt("hook_event_name") : nullptr;
    if (!sessionId || !IdentifierText::isPlain(*sessionId) || !name)
        return std::nullopt;
    return CodexHookEvent{*sessionId, time, pid, root->textAt("cwd"), kindOf(*name, *root)};
}

} // namespace veslora
