// SPDX-License-Identifier: MIT
// Made-up prompts, and the signs that hooks are heard, in the monitors of both agents.
#include "VesloraCore/Agents/HookTrial.h"
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"
#include "tests/VesloraUI/Claude/Monitors/CodexMonitorTest.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

class ClaudeTrialTest : public ClaudeMonitorTest {
  protected:
    [[nodiscard]] Task begin() {
        return monitor.tryHooks([this](HookTrialResult told) { result = told; });
    }
    std::optional<HookTrialResult> result;
};

TEST_F(ClaudeTrialTest, RunsTheInstalledScriptAndTellsWhatItSaid) {
    monitor.start();
    const Task task = begin();
    ASSERT_EQ(platform.programs.runs.size(), 1u);
    const auto& run = platform.programs.runs[0];
    EXPECT_EQ(run.arguments, std::vector<std::string>{platform.paths.support + "/" +
                                                      std::string(claudeHookNames.permission)});
    EXPECT_TRUE(ClaudePermissionRequest::parse(run.input, "id", now(), "/home/me"));
    platform.advance(5);
    platform.programs.end(
        0,
        {true,
         R"({"hookSpecificOutput":{"hookEventName":"PermissionRequest","decision":{"behavior":"allow"}}})"});
    EXPECT_EQ(result, HookTrialResult::allowed);
    ASSERT_EQ(platform.programs.runs.size(), 2u) << "the session ends";
    EXPECT_NE(platform.programs.runs[1].input.find("SessionEnd"), std::string::npos);
}

TEST_F(ClaudeTrialTest, ASilentScriptHasPassedOnOrWaited) {
    monitor.start();
    const Task first = begin();
    platform.advance(0.3);
    platform.programs.end(0, {true, ""});
    EXPECT_EQ(result, HookTrialResult::passedOn);
    const Task second = begin();
    platform.advance(20);
    platform.programs.end(2, {true, ""});
    EXPECT_EQ(result, HookTrialResult::unanswered);
    const Task third = begin();
    platform.programs.end(4, {});
    EXPECT_EQ(result, HookTrialResult::failed);
}

TEST_F(ClaudeTrialTest, CancelledItEndsTheScript) {
    monitor.start();
    Task task = begin();
    task.cancel();
    EXPECT_FALSE(platform.programs.isAwaited(0));
    EXPECT_FALSE(result);
}

TEST_F(ClaudeTrialTest, ItsPromptIsShownButIsNoSign) {
    monitor.start();
    platform.disk.put(std::string(spool) + "/perm-t1.json", HookTrial::request(HookTrial::sessionId(1)));
    monitor.refresh();
    EXPECT_EQ(pendingIds(), std::vector<std::string>{"t1"});
    EXPECT_FALSE(monitor.lastSign());
    platform.disk.put(
        std::string(spool) + "/perm-r1.json",
        R"({"session_id":"s1","cwd":"/p","hook_event_name":"PermissionRequest","tool_name":"Bash",)"
        R"("tool_input":{"command":"ls"}})");
    monitor.refresh();
    ASSERT_TRUE(monitor.lastSign());
    EXPECT_EQ(*monitor.lastSign(), (HookSign{HookSign::Kind::request, now()}));
}

using CodexTrialTest = CodexMonitorTest;

TEST_F(CodexTrialTest, ItsSessionHasNoTerminalAndGoesWithItsEnd) {
    // The script's parent is the program itself, whose own window the user looks at.
    platform.tasks.alive.insert(platform.tasks.ownId());
    platform.hosts.apps[platform.tasks.ownId()] = HostApp{};
    platform.hosts.frontmost.insert(platform.tasks.ownId());
    monitor.start();
    const std::string session = HookTrial::sessionId(1);
    putIntoSpool("perm-" + std::to_string(platform.tasks.ownId()) + "-t1.json", HookTrial::request(session));
    monitor.refresh();
    ASSERT_EQ(pendingIds().size(), 1u) << "although that window is in front";
    EXPECT_FALSE(monitor.lastSign());
    putIntoSpool("ev-" + std::to_string(platform.tasks.ownId()) + "-e1.json", HookTrial::end(session));
    monitor.refresh();
    EXPECT_TRUE(pendingIds().empty());
    EXPECT_TRUE(monitor.summaries().empty());
    putEvent("UserPromptSubmit");
    monitor.refresh();
    ASSERT_TRUE(monitor.lastSign());
    EXPECT_EQ(monitor.lastSign()->kind, HookSign::Kind::prompt);
}

} // namespace
} // namespace veslora
