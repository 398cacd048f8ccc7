// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AgentTraits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>

using namespace veslora;

namespace {

constexpr auto third = static_cast<AgentKind>(agentTraits.size());

} // namespace

TEST(AgentTraits, HaveTheirRawValueNameAndMark) {
    EXPECT_EQ(traitsOf(AgentKind::claude).rawValue, "claude");
    EXPECT_EQ(traitsOf(AgentKind::claude).name, "Claude");
    EXPECT_EQ(traitsOf(AgentKind::claude).glyph, "✻");
    EXPECT_EQ(traitsOf(AgentKind::codex).rawValue, "codex");
    EXPECT_EQ(traitsOf(AgentKind::codex).name, "Codex");
    EXPECT_EQ(traitsOf(AgentKind::codex).glyph, ">_");
    EXPECT_LT(AgentKind::claude, AgentKind::codex);
}

TEST(AgentTraits, AnAgentIsReadFromItsRawValueOnly) {
    EXPECT_EQ(agentKindOf("claude"), AgentKind::claude);
    EXPECT_EQ(agentKindOf("codex"), AgentKind::codex);
    EXPECT_FALSE(agentKindOf("Claude"));
    EXPECT_FALSE(agentKindOf(""));
}

TEST(AgentTraits, StandInTheOrderOfTheKindsAndTheFirstAloneIsImplied) {
    for (std::size_t index = 0; index < agentTraits.size(); ++index) {
        EXPECT_EQ(agentTraits[index].kind, static_cast<AgentKind>(index));
        EXPECT_EQ(agentTraits[index].isImplied, index == 0);
    }
}

TEST(AgentTraits, NoTwoAgentsShareAFolderAScriptOrAMarker) {
    std::set<std::string_view> names;
    for (const AgentTraits& traits : agentTraits) {
        const AgentHookNames& hooks = traits.hookNames;
        for (const std::string_view name :
             {hooks.spool, hooks.answers, hooks.event, hooks.permission, hooks.madeMarker}) {
            EXPECT_FALSE(name.empty()) << traits.name;
            EXPECT_TRUE(names.insert(name).second) << name;
        }
        EXPECT_TRUE(std::ranges::any_of(agentHookNames,
                                        [&](const auto& written) { return written.event == hooks.event; }))
            << "nobody writes the scripts of " << traits.name;
    }
}

TEST(AgentTraits, AnotherTableHasRowsOfItsOwn) {
    const std::array table{AgentTraits{.kind = AgentKind::claude, .rawValue = "claude"},
                           AgentTraits{.kind = third, .rawValue = "third", .name = "Third"}};
    EXPECT_EQ(traitsOf(third, table).name, "Third");
    EXPECT_EQ(agentKindOf("third", table), third);
    EXPECT_FALSE(agentKindOf("third"));
    EXPECT_EQ(&traitsOf(third), &agentTraits.front()) << "an agent without a row";
}

TEST(AgentTraits, EachSpinnerTurnsAtItsPeriod) {
    for (const AgentTraits& traits : agentTraits) {
        const AgentSpinner& spinner = traits.spinner;
        ASSERT_NE(spinner.frame, nullptr) << traits.name;
        EXPECT_NE(spinner.frame(0.5 * spinner.period), spinner.frame(1.5 * spinner.period)) << traits.name;
        EXPECT_GT(spinner.size, 0) << traits.name;
    }
}
