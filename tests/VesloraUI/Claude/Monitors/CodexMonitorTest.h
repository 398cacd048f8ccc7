// SPDX-License-Identifier: MIT
// Codex's monitor with what its tests put before it: events, requests and processes.
#pragma once

#include "tests/VesloraUI/Claude/Monitors/HookedMonitorTest.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace veslora {

class CodexMonitorTest : public HookedMonitorTest<codexAgent> {
  protected:
    static constexpr auto support = "/home/me/.local/share/Veslora";
    static constexpr auto spool = "/home/me/.local/share/Veslora/codex-spool";
    static constexpr auto answers = "/home/me/.local/share/Veslora/codex-answers";

    CodexMonitorTest() : HookedMonitorTest(spool, answers) { platform.tasks.alive.insert(500); }

    static std::string payload(const std::string& event, const std::string& more = {},
                               const std::string& session = "s1") {
        return R"({"session_id":")" + session + R"(","cwd":"/home/me/proj","hook_event_name":")" + event +
               "\"" + more + "}";
    }
    void putEvent(const std::string& event, const std::string& more = {}, const std::string& session = "s1",
                  int pid = 10) {
        // Names that rise, as all files of one refresh carry one moment here.
        putIntoSpool("ev-" + std::to_string(pid) + "-e" + std::to_string(1000 + ++events) + ".json",
                     payload(event, more, session));
    }
    void putRequest(const std::string& id, const std::string& tool = "Bash",
                    const std::string& session = "s1") {
        putIntoSpool("perm-" + id + ".json",
                     payload("PermissionRequest",
                             R"(,"tool_name":")" + tool + R"(","tool_input":{"command":"ls"})", session));
    }
    static std::string captured(const std::string& name) {
        std::ifstream file(std::string(VESLORA_TEST_DATA "/agents/codex/hooks/") + name, std::ios::binary);
        EXPECT_TRUE(file.good()) << name;
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    void runCodex(std::int32_t pid, const std::string& cwd = "/home/me/proj",
                  const std::string& executable = "/opt/bin/codex", const std::string& firstArgument = {}) {
        platform.tasks.running.push_back({pid, executable, firstArgument, cwd});
    }

    int events = 0;
};

} // namespace veslora
