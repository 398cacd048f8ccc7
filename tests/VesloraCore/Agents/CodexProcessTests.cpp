// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/CodexProcess.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(CodexProcess, ATerminalsOwnCodexIsAClient) {
    EXPECT_TRUE(CodexProcess::isClient("/home/me/agents/npm/bin/codex", "--no-daemon"));
    EXPECT_TRUE(CodexProcess::isClient("codex", ""));
}

TEST(CodexProcess, TheServerBehindItIsNone) {
    const char* const server = "/home/me/.codex/packages/app-server-daemon/releases/0.169.0/bin/codex";
    EXPECT_FALSE(CodexProcess::isClient(server, ""));
    EXPECT_TRUE(CodexProcess::isServer(server, ""));
    EXPECT_FALSE(CodexProcess::isClient("/usr/bin/codex", "app-server"));
    EXPECT_TRUE(CodexProcess::isServer("/usr/bin/codex", "app-server"));
}

TEST(CodexProcess, APromptThatNamesTheServerMakesNoServer) {
    EXPECT_TRUE(CodexProcess::isClient("/usr/bin/codex", "explain the app-server to me"));
    EXPECT_TRUE(CodexProcess::isClient("/usr/bin/codex", "app-servers"));
    EXPECT_FALSE(CodexProcess::isServer("/usr/bin/codex", "--app-server"));
}

TEST(CodexProcess, OnlyTheExactNameCounts) {
    for (const char* path :
         {"", "/", "/usr/bin/codex2", "/usr/bin/node", "/opt/codex/bin/run", "/usr/bin/Codex"}) {
        EXPECT_FALSE(CodexProcess::isClient(path, "")) << path;
        EXPECT_FALSE(CodexProcess::isServer(path, "")) << path;
    }
}
