// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/AgentGlyph.h"
#include "VesloraUI/Style/VesloraStyle.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(AgentGlyph, IsDrawnInTheAgentsColourAndElseInTheOneOfText) {
    const AgentGlyph claude = AgentGlyph::of(traitsOf(AgentKind::claude));
    EXPECT_EQ(claude.text, "✻");
    EXPECT_EQ(claude.fullName, "Claude Code");
    EXPECT_EQ(claude.color, VesloraStyle::claudeOrange());
    EXPECT_TRUE(claude.isSymbol);
    EXPECT_TRUE(claude.isMascot);
    const AgentGlyph codex = AgentGlyph::of(traitsOf(AgentKind::codex));
    EXPECT_EQ(codex.text, ">_");
    EXPECT_EQ(codex.name, "Codex");
    EXPECT_EQ(codex.color, VesloraStyle::textPrimary());
    EXPECT_FALSE(codex.isSymbol);
    EXPECT_FALSE(codex.isMascot);
}

} // namespace
} // namespace veslora
