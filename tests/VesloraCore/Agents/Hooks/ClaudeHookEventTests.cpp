// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/ClaudeHookEvent.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace veslora;

namespace {

using Event = ClaudeHookEvent;

std::optional<Event> parse(std::string_view payload) {
    return Event::parse(payload, 12.5);
}

// The kind of a payload that must parse.
Event::Kind kind(std::string_view payload) {
    const auto event = parse(payload);
    EXPECT_TRUE(event) << payload;
    return event ? event->kind : Event::Kind();
}

Event captured(const std::string& name) {
    const auto event = parse(test::dataFile("agents/claude/hooks/" + name + ".json"));
    EXPECT_TRUE(event) << name;
    return event.value_or(Event());
}

} // namespace

TEST(ClaudeHookEvent, ReadsEveryCapturedPayload) {
    for (const std::string& path : test::dataFiles("agents/claude/hooks", ".json")) {
        const auto event = parse(test::dataFile(path));
        ASSERT_TRUE(event) << path;
        EXPECT_EQ(event->sessionId.size(), 36u) << path;
        EXPECT_EQ(event->time, 12.5);
        const std::string name = std::filesystem::path(path).filename().string();
        const bool hasKind = name.starts_with("UserPromptSubmit") || name.starts_with("Stop.") ||
                             name.starts_with("PreToolUse") || name.starts_with("PostToolUse") ||
                             name.starts_with("Notification.permission_prompt");
        EXPECT_EQ(!std::holds_alternative<Event::Ignored>(event->kind), hasKind) << path;
    }
}

TEST(ClaudeHookEvent, CapturedPayloadsGiveTheirKind) {
    EXPECT_EQ(captured("UserPromptSubmit").kind, Event::Kind(Event::Prompt{}));
    EXPECT_EQ(captured("Stop").kind, Event::Kind(Event::Stop{}));
    EXPECT_EQ(captured("Stop.with-background-task").kind, Event::Kind(Event::Stop{}));
    EXPECT_EQ(captured("SubagentStop").kind, Event::Kind(Event::Ignored{}));
    EXPECT_EQ(captured("PreToolUse.Bash").kind, Event::Kind(Event::ToolStart{"Mock shell step"}));
    EXPECT_EQ(captured("PreToolUse.Write").kind, Event::Kind(Event::ToolStart{"Write: new.txt"}));
    EXPECT_EQ(captured("PreToolUse.Agent").kind, Event::Kind(Event::ToolStart{"Agent: Mock sub"}));
    EXPECT_EQ(captured("PostToolUse.Bash").kind, Event::Kind(Event::ToolDone{}));
    EXPECT_EQ(captured("Notification.permission_prompt").kind,
              Event::Kind(Event::NeedsYou{"Claude needs your permission"}));
    EXPECT_EQ(captured("Notification.idle_prompt").kind, Event::Kind(Event::Ignored{}));
    EXPECT_EQ(captured("Notification.agent_needs_input").kind, Event::Kind(Event::Ignored{}));
}

TEST(ClaudeHookEvent, NeedsASessionAndAName) {
    EXPECT_FALSE(parse(R"({"session_id":"","hook_event_name":"Stop"})"));
    EXPECT_FALSE(parse(R"({"session_id":5,"hook_event_name":"Stop"})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"Stop"})"));
    EXPECT_FALSE(parse(R"({"session_id":"a"})"));
    EXPECT_FALSE(parse(R"({"session_id":"a","hook_event_name":null})"));
    EXPECT_FALSE(parse(R"(["session_id"])"));
    EXPECT_FALSE(parse(""));
    EXPECT_FALSE(parse("{"));
}

TEST(ClaudeHookEvent, AToolStartWithoutToolOrInputStaysAToolStart) {
    EXPECT_EQ(kind(R"({"session_id":"a","hook_event_name":"PreToolUse"})"),
              Event::Kind(Event::ToolStart{""}));
    EXPECT_EQ(
        kind(R"({"session_id":"a","hook_event_name":"PreToolUse","tool_name":"Bash","tool_input":[1]})"),
        Event::Kind(Event::ToolStart{"Bash: "}));
    EXPECT_EQ(
        kind(
            R"({"session_id":"a","hook_event_name":"PreToolUse","tool_name":1,"tool_input":{"command":"ls"}})"),
        Event::Kind(Event::ToolStart{""}));
}

