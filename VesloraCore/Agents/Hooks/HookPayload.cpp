// SPDX-License-Identifier: MIT
// See HookPayload.h.
#include "VesloraCore/Agents/Hooks/HookPayload.h"

#include "VesloraCore/Text/JsonScanner.h"
#include "VesloraCore/Text/Utf8.h"

#include <algorithm>

namespace veslora {

namespace {

std::optional<std::string> shortText(JsonScanner& scanner) {
    std::optional<std::string> text = scanner.string();
    if (text && text->size() > HookPayload::longestText) {
        text.reset();
    }
    return text;
}

std::string_view objectText(JsonScanner& scanner) {
    const std::string_view value = scanner.raw();
    return value.starts_with('{') ? value : std::string_view();
}

} // namespace

std::optional<HookPayload> HookPayload::parse(std::string_view document) {
    if (!Utf8::isValid(document)) {
        return std::nullopt;
    }
    JsonScanner scanner(document);
    HookPayload payload;
    // Of several equal keys the last counts, also where it stands for nothing.
    const bool isObject = scanner.object([&](JsonScanner::Key key) {
        if (key == "session_id") {
            payload.sessionId = shortText(scanner);
        } else if (key == "hook_event_name") {
            payload.eventName = shortText(scanner);
        } else if (key == "tool_name") {
            payload.tool = shortText(scanner).value_or("");
        } else if (key == "cwd") {
            payload.cwd = shortText(scanner).value_or("");
        } else if (key == "message") {
            payload.message = scanner.string().value_or("");
        } else if (key == "notification_type") {
            payload.notificationType = shortText(scanner);
        } else if (key == "tool_input") {
            payload.toolInput = objectText(scanner);
        } else {
            scanner.skip();
        }
    });
    return isObject && scanner.isComplete() ? std::optional(std::move(payload)) : std::nullopt;
}

bool HookPayload::isRequest() const {
    return eventName == "PermissionRequest" && sessionId && !sessionId->empty() && !tool.empty();
}

std::optional<Json> HookPayload::input() const {
    if (toolInput.empty()) {
        return Json::makeObject();
    }
    return toolInput.size() <= longestInput ? Json::parse(toolInput) : std::nullopt;
}

Json HookPayload::inputTexts(std::initializer_list<std::string_view> keys) const {
    Json texts = Json::makeObject();
    JsonScanner scanner(toolInput);
    scanner.object([&](JsonScanner::Key key) {
        const auto wanted = std::ranges::find_if(keys, [&](auto name) { return key == name; });
        if (wanted == keys.end()) {
            scanner.skip();
            return;
        }
        if (std::optional<std::string> text = scanner.string()) {
            texts.set(*wanted, Json::makeString(std::move(*text)));
        } else {
            texts.remove(*wanted);
        }
    });
    return texts;
}

} // namespace veslora
