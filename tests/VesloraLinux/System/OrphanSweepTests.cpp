// SPDX-License-Identifier: MIT
// Media adapters whose program was killed, beside others that must live. Real processes.
#include "VesloraLinux/System/OrphanSweep.h"
#include "VesloraLinux/System/ProcessTree.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::Program;
using testing::waitUntil;

class OrphanSweepTest : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* name : {"veslora-test-adapter", "other/veslora-test-adapter"}) {
            std::filesystem::create_directories(folder.path("other"));
            std::filesystem::copy_file("/bin/sleep", folder.path(name));
        }
    }
    void TearDown() override {
        for (const auto& process : processes.processesNamed("veslora-test-adapter")) {
            if (process.executable.starts_with(folder.path() + '/')) {
                kill(process.pid, SIGKILL);
            }
        }
    }
    /// Starts one whose parent ends at once, so that it goes to the one who takes orphans here.
    [[nodiscard]] pid_t orphan(const std::string& name) {
        Program parent({"sh", "-c", "'" + folder.path(name) + "' 1000 >/dev/null 2>&1 & echo $! >&3"}, 3);
        const pid_t pid = std::stoi(parent.nextLine());
        parent.wait();
        EXPECT_TRUE(isRunning(pid, name));
        return pid;
    }
    [[nodiscard]] bool isRunning(pid_t pid, const std::string& name) const {
        return waitUntil([&] {
            const auto process = processes.processOf(pid);
            return process && process->executable == folder.path(name);
        });
    }
    /// Whether an orphan is recognised at all: not where a subreaper other than the service manager takes it.
    [[nodiscard]] static bool isTakenByTheFirstProcess(pid_t pid) {
        const auto stat = ProcessTree::statOf(pid);
        return stat && stat->parent == 1;
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    ProcProcesses processes;
};

TEST_F(OrphanSweepTest, EndsTheOrphanOfThisCopyAlone) {
    const pid_t left = orphan("veslora-test-adapter");
    const pid_t another = orphan("other/veslora-test-adapter");
    if (!isTakenByTheFirstProcess(left)) {
        GTEST_SKIP() << "orphans go to another process here";
    }
    const Program ours({folder.path("veslora-test-adapter"), "1000"});
    ASSERT_TRUE(isRunning(ours.pid(), "veslora-test-adapter"));
    kill(left, SIGSTOP);
    EXPECT_THAT(OrphanSweep::endOrphans(processes, folder.path("veslora-test-adapter")), ElementsAre(left));
    EXPECT_TRUE(waitUntil([&] { return !processes.processOf(left); }));
    EXPECT_TRUE(processes.isAlive(another));
    EXPECT_TRUE(processes.isAlive(ours.pid()));
}

TEST_F(OrphanSweepTest, WhoseProgramRunsIsLeftAlone) {
    const Program ours({folder.path("veslora-test-adapter"), "1000"});
    ASSERT_TRUE(isRunning(ours.pid(), "veslora-test-adapter"));
    EXPECT_THAT(OrphanSweep::endOrphans(processes, folder.path("veslora-test-adapter")), IsEmpty());
    EXPECT_TRUE(processes.isAlive(ours.pid()));
}

TEST_F(OrphanSweepTest, NothingWhereThereIsNone) {
    EXPECT_THAT(OrphanSweep::endOrphans(processes, folder.path("nothing")), IsEmpty());
    EXPECT_THAT(OrphanSweep::endOrphans(processes, ""), IsEmpty());
}

} // namespace
} // namespace veslora
