// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/ClaudeDecision.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(ClaudeDecision, IsOneWord) {
    EXPECT_EQ(word(ClaudeDecision::allow), "allow");
    EXPECT_EQ(word(ClaudeDecision::deny), "deny");
    EXPECT_EQ(word(ClaudeDecision::pass), "pass");
}
