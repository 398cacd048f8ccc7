// SPDX-License-Identifier: MIT
// What the log says of the spool's files and the answers: one line for each failure, none for one that lasts.
#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Claude/Spool/SpoolRound.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/OneLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::AllOf;
using ::testing::IsEmpty;
using testing::LogRecorder;
using testing::noLineWith;

const std::string support = "/home/me/.local/share/Veslora";
const std::string marker = "heliotrope";

auto oneLine(const std::string& about, std::errc reason) {
    return AllOf(testing::oneLine("veslora.spool", about, reason), noLineWith(marker));
}

class SpoolLinesTests : public ::testing::Test {
  protected:
    FakePlatform platform;
    FaultInjectingFiles files{platform.disk};
    SupportDirectory directory{files, support, support};
    AgentAnswers answers{directory, "answers"};

    /// One round over a spool with one file.
    void readSpool() {
        SpoolRound round(
            std::move(files.openFolder(support + "/spool").folder),
            [](const SpoolFile&) { return SpoolNews(); }, {}, std::nullopt);
        ASSERT_TRUE(round.find(10));
        round.read({.files = 10, .bytes = 1000, .longest = SpoolRound::payloadCap});
        round.takeIn();
    }
};

TEST_F(SpoolLinesTests, AnAnswerThatCannotBeWritten) {
    ASSERT_FALSE(answers.write(ClaudeDecision::pass, "first"));
    const LogRecorder recorder;
    files.writeError = std::errc::no_space_on_device;
    EXPECT_TRUE(answers.write(ClaudeDecision::allow, "aaaaaa"));
    EXPECT_THAT(recorder.warnings(), oneLine("answers/aaaaaa", std::errc::no_space_on_device));
}

TEST_F(SpoolLinesTests, AFileThatCannotBeRead) {
    platform.disk.put(support + "/spool/perm-a.json", marker);
    const LogRecorder recorder;
    files.readError = std::errc::io_error;
    readSpool();
    EXPECT_THAT(recorder.warnings(), oneLine("perm-a.json", std::errc::io_error));
}

TEST_F(SpoolLinesTests, AHeartbeatThatCannotBeWrittenIsToldOfOnce) {
    const auto presence = directory.show(platform.tasks, 100);
    const LogRecorder recorder;
    files.writeError = std::errc::read_only_file_system;
    for (int beat = 1; beat < 4; ++beat) {
        directory.writeHeartbeat(100 + 2 * beat);
    }
    EXPECT_THAT(recorder.warnings(), oneLine(support, std::errc::read_only_file_system));
    files.writeError.reset();
    directory.writeHeartbeat(110);
    files.writeError = std::errc::read_only_file_system;
    directory.writeHeartbeat(112);
    EXPECT_EQ(recorder.warnings().size(), 2U);
}

TEST_F(SpoolLinesTests, NoneOfItIsPrintedUnasked) {
    platform.disk.put(support + "/spool/perm-a.json", marker);
    const LogRecorder silent(LogRecorder::Categories::byDefault);
    files.readError = std::errc::io_error;
    readSpool();
    files.writeError = std::errc::no_space_on_device;
    EXPECT_TRUE(answers.write(ClaudeDecision::allow, "aaaaaa"));
    directory.writeHeartbeat(100);
    EXPECT_THAT(silent.lines(), IsEmpty());
}

} // namespace
} // namespace veslora
