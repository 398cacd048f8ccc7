// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AgentKind.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(AgentKind, HasItsRawValueNameAndMark) {
    EXPECT_EQ(rawValue(AgentKind::claude), "claude");
    EXPECT_EQ(name(AgentKind::claude), "Claude");
    EXPECT_EQ(mark(AgentKind::claude), "✻");
    EXPECT_EQ(rawValue(AgentKind::codex), "codex");
    EXPECT_EQ(name(AgentKind::codex), "Codex");
    EXPECT_EQ(mark(AgentKind::codex), ">_");
    EXPECT_LT(AgentKind::claude, AgentKind::codex);
}

TEST(AgentKind, IsReadFromItsRawValueOnly) {
    EXPECT_EQ(agentKindOf("claude"), AgentKind::claude);
    EXPECT_EQ(agentKindOf("codex"), AgentKind::codex);
    EXPECT_FALSE(agentKindOf("Claude"));
    EXPECT_FALSE(agentKindOf(""));
}
