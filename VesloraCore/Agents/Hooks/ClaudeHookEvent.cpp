// SPDX-License-Identifier: MIT
// See ClaudeHookEvent.h.
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"

#include "VesloraCore/Agents/Hooks/ClaudeActivity.h"
#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/JsonText.h"
#include "VesloraCore/Text/Utf8.h"

namespace veslora {

namespace {

// What is kept of a message, which may be of any length: whole code points, far more than a notice shows.
std::string beginning(std::string message) {
    if (message.size() <= HookPayload::longestText) {
        return message;
    }
    std::size_t end = HookPayload::longestText;
    while (end > 0 && (static_cast<unsigned char>(message[end]) & 0xC0U) == 0x80) {
        --end;
    }
    return message.substr(0, end);
}

// The type decides where there is one; earlier agents sent the message alone.
ClaudeHookEvent::Kind notification(const HookPayload& payload) {
    const auto& type = payload.notificationType;
    const bool isCall = type ? *type == "permission_prompt" || *type == "elicitation_dialog"
                             : payload.message.find("needs your permission") != std::string::npos;
    if (!isCall) {
        return ClaudeHookEvent::Ignored{};
    }
    return ClaudeHookEvent::NeedsYou{beginning(payload.message)};
}

ClaudeHookEvent::Kind kindOf(std::string_view name, const HookPayload& payload, const Words& words) {
    if (name == "UserPromptSubmit") {
        return ClaudeHookEvent::Prompt{};
    }
    if (name == "Stop") {
        return ClaudeHookEvent::Stop{};
    }
    if (name == "PreToolUse") {
        return ClaudeHookEvent::ToolStart{ClaudeActivity::describe(payload, words)};
    }
    if (name == "PostToolUse") {
        return ClaudeHookEvent::ToolDone{};
    }
    if (name == "Notification") {
        return notification(payload);
    }
    return ClaudeHookEvent::Ignored{};
}

} // namespace

std::optional<ClaudeHookEvent> ClaudeHookEvent::parse(std::string_view payload, Timestamp time,
                                                      const Words& words) {
    const std::optional<HookPayload> read = HookPayload::parse(payload);
    if (!read || !read->sessionId || read->sessionId->empty() || !read->eventName) {
        return std::nullopt;
    }
    ClaudeHookEvent event{*read->sessionId, time, kindOf(*read->eventName, *read, words), std::nullopt};
    if (std::holds_alternative<ClaudeHookEvent::ToolDone>(event.kind)) {
        event.tool = ToolUse::of(*read);
    }
    return event;
}

std::optional<ClaudeHookEvent> ClaudeHookEvent::parse(std::string_view line) {
    if (!Utf8::isValid(line)) {
        return std::nullopt;
    }
    JsonScanner scanner(line);
    std::string_view time;
    std::string_view payload;
    const bool isObject = scanner.object([&](JsonScanner::Key key) {
        if (key == "t") {
            time = scanner.raw();
        } else if (key == "e") {
            payload = scanner.raw();
        } else {
            scanner.skip();
        }
    });
    if (!isObject || !scanner.isComplete() || !JsonText::isNumber(time)) {
        return std::nullopt;
    }
    const std::optional<double> seconds = JsonText::number(time);
    return seconds ? parse(payload, *seconds) : std::nullopt;
}

} // namespace veslora
