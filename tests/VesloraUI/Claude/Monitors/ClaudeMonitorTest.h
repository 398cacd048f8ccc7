// SPDX-License-Identifier: MIT
// Claude Code's monitor with what its tests put before it: session files, events and requests.
#pragma once

#include "tests/VesloraUI/Claude/Monitors/HookedMonitorTest.h"

#include <string>

namespace veslora {

class ClaudeMonitorTest : public HookedMonitorTest<claudeAgent> {
  protected:
    static constexpr auto support = "/home/me/.local/share/Veslora";
    static constexpr auto spool = "/home/me/.local/share/Veslora/claude-spool";
    static constexpr auto answers = "/home/me/.local/share/Veslora/answers";
    static constexpr auto sessions = "/home/me/.claude/sessions";

    ClaudeMonitorTest() : HookedMonitorTest(spool, answers) {}

    /// A session's file. An empty `status` leaves the key out.
    void putSession(const std::string& id, const std::string& status, double since,
                    const std::string& more = {}, int pid = 10) {
        platform.disk.put(std::string(sessions) + "/" + std::to_string(pid) + ".json",
                          R"({"sessionId":")" + id + R"(","pid":)" + std::to_string(pid) +
                              R"(,"cwd":"/home/me/proj","status":")" + status + R"(","statusUpdatedAt":)" +
                              std::to_string(static_cast<std::int64_t>(since * 1000)) + more + "}");
    }
    void putEvent(const std::string& name, const std::string& event, const std::string& more = {},
                  const std::string& session = "s1") {
        putIntoSpool(name,
                     R"({"session_id":")" + session + R"(","hook_event_name":")" + event + "\"" + more + "}");
    }
    void putRequest(const std::string& id, const std::string& tool = "Bash",
                    const std::string& session = "s1") {
        putEvent("perm-" + id + ".json", "PermissionRequest",
                 R"(,"cwd":"/home/me/proj","tool_name":")" + tool + R"(","tool_input":{"command":"ls"})",
                 session);
    }
};

} // namespace veslora
