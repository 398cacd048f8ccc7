// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
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
    AgentAnswers answers{support, "answers"};
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

TEST_F(AgentAnswersTest, TellsWhyNothingWasWritten) {
    EXPECT_FALSE(answers.write(ClaudeDecision::allow, "a"));
    EXPECT_EQ(answers.write(ClaudeDecision::allow, "../a"), std::errc::invalid_argument);
    files.writeError = std::errc::no_space_on_device;
    EXPECT_EQ(answers.write(ClaudeDecision::allow, "b"), std::errc::no_space_on_device);
    EXPECT_FALSE(answerOf("b"));
}

TEST_F(AgentAnswersTest, AnAnswerIsTakenOnceItsFileIsGone) {
    EXPECT_FALSE(answers.hasBeenTaken("a")) << "nothing can have been taken from a folder that is not there";
    answers.write(ClaudeDecision::allow, "a");
    EXPECT_FALSE(answers.hasBeenTaken("a"));
    disk.remove("/support/answers/a");
    EXPECT_TRUE(answers.hasBeenTaken("a"));
}

TEST_F(AgentAnswersTest, ALinkInPlaceOfTheFolderLedToAnothersFiles) {
    disk.clock = 1000;
    disk.put("/others/precious", "x");
    disk.put("/others/a", "x");
    disk.makeDirectory("/support", 0700);
    disk.makeLink("/others", "/support/answers");
    answers.removeStale(5000);
    EXPECT_TRUE(disk.exists("/others/precious"));
    EXPECT_TRUE(answers.write(ClaudeDecision::allow, "a"));
    EXPECT_EQ(disk.text("/others/a"), "x");
    EXPECT_FALSE(answers.hasBeenTaken("b"));
}

} // namespace
} // namespace veslora
