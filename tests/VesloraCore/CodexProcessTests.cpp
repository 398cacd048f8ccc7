// SPDX-License-Identifier: MIT
#include "VesloraCore/CodexProcess.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(CodexProcess, ATerminalsOwnCodexIsAClient) {
    EXPECT_TRUE(CodexProcess::isClient("/home/me/agents/npm/bin/codex", "codex --no-daemon -m model"));
    EXPECT_TRUE(CodexProcess::isClient("codex", ""));
}

TEST(CodexProcess, TheServerBehindItIsNone) {
    const char* const server = "/home/me/.codex/packages/app-server-daemon/releases/0.169.0/bin/codex";
    EXPECT_FALSE(CodexProcess::isClient(server, "codex"));
    EXPECT_TRUE(CodexProcess::isServer(server, ""));
    EXPECT_FALSE(CodexProcess::isClient("/usr/bin/codex", "codex app-server --listen unix://"));
    EXPECT_TRUE(CodexProcess::isServer("/usr/bin/codex", "codex app-server"));
}

TEST(CodexProcess, OnlyTheExactNameCounts) {
    for (const char* path :
         {"", "/", "/usr/bin/codex2", "/usr/bin/node", "/opt/codex/bin/run", "/usr/bin/Codex"}) {
        EXPECT_FALSE(CodexProcess::isClient(path, "codex")) << path;
        EXPECT_FALSE(CodexProcess::isServer(path, "codex")) << path;
    }
}
