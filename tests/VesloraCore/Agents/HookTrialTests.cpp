// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/HookTrial.h"
#include "VesloraCore/Agents/Hooks/HookSign.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(HookTrialTests, ItsPromptIsOneThatBothAgentsCouldHaveFiled) {
    const std::string session = HookTrial::sessionId(42);
    EXPECT_TRUE(HookTrial::isTrial(session));
    EXPECT_FALSE(HookTrial::isTrial("01a1fd03-e725-7be3-8008-7e6ce082c876"));
    const std::string payload = HookTrial::request(session);
    const auto request = ClaudePermissionRequest::parse(payload, "id", 5, "/home/me");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->sessionId, session);
    EXPECT_EQ(request->tool, "Bash");
    EXPECT_TRUE(CodexHookEvent::parse(payload, 5, 1));
    const auto end = CodexHookEvent::parse(HookTrial::end(session), 6, std::nullopt);
    ASSERT_TRUE(end);
    EXPECT_EQ(HookSign::of(*end).kind, HookSign::Kind::sessionEnd);
    EXPECT_TRUE(ClaudeHookEvent::parse(HookTrial::end(session), 6));
}

TEST(HookTrialTests, ReadsWhatTheScriptToldTheAgent) {
    const auto told = [](const std::string& behavior) {
        return R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":")" +
               behavior + "\"}}}";
    };
    EXPECT_EQ(HookTrial::decisionOf(told("allow")), ClaudeDecision::allow);
    EXPECT_EQ(HookTrial::decisionOf(told("deny")), ClaudeDecision::deny);
    for (const std::string& nothing : {std::string(), told("ask"), std::string("{}"), std::string("allow"),
                                       std::string(R"({"hookSpecificOutput":{"decision":"allow"}})")}) {
        EXPECT_EQ(HookTrial::decisionOf(nothing), std::nullopt) << nothing;
    }
}

} // namespace
} // namespace veslora