TEST(ClaudeHookEvent, ANotificationsTypeDecidesAlone) {
    const std::string start = R"({"session_id":"a","hook_event_name":"Notification",)";
    EXPECT_EQ(kind(start + R"("notification_type":"permission_prompt","message":"x"})"),
              Event::Kind(Event::NeedsYou{"x"}));
    EXPECT_EQ(kind(start + R"("notification_type":"elicitation_dialog"})"), Event::Kind(Event::NeedsYou{""}));
    EXPECT_EQ(kind(start + R"("notification_type":"other","message":"Claude needs your permission"})"),
              Event::Kind(Event::Ignored{}));
    EXPECT_EQ(kind(start + R"("notification_type":"","message":"Claude needs your permission"})"),
              Event::Kind(Event::Ignored{}));
}

TEST(ClaudeHookEvent, WithoutATypeTheMessageDecides) {
    const std::string start = R"({"session_id":"a","hook_event_name":"Notification",)";
    EXPECT_EQ(kind(start + R"("message":"Claude needs your permission to use Bash"})"),
              Event::Kind(Event::NeedsYou{"Claude needs your permission to use Bash"}));
    EXPECT_EQ(kind(start + R"("message":"He needs your permission","notification_type":7})"),
              Event::Kind(Event::NeedsYou{"He needs your permission"}));
    EXPECT_EQ(kind(start + R"("message":"Needs your permission"})"), Event::Kind(Event::Ignored{}));
    EXPECT_EQ(kind(start + R"("message":5})"), Event::Kind(Event::Ignored{}));
}

TEST(ClaudeHookEvent, OtherNamesAreSignsOfLife) {
    for (const char* name : {"stop", "SessionStart", "PermissionRequest", "", "Stop "}) {
        const auto event = parse(std::string(R"({"session_id":"a","hook_event_name":")") + name + "\"}");
        ASSERT_TRUE(event) << name;
        EXPECT_EQ(event->kind, Event::Kind(Event::Ignored{})) << name;
        EXPECT_EQ(event->sessionId, "a");
    }
}

TEST(ClaudeHookEvent, ReadsARecordedLine) {
    const auto event = Event::parse(R"({"t":1700000000.25,"e":{"session_id":"a","hook_event_name":"Stop"}})");
    ASSERT_TRUE(event);
    EXPECT_EQ(*event, (Event{"a", 1700000000.25, Event::Stop{}, std::nullopt}));
    EXPECT_FALSE(Event::parse(R"({"t":"17","e":{"session_id":"a","hook_event_name":"Stop"}})"));
    EXPECT_FALSE(Event::parse(R"({"t":true,"e":{"session_id":"a","hook_event_name":"Stop"}})"));
    EXPECT_FALSE(Event::parse(R"({"t":1e400,"e":{"session_id":"a","hook_event_name":"Stop"}})"));
    EXPECT_FALSE(Event::parse(R"({"t":1,"e":[]})"));
    EXPECT_FALSE(Event::parse(R"({"t":1})"));
    EXPECT_FALSE(Event::parse(R"({"e":{"session_id":"a","hook_event_name":"Stop"}})"));
    EXPECT_FALSE(Event::parse("[]"));
    EXPECT_FALSE(Event::parse("nonsense"));
}

TEST(ClaudeHookEvent, TheEndOfAToolSaysWhichUseEnded) {
    const Event done = captured("PostToolUse.Write");
    ASSERT_TRUE(done.tool);
    EXPECT_EQ(done.tool->name, "Write");
    EXPECT_EQ(done.tool->input, R"({"content":"mock\n","file_path":"/home/me/agents/xw-write/new.txt"})");
    EXPECT_FALSE(captured("PreToolUse.Write").tool);
    EXPECT_FALSE(captured("Stop").tool);
    EXPECT_EQ(parse(R"({"session_id":"a","hook_event_name":"PostToolUse"})")->tool, (ToolUse{"", "{}"}));
}

TEST(ClaudeHookEvent, AHugeToolInputIsNotKept) {
    const auto withInput = [](const std::string& content) {
        return parse(
                   R"({"session_id":"a","hook_event_name":"PostToolUse","tool_name":"Write","tool_input":{"content":")" +
                   content + "\"}}")
            ->tool->input;
    };
    const std::string kept = withInput(std::string(500'000, 'x'));
    EXPECT_LT(kept.size(), 100u);
    EXPECT_EQ(kept, withInput(std::string(500'000, 'x')));
    EXPECT_NE(kept, withInput(std::string(499'999, 'x') + "y"));
    EXPECT_NE(kept, withInput(std::string(500'001, 'x')));
}
