// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudePermissions.h"
#include "tests/VesloraCore/TestData.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

constexpr std::string_view home = "/home/me";

// Both clocks show the same number here, unless a test says otherwise.
ClaudePermissionRequest request(const std::string& id, Timestamp receivedAt) {
    ClaudePermissionRequest made;
    made.id = id;
    made.sessionId = "s";
    made.tool = "Bash";
    made.text = "ls";
    made.receivedAt = receivedAt;
    made.answerBy = receivedAt + ClaudePermissions::wait;
    made.input = R"({"command":"ls"})";
    return made;
}

std::optional<ClaudePermissionRequest> parse(std::string_view payload) {
    return ClaudePermissionRequest::parse(payload, "aB3xYz", 100, home);
}

ClaudePermissionRequest captured(const std::string& tool) {
    const auto found = parse(test::dataFile("agents/claude/hooks/PermissionRequest." + tool + ".json"));
    EXPECT_TRUE(found) << tool;
    return found.value_or(ClaudePermissionRequest());
}

ClaudeHookEvent done(const std::string& tool, Timestamp time) {
    const auto event =
        ClaudeHookEvent::parse(test::dataFile("agents/claude/hooks/PostToolUse." + tool + ".json"), time);
    EXPECT_TRUE(event) << tool;
    return event.value_or(ClaudeHookEvent());
}

std::string ids(const std::vector<ClaudePermissionRequest>& requests) {
    std::string made;
    for (const auto& each : requests) {
        made += each.id + " ";
    }
    return made;
}

ClaudeSessionFile file(bool isWaiting, std::optional<Timestamp> since) {
    ClaudeSessionFile made;
    made.sessionId = "s";
    made.isBusy = !isWaiting;
    made.statusSince = since;
    if (isWaiting) {
        made.waitingFor = "permission prompt";
    }
    return made;
}

bool answered(const ClaudeHookEvent& event) {
    return ClaudePermissions::isAnsweredElsewhere(request("a", 100), event);
}

bool answered(std::optional<Timestamp> sawWaiting, const ClaudeSessionFile& now) {
    return ClaudePermissions::isAnsweredElsewhere(request("a", 100), sawWaiting, now);
}

} // namespace

TEST(ClaudePermissionRequest, ReadsTheCapturedPayloads) {
    const ClaudePermissionRequest bash = captured("Bash");
    EXPECT_EQ(bash.id, "aB3xYz");
    EXPECT_EQ(bash.sessionId, "43044874-ca7b-4fcf-8bd6-5b494a07e2e9");
    EXPECT_EQ(bash.cwd, "/home/me/agents/w-allow");
    EXPECT_EQ(bash.tool, "Bash");
    EXPECT_EQ(bash.text, "touch mock-was-here.txt");
    EXPECT_EQ(bash.receivedAt, 100);
    EXPECT_EQ(bash.agent, AgentKind::claude);
    EXPECT_EQ(captured("Write").text, "Write ~/agents/xw-write/new.txt");
    EXPECT_EQ(captured("ExitPlanMode").text, "ExitPlanMode");
    EXPECT_TRUE(captured("AskUserQuestion").text.starts_with("AskUserQuestion · questions: [{"));
}

TEST(ClaudePermissionRequest, ReadsTheCapturedPayloadsOfCodexToo) {
    const auto bash = parse(test::dataFile("agents/codex/hooks/PermissionRequest.Bash.json"));
    ASSERT_TRUE(bash);
    EXPECT_EQ(bash->text, "touch a.txt");
    const auto patch = parse(test::dataFile("agents/codex/hooks/PermissionRequest.apply_patch.json"));
    ASSERT_TRUE(patch);
    EXPECT_EQ(patch->text,
              "apply_patch · command: *** Begin Patch\n*** Add File: new.txt\n+mock\n*** End Patch");
}

TEST(ClaudePermissionRequest, NoOtherCapturedPayloadIsARequest) {
    for (const std::string& path : test::dataFiles("agents/claude/hooks", ".json")) {
        const bool isRequest = path.find("/PermissionRequest.") != std::string::npos;
        EXPECT_EQ(parse(test::dataFile(path)).has_value(), isRequest) << path;
    }
}

