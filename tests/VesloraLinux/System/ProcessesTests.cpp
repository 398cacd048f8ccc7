// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProcProcesses.h"
#include "VesloraLinux/System/ProcessTree.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

namespace veslora {
namespace {

/// A process that waits until it is told to end.
class Child {
  public:
    Child() : m_pid(fork()) {
        if (m_pid == 0) {
            prctl(PR_SET_NAME, ") Z 1 (odd \n");
            pause();
            _exit(0);
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { collect(); }

    [[nodiscard]] pid_t pid() const { return m_pid; }

    /// Ends it but leaves it uncollected, so that it stays on as a zombie.
    void end() const {
        kill(m_pid, SIGKILL);
        siginfo_t info{};
        waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOWAIT);
    }
    void collect() {
        if (m_pid > 0) {
            kill(m_pid, SIGKILL);
            waitpid(m_pid, nullptr, 0);
            m_pid = 0;
        }
    }

  private:
    pid_t m_pid;
};

TEST(ProcProcessesTests, CallsARunningProcessAliveAndAnEndedOneNot) {
    const ProcProcesses processes;
    Child child;
    const pid_t pid = child.pid();
    EXPECT_EQ(processes.ownId(), getpid());
    EXPECT_TRUE(processes.isAlive(processes.ownId()));
    EXPECT_TRUE(processes.isAlive(pid));
    child.end();
    EXPECT_EQ(kill(pid, 0), 0);
    EXPECT_FALSE(processes.isAlive(pid));
    child.collect();
    EXPECT_FALSE(processes.isAlive(pid));
}

TEST(ProcProcessesTests, NamesTheSpaceInWhichItCountsAsTheScriptsDo) {
    const std::string space = ProcProcesses().ownNamespace();
    EXPECT_EQ(space, std::filesystem::read_symlink("/proc/self/ns/pid").string());
    EXPECT_TRUE(space.starts_with("pid:[")) << space;
    EXPECT_EQ(ProcProcesses("/nowhere").ownNamespace(), "");
}

TEST(ProcProcessesTests, CallsNothingBelowOneAlive) {
    const ProcProcesses processes;
    EXPECT_FALSE(processes.isAlive(0));
    EXPECT_FALSE(processes.isAlive(-1));
    EXPECT_FALSE(processes.isAlive(-getpgrp()));
}

/// Asks as an ordinary user about process 1, which is root's.
int askAboutTheFirstProcess() {
    if (geteuid() == 0 && setuid(65534) != 0) {
        return 2;
    }
    return ProcProcesses().isAlive(1) ? 1 : 0;
}

TEST(ProcProcessesTests, CallsAProcessThatMayNotBeSignalledDead) {
    if (geteuid() != 0 && kill(1, 0) == 0) {
        GTEST_SKIP() << "every process here is the user's own";
    }
    const pid_t child = fork();
    if (child == 0) {
        _exit(askAboutTheFirstProcess());
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(ProcessTreeTests, FindsTheParentOfARealProcessWhateverItsName) {
    const Child child;
    // The child may not have taken its odd name yet; the answer is the same before and after.
    for (int round = 0; round < 100; ++round) {
        const auto stat = ProcessTree::statOf(child.pid());
        ASSERT_TRUE(stat);
        ASSERT_EQ(stat->parent, getpid());
        ASSERT_NE(stat->state, 'Z');
    }
    EXPECT_FALSE(ProcessTree::statOf(0));
    EXPECT_FALSE(ProcessTree::statOf(-7));
}

TEST(ProcessTreeTests, ReadsNamesWithBracketsSpacesAndLineBreaks) {
    EXPECT_EQ(ProcessTree::parse("42 (sh) S 7 42 42 0"), (ProcessStat{'S', 7}));
    EXPECT_EQ(ProcessTree::parse("42 (a) Z 1 (b) c\n) R 123 1"), (ProcessStat{'R', 123}));
    EXPECT_EQ(ProcessTree::parse("42 (()))) D 5"), (ProcessStat{'D', 5}));
}

TEST(ProcessTreeTests, GivesNothingForTextOfAnotherForm) {
    for (const char* text : {"", "42", "42 (sh", "42 (sh)", "42 (sh) ", "42 (sh) S", "42 (sh) S ",
                             "42 (sh) S x", "42 (sh)S 1 2", "42 (sh) S 99999999999999999999"}) {
        EXPECT_FALSE(ProcessTree::parse(text)) << text;
    }
}

} // namespace
} // namespace veslora
