// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/CodexHookEvent.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

using Event = CodexHookEvent;

std::optional<Event> parse(std::string_view payload) {
    return Event::parse(payload, 12.5, 77);
}

Event captured(const std::string& name) {
    const auto event = parse(test::dataFile("agents/codex/hooks/" + name + ".json"));
    EXPECT_TRUE(event) << name;
    return event.value_or(Event());
}

/// The kind of a payload with this event name and these further keys.
Event::Kind kind(const std::string& name, const std::string& more = {}) {
    const auto event = parse(R"({"session_id":"s-1","hook_event_name":")" + name + "\"" + more + "}");
    EXPECT_TRUE(event) << name;
    return event ? event->kind : Event::Kind();
}

} // namespace

TEST(CodexHookEvent, ReadsEveryCapturedPayload) {
    for (const std::string& path : test::dataFiles("agents/codex/hooks", ".json")) {
        const auto event = parse(test::dataFile(path));
        ASSERT_TRUE(event) << path;
        EXPECT_EQ(event->sessionId.size(), 36u) << path;
        EXPECT_TRUE(event->cwd.starts_with("/home/me/agents/kw-")) << path;
        EXPECT_EQ(event->time, 12.5);
        EXPECT_EQ(event->pid, 77);
    }
}

TEST(CodexHookEvent, CapturedPayloadsGiveTheirKind) {
    EXPECT_EQ(captured("PreToolUse.Bash").kind, Event::Kind(Event::ToolStart{"Bash: touch a.txt"}));
    EXPECT_EQ(captured("PreToolUse.apply_patch").kind, Event::Kind(Event::ToolStart{"apply_patch"}));
    EXPECT_EQ(captured("SessionStart").kind, Event::Kind(Event::Start{}));
    EXPECT_EQ(captured("UserPromptSubmit").kind, Event::Kind(Event::Prompt{}));
    EXPECT_EQ(captured("PostToolUse.Bash").kind, Event::Kind(Event::ToolDone{}));
    EXPECT_EQ(captured("PostToolUse.apply_patch").kind, Event::Kind(Event::ToolDone{}));
    EXPECT_EQ(captured("Stop").kind, Event::Kind(Event::Stop{}));
    EXPECT_EQ(captured("Interrupt").kind, Event::Kind(Event::Interrupt{}));
    EXPECT_EQ(captured("SessionEnd").kind, Event::Kind(Event::End{}));
    EXPECT_EQ(captured("PermissionRequest.Bash").kind, Event::Kind(Event::Ignored{}));
}

TEST(CodexHookEvent, EveryOtherNameIsIgnored) {
    for (const char* name :
         {"", "stop", "Stop ", "SubagentStop", "Notification", "PreToolUse2", "SessionEnded"}) {
        EXPECT_EQ(kind(name), Event::Kind(Event::Ignored{})) << name;
    }
}

TEST(CodexHookEvent, AToolWithoutANameOrInputStillStarts) {
    EXPECT_EQ(kind("PreToolUse"), Event::Kind(Event::ToolStart{""}));
    EXPECT_EQ(kind("PreToolUse", R"(,"tool_name":5,"tool_input":"ls")"), Event::Kind(Event::ToolStart{""}));
    EXPECT_EQ(kind("PreToolUse", R"(,"tool_name":"Bash","tool_input":[])"),
              Event::Kind(Event::ToolStart{"Bash: "}));
}

TEST(CodexHookEvent, TheSessionsIdentifierMustBePlain) {
    for (const char* id : {"", "a_b", "a.b", "../x", "a b", "\xC3\xA9", "a/b", "a\\n"}) {
        const std::string payload = std::string(R"({"hook_event_name":"Stop","session_id":")") + id + "\"}";
        EXPECT_FALSE(parse(payload)) << id;
    }
    EXPECT_TRUE(parse(R"({"hook_event_name":"Stop","session_id":"-aZ09-"})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"Stop","session_id":5})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"Stop"})"));
}

TEST(CodexHookEvent, GivesNothingForBadBytes) {
    for (const char* bytes :
         {"", " ", "null", "[]", "\"text\"", "{", "\xFF\xFE", R"({"session_id":"s","hook_event_name":"Stop")",
          R"({"session_id":"s"})", R"({"session_id":"s","hook_event_name":null})"}) {
        EXPECT_FALSE(parse(bytes)) << bytes;
    }
}

TEST(CodexHookEvent, AnOddWorkingDirectoryCountsAsEmpty) {
    EXPECT_EQ(parse(R"({"session_id":"s","hook_event_name":"Stop","cwd":7})")->cwd, "");
    EXPECT_EQ(Event::parse(R"({"session_id":"s","hook_event_name":"Stop"})", 1, std::nullopt)->pid,
              std::nullopt);
}
