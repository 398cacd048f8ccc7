// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/AgentAnswers.h"
#include "VesloraUI/Claude/SupportDirectory.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;

class AgentAnswersTest : public testing::Test {
  protected:
    [[nodiscard]] std::optional<std::string> answerOf(const std::string& id) const {
        return disk.text("/support/answers/" + id);
    }

    MemoryFiles disk;
    FaultInjectingFiles files{disk};
    SupportDirectory support{files, "/support", "/support"};
    AgentAnswers answers{files, support, "answers"};
};

TEST_F(AgentAnswersTest, OneWordForOurUserAlone) {
    answers.write(ClaudeDecision::allow, "a");
    answers.write(ClaudeDecision::deny, "10-b");
    answers.write(ClaudeDecision::pass, "c");
    EXPECT_EQ(answerOf("a"), "allow");
    EXPECT_EQ(answerOf("10-b"), "deny");
    EXPECT_EQ(answerOf("c"), "pass");
    EXPECT_EQ(disk.stat("/support/answers/a", Links::refuse)->mode, 0600u);
    EXPECT_EQ(disk.stat("/support/answers", Links::refuse)->mode, 0700u);
}

TEST_F(AgentAnswersTest, OnlyAPlainIdNamesAFile) {
    for (const std::string& id : {std::string(), std::string(".."), std::string("a/b"), std::string("a.b"),
                                  std::string("a b"), std::string(65, 'a')}) {
        EXPECT_FALSE(AgentAnswers::isId(id)) << id;
        answers.write(ClaudeDecision::allow, id);
    }
    EXPECT_TRUE(AgentAnswers::isId(std::string(64, 'a')));
    EXPECT_FALSE(disk.exists("/support/answers"));
}

TEST_F(AgentAnswersTest, WhatNobodyCameForGoesAfterAMinute) {
    disk.clock = 1000;
    answers.write(ClaudeDecision::allow, "old");
    disk.clock = 1030;
    answers.write(ClaudeDecision::allow, "new");
    answers.removeStale(1060);
    EXPECT_TRUE(answerOf("old"));
    answers.removeStale(1060.5);
    EXPECT_THAT(disk.list("/support/answers").value(), ElementsAre("new"));
}

} // namespace
} // namespace veslora