TEST(ClaudePermissionRequest, NeedsItsEventItsSessionAndATool) {
    EXPECT_TRUE(parse(R"({"hook_event_name":"PermissionRequest","session_id":"s","tool_name":"Bash"})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"Notification","session_id":"s","tool_name":"Bash"})"));
    EXPECT_FALSE(parse(R"({"session_id":"s","tool_name":"Bash"})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"PermissionRequest","session_id":"","tool_name":"Bash"})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"PermissionRequest","session_id":4,"tool_name":"Bash"})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"PermissionRequest","session_id":"s","tool_name":""})"));
    EXPECT_FALSE(parse(R"({"hook_event_name":"PermissionRequest","session_id":"s"})"));
    EXPECT_FALSE(parse("[]"));
    EXPECT_FALSE(parse(""));
}

TEST(ClaudePermissionRequest, AnOddInputOrDirectoryOnlyShortensTheText) {
    const auto found = parse(
        R"({"hook_event_name":"PermissionRequest","session_id":"s","tool_name":"Edit","tool_input":"x","cwd":[]})");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->text, "Edit ");
    EXPECT_EQ(found->cwd, "");
    EXPECT_EQ(found->input, "{}");
}

TEST(ClaudePermissions, KeepsTheFirstOfEqualIds) {
    ClaudePermissions permissions;
    permissions.add(request("a", 100));
    permissions.add(request("a", 105));
    EXPECT_EQ(permissions.pending(106).size(), 1u);
    EXPECT_EQ(permissions.deadline("a"), 120.0);
}

TEST(ClaudePermissions, PendingEndsExactlyAtTheDeadline) {
    ClaudePermissions permissions;
    permissions.add(request("a", 100));
    EXPECT_EQ(permissions.pending(119.999).size(), 1u);
    EXPECT_TRUE(permissions.pending(120).empty());
    EXPECT_EQ(permissions.deadline("a"), 120.0);
    EXPECT_FALSE(permissions.deadline("b"));
}

TEST(ClaudePermissions, PendingSortsByArrivalAndKeepsTies) {
    ClaudePermissions permissions;
    permissions.add(request("late", 105));
    permissions.add(request("x", 101));
    permissions.add(request("b", 101));
    permissions.add(request("early", 100));
    EXPECT_EQ(ids(permissions.pending(106)), "early x b late ");
}

TEST(ClaudePermissions, RemovesByIdAndByAge) {
    ClaudePermissions permissions;
    permissions.add(request("a", 100));
    permissions.add(request("b", 110));
    permissions.remove("nobody");
    EXPECT_EQ(ids(permissions.pending(111)), "a b ");
    permissions.remove("a");
    EXPECT_EQ(ids(permissions.pending(111)), "b ");
    permissions.add(request("c", 100));
    permissions.removeExpired(120);
    EXPECT_FALSE(permissions.deadline("c"));
    EXPECT_EQ(permissions.deadline("b"), 130.0);
}

