// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/HookTrial.h"

#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraCore/Text/Json.h"

namespace veslora::HookTrial {

namespace {

constexpr std::string_view prefix = "veslora-trial-";

Json payload(const std::string& sessionId, std::string_view event) {
    Json root = Json::makeObject();
    root.set("session_id", Json::makeString(sessionId));
    root.set("cwd", Json::makeString("/try-it"));
    root.set("hook_event_name", Json::makeString(std::string(event)));
    return root;
}

} // namespace

std::string sessionId(std::uint64_t number) {
    return std::string(prefix) + std::to_string(number);
}

bool isTrial(std::string_view sessionId) {
    return sessionId.starts_with(prefix);
}

std::string request(const std::string& sessionId) {
    Json input = Json::makeObject();
    input.set("command", Json::makeString("echo Hello from Veslora"));
    Json root = payload(sessionId, ClaudeHooksInstaller::permissionEvent);
    root.set("tool_name", Json::makeString("Bash"));
    root.set("tool_input", std::move(input));
    return root.print(Json::Layout::compact);
}

std::string end(const std::string& sessionId) {
    return payload(sessionId, "SessionEnd").print(Json::Layout::compact);
}

std::optional<ClaudeDecision> decisionOf(std::string_view output) {
    const auto document = Json::parse(output);
    const Json* specific = document ? document->objectAt("hookSpecificOutput") : nullptr;
    const Json* decision = specific ? specific->objectAt("decision") : nullptr;
    const std::string behavior = decision ? decision->textAt("behavior") : std::string();
    return behavior == "allow"  ? std::optional(ClaudeDecision::allow)
           : behavior == "deny" ? std::optional(ClaudeDecision::deny)
                                : std::nullopt;
}

} // namespace veslora::HookTrial
