// SPDX-License-Identifier: MIT
// See CodexHookEvent.h.
#include "VesloraCore/Agents/Hooks/CodexHookEvent.h"

#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"
#include "VesloraCore/Text/IdentifierText.h"

namespace veslora {

namespace {

CodexHookEvent::Kind kindOf(std::string_view name, const HookPayload& payload, const Words& words) {
    if (name == "PreToolUse") {
        return CodexHookEvent::ToolStart{ClaudeActivity::describe(payload, words)};
    }
    if (name == "SessionStart") {
        return CodexHookEvent::Start{};
    }
    if (name == "UserPromptSubmit") {
        return CodexHookEvent::Prompt{};
    }
    if (name == "PostToolUse") {
        return CodexHookEvent::ToolDone{};
    }
    if (name == "Stop") {
        return CodexHookEvent::Stop{};
    }
    if (name == "Interrupt") {
        return CodexHookEvent::Interrupt{};
    }
    if (name == "SessionEnd") {
        return CodexHookEvent::End{};
    }
    return CodexHookEvent::Ignored{};
}

} // namespace

std::optional<CodexHookEvent> CodexHookEvent::of(const HookPayload& payload, Timestamp time,
                                                 std::optional<std::int32_t> pid, const Words& words) {
    if (!payload.sessionId || !IdentifierText::isPlain(*payload.sessionId) || !payload.eventName) {
        return std::nullopt;
    }
    return CodexHookEvent{*payload.sessionId, time, pid, payload.cwd,
                          kindOf(*payload.eventName, payload, words)};
}

std::optional<CodexHookEvent> CodexHookEvent::parse(std::string_view payload, Timestamp time,
                                                    std::optional<std::int32_t> pid, const Words& words) {
    const std::optional<HookPayload> read = HookPayload::parse(payload);
    return read ? of(*read, time, pid, words) : std::nullopt;
}

} // namespace veslora