TEST(ClaudePermissions, TheTimeForAnAnswerIsTwentySecondsLessTheAge) {
    EXPECT_EQ(ClaudePermissions::answerBy(100, 100, 5000), 5020);
    EXPECT_EQ(ClaudePermissions::answerBy(100, 105, 5000), 5015);
    EXPECT_EQ(ClaudePermissions::answerBy(100, 120, 5000), 5000);
    EXPECT_EQ(ClaudePermissions::answerBy(100, 90'000, 5000), 5000) << "no less than none";
}

TEST(ClaudePermissions, ARequestFromTheFutureCountsAsJustFiled) {
    EXPECT_EQ(ClaudePermissions::answerBy(100, 99, 5000), 5020);
    EXPECT_EQ(ClaudePermissions::answerBy(3700, 100, 5000), 5020);
    EXPECT_EQ(ClaudePermissions::answerBy(1e300, -1e300, 5000), 5020);
}

TEST(ClaudePermissions, AnAnswerAtJustTheDeadlineIsTooLate) {
    EXPECT_TRUE(ClaudePermissions::isAnswerable(request("a", 100), 119.999));
    EXPECT_FALSE(ClaudePermissions::isAnswerable(request("a", 100), 120));
    EXPECT_FALSE(ClaudePermissions::isAnswerable(request("a", 100), 121));
}

TEST(ClaudePermissions, TheWallClockNeitherEndsNorOrdersARequest) {
    ClaudePermissions permissions;
    ClaudePermissionRequest first = request("first", 100);
    first.receivedAt = 9e9;
    ClaudePermissionRequest second = request("second", 101);
    second.receivedAt = -9e9;
    permissions.add(second);
    permissions.add(first);
    EXPECT_EQ(ids(permissions.pending(110)), "first second ");
    EXPECT_EQ(ids(permissions.pending(120)), "second ");
    EXPECT_EQ(permissions.removeExpired(121), (std::vector<std::string>{"second", "first"}));
    EXPECT_FALSE(permissions.nextDeadline());
}

TEST(ClaudePermissions, TheNextDeadlineIsTheFirstOfAll) {
    ClaudePermissions permissions;
    EXPECT_FALSE(permissions.nextDeadline());
    permissions.add(request("b", 105));
    permissions.add(request("a", 100));
    EXPECT_EQ(permissions.nextDeadline(), 120.0);
    EXPECT_EQ(permissions.removeExpired(120), std::vector<std::string>{"a"});
    EXPECT_EQ(permissions.nextDeadline(), 125.0);
    permissions.remove("b");
    EXPECT_FALSE(permissions.nextDeadline());
}

TEST(ClaudePermissions, QuestionsAndPlansAreAnsweredInTheTerminal) {
    EXPECT_FALSE(ClaudePermissions::canBeAnsweredOutside("AskUserQuestion"));
    EXPECT_FALSE(ClaudePermissions::canBeAnsweredOutside("ExitPlanMode"));
    EXPECT_TRUE(ClaudePermissions::canBeAnsweredOutside("Bash"));
    EXPECT_TRUE(ClaudePermissions::canBeAnsweredOutside("exitplanmode"));
}

TEST(ClaudePermissions, ALaterPromptOfTheSessionAnswersARequest) {
    const auto prompt = [](const std::string& session, Timestamp time) {
        return ClaudeHookEvent{session, time, ClaudeHookEvent::Prompt{}, std::nullopt};
    };
    EXPECT_TRUE(answered(prompt("s", 100.1)));
    EXPECT_FALSE(answered(prompt("s", 100)));
    EXPECT_FALSE(answered(prompt("s", 99)));
    EXPECT_FALSE(answered(prompt("other", 101)));
}

TEST(ClaudePermissions, TheLaterEndOfJustThatToolUseAnswersARequest) {
    const ClaudePermissionRequest bash = captured("Bash");
    EXPECT_TRUE(ClaudePermissions::isAnsweredElsewhere(bash, done("Bash", 101)));
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(bash, done("Bash", 100)));
    EXPECT_TRUE(ClaudePermissions::isAnsweredElsewhere(captured("Write"), done("Write", 101)));

    ClaudeHookEvent other = done("Bash", 101);
    other.tool->input = R"({"command":"rm -r /"})";
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(bash, other));
    other = done("Bash", 101);
    other.tool->name = "Write";
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(bash, other));
    other = done("Bash", 101);
    other.tool.reset();
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(bash, other));
    other = done("Bash", 101);
    other.sessionId = "other";
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(bash, other));
}

TEST(ClaudePermissions, OtherEventsProveNothing) {
    using Event = ClaudeHookEvent;
    for (const Event::Kind& kind : {Event::Kind(Event::Stop{}), Event::Kind(Event::Ignored{}),
                                    Event::Kind(Event::ToolStart{"ls"}), Event::Kind(Event::NeedsYou{"m"})}) {
        EXPECT_FALSE(answered(Event{"s", 101, kind, ToolUse{"Bash", R"({"command":"ls"})"}}));
    }
}

TEST(ClaudePermissions, AFileThatLeavesItsWaitAnswersARequest) {
    EXPECT_TRUE(answered(100.1, file(false, 103)));
    EXPECT_TRUE(answered(99.96, file(false, 103)));
    EXPECT_TRUE(answered(99.9, file(false, 103)));
    EXPECT_FALSE(answered(99.8, file(false, 103)));
    EXPECT_FALSE(answered(std::nullopt, file(false, 103)));
    EXPECT_FALSE(answered(100.1, file(true, 103)));
    EXPECT_FALSE(answered(100.1, file(false, 100.1)));
    EXPECT_FALSE(answered(100.1, file(false, 100)));
    EXPECT_FALSE(answered(100.1, file(false, std::nullopt)));
    ClaudeSessionFile other = file(false, 103);
    other.sessionId = "other";
    EXPECT_FALSE(answered(100.1, other));
}

TEST(ClaudePermissions, ARequestOfCodexIsNotAnsweredByClaudesSessions) {
    ClaudePermissionRequest codex = request("a", 100);
    codex.agent = AgentKind::codex;
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(
        codex, ClaudeHookEvent{"s", 101, ClaudeHookEvent::Prompt{}, std::nullopt}));
    EXPECT_FALSE(ClaudePermissions::isAnsweredElsewhere(codex, 100.1, file(false, 103)));
}
