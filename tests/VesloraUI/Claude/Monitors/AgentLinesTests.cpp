// SPDX-License-Identifier: MIT
// What the log says of a prompt's way through the program, and that it says nothing of what the prompt says.
#include "tests/VesloraUI/Claude/Monitors/ClaudeMonitorTest.h"
#include "tests/support/LogRecorder.h"

#include <gmock/gmock.h>

namespace veslora {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::LogRecorder;
using ::testing::Not;

/// Stands for everything that is the user's: text, input, folder and name of the session.
const std::string marker = "heliotrope";

auto says(const std::string& text) {
    return Field(&LogRecorder::Line::text, HasSubstr(text));
}

class AgentLinesTests : public ClaudeMonitorTest {
  protected:
    void putMarkedRequest(const std::string& id) {
        putEvent("perm-" + id + ".json", "PermissionRequest",
                 R"(,"cwd":"/home/me/)" + marker + R"(","tool_name":")" + marker +
                     R"(","tool_input":{"command":")" + marker + R"("},"message":")" + marker + "\"");
    }
    void begin() {
        putSession("s1", "busy", now(), R"(,"name":")" + marker + "\"");
        monitor.start();
        finishReading();
    }
    void ask(const std::string& id) {
        putMarkedRequest(id);
        platform.watches.fire(spool);
        finishReading();
    }
};

TEST_F(AgentLinesTests, APromptAndItsAnswerAreToldWithoutAWordOfTheirs) {
    const LogRecorder recorder;
    begin();
    ask("aaaaaa");
    ASSERT_EQ(pendingIds(), std::vector<std::string>{"aaaaaa"});
    EXPECT_EQ(monitor.answer("aaaaaa", ClaudeDecision::deny), AnswerOutcome::given);
    EXPECT_THAT(recorder.decisions(),
                AllOf(Contains(says("request aaaaaa of")), Contains(says("answer deny to aaaaaa")),
                      Contains(says("aaaaaa was answered "))));
    EXPECT_THAT(recorder.lines(), Each(Not(says(marker))));
    EXPECT_THAT(recorder.warnings(), IsEmpty());
}

TEST_F(AgentLinesTests, AnIdThatNoScriptMadeIsNotRepeated) {
    const LogRecorder recorder;
    begin();
    ask(marker + " " + marker);
    EXPECT_EQ(monitor.answer(marker + " " + marker, ClaudeDecision::deny), AnswerOutcome::tooLate);
    EXPECT_THAT(recorder.lines(), Each(Not(says(marker))));
}

TEST_F(AgentLinesTests, ARequestThatRunsOutIsTold) {
    const LogRecorder recorder;
    begin();
    ask("aaaaaa");
    platform.time.advance(ClaudePermissions::wait);
    EXPECT_THAT(pendingIds(), IsEmpty());
    EXPECT_THAT(recorder.decisions(), Contains(says("aaaaaa has run out of time")));
}

TEST_F(AgentLinesTests, NothingOfItIsPrintedUnasked) {
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    begin();
    ask("aaaaaa");
    EXPECT_EQ(monitor.answer("aaaaaa", ClaudeDecision::allow), AnswerOutcome::given);
    EXPECT_THAT(silent.lines(), IsEmpty());
}

} // namespace
} // namespace veslora
