// SPDX-License-Identifier: MIT
// What is taken out of a payload without building it is what the whole document says.
// Seeds: agents/claude/hooks/*.json agents/codex/hooks/*.json
#include "VesloraCore/Agents/Hooks/HookPayload.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

namespace {

std::optional<std::string> shortTextAt(const Json& root, std::string_view key) {
    const std::string* text = root.stringAt(key);
    return text && text->size() <= HookPayload::longestText ? std::optional(*text) : std::nullopt;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto payload = HookPayload::parse(text);
    const auto root = Json::parse(text);
    require(payload.has_value() == (root && root->isObject()));
    if (!payload) {
        return 0;
    }
    require(payload->sessionId == shortTextAt(*root, "session_id"));
    require(payload->eventName == shortTextAt(*root, "hook_event_name"));
    require(payload->tool == shortTextAt(*root, "tool_name").value_or(""));
    require(payload->cwd == shortTextAt(*root, "cwd").value_or(""));
    require(payload->message == root->textAt("message"));
    require(payload->notificationType == shortTextAt(*root, "notification_type"));
    const Json* input = root->objectAt("tool_input");
    const Json whole = input ? *input : Json::makeObject();
    if (const auto built = payload->input()) {
        require(*built == whole);
    } else {
        require(payload->toolInput.size() > HookPayload::longestInput);
    }
    const Json texts = payload->inputTexts({"command", "file_path"});
    require(texts.textAt("command") == whole.textAt("command"));
    require(texts.textAt("file_path") == whole.textAt("file_path"));
    require(texts.members().size() <= 2);
    return 0;
}
