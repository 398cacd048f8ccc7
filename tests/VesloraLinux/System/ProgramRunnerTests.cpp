// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/System/ProgramRunner.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

namespace veslora {
namespace {

using testing::waitUntil;

class ProgramRunnerTests : public ::testing::Test {
  protected:
    [[nodiscard]] Task start(const std::string& script, const std::string& input = {}, double limit = 30) {
        return runner.run({"/bin/sh", "-c", script, "sh", place.path("sign")}, input, limit,
                          [this](const ProgramRunning::Result& told) { result = told; });
    }
    [[nodiscard]] bool hasSign() const { return std::filesystem::exists(place.path("sign")); }

    testing::CoreApplication application;
    testing::TemporaryFolder place;
    LinuxScheduler scheduler;
    ProgramRunner runner{scheduler};
    std::optional<ProgramRunning::Result> result;
};

TEST_F(ProgramRunnerTests, GivesWhatIsPrintedForWhatWasPutIn) {
    const Task task = start("tr a-z A-Z", "what is said");
    EXPECT_FALSE(result) << "never within the call";
    ASSERT_TRUE(waitUntil([this] { return result.has_value(); }));
    EXPECT_TRUE(result->isDone);
    EXPECT_EQ(result->output, "WHAT IS SAID");
    EXPECT_TRUE(waitUntil([this] { return runner.count() == 0; }));
}

TEST_F(ProgramRunnerTests, WithoutInputThereIsItsEnd) {
    const Task task = start("cat; echo end");
    ASSERT_TRUE(waitUntil([this] { return result.has_value(); }));
    EXPECT_EQ(result->output, "end\n");
}

TEST_F(ProgramRunnerTests, AFailureSaysNothing) {
    const Task failed = start("echo half; exit 3");
    ASSERT_TRUE(waitUntil([this] { return result.has_value(); }));
    EXPECT_FALSE(result->isDone);
    EXPECT_EQ(result->output, "");
    result.reset();
    const Task missing = runner.run({"/no/such/program"}, "", 30,
                                    [this](const ProgramRunning::Result& told) { result = told; });
    EXPECT_FALSE(result);
    ASSERT_TRUE(waitUntil([this] { return result.has_value(); }));
    EXPECT_FALSE(result->isDone);
}

TEST_F(ProgramRunnerTests, WhatTakesTooLongIsEnded) {
    const Task task = start("exec sleep 100", "", 0.05);
    ASSERT_TRUE(waitUntil([this] { return result.has_value(); }));
    EXPECT_FALSE(result->isDone);
    EXPECT_TRUE(waitUntil([this] { return runner.count() == 0; }));
}

TEST_F(ProgramRunnerTests, WhatPrintsWithoutEndIsEnded) {
    const Task task = start("exec yes");
    ASSERT_TRUE(waitUntil([this] { return result.has_value(); }));
    EXPECT_FALSE(result->isDone);
}

TEST_F(ProgramRunnerTests, CancelledItIsAskedToEndAndNobodyHearsOfIt) {
    Task task = start("trap 'echo >\"$1\"; exit 0' TERM; echo >\"$1.begun\"; while :; do sleep 0.01; done");
    ASSERT_TRUE(waitUntil([this] { return std::filesystem::exists(place.path("sign.begun")); }));
    task.cancel();
    EXPECT_TRUE(waitUntil([this] { return hasSign() && runner.count() == 0; }));
    EXPECT_FALSE(result);
}

TEST_F(ProgramRunnerTests, OneThatMayRunOnDoesSo) {
    Task task =
        runner.run({.program = "/bin/sh",
                    .arguments = {"-c", "echo >\"$1\"", "sh", QString::fromStdString(place.path("sign"))},
                    .limit = 30,
                    .whenCancelled = ProgramRunner::WhenCancelled::runsOn},
                   [this](const ProgramRunning::Result& told) { result = told; });
    task.cancel();
    EXPECT_TRUE(waitUntil([this] { return hasSign() && runner.count() == 0; }));
    EXPECT_FALSE(result);
}

} // namespace
} // namespace veslora
