// SPDX-License-Identifier: MIT
// What /proc tells of programs, folders and environments: of one laid out by hand, and of real processes.
#include "VesloraLinux/System/ProcProcesses.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::Program;
using testing::TemporaryFolder;

class LaidOutProcesses : public ::testing::Test {
  protected:
    void put(const std::string& pid, const std::string& executable, const std::string& commandLine,
             const std::string& workingDirectory = {}) {
        std::filesystem::create_directory(root.path(pid));
        if (!executable.empty()) {
            std::filesystem::create_symlink(executable, root.path(pid + "/exe"));
        }
        if (!workingDirectory.empty()) {
            std::filesystem::create_symlink(workingDirectory, root.path(pid + "/cwd"));
        }
        root.put(pid + "/cmdline", commandLine);
    }
    static std::string arguments(std::initializer_list<std::string> all) {
        std::string text;
        for (const std::string& argument : all) {
            text += argument + '\0';
        }
        return text;
    }

    TemporaryFolder root;
    ProcProcesses processes{root.path()};
};

TEST_F(LaidOutProcesses, TellsProgramArgumentsAndFolder) {
    put("42", "/opt/bin/codex", arguments({"codex", "--no-daemon", "-m", "a b"}), "/home/me/proj");
    const RunningProcess expected{42, "/opt/bin/codex", "--no-daemon", "/home/me/proj"};
    EXPECT_EQ(processes.processOf(42), expected);
    EXPECT_THAT(processes.processesNamed("codex"), ElementsAre(expected));
}

TEST_F(LaidOutProcesses, FindsTheExactNameAloneAndByRisingIds) {
    put("100", "/opt/bin/codex", "");
    put("20", "/usr/bin/codex", "");
    put("3", "/usr/bin/codex-helper", "");
    put("4", "/opt/codex/node", "codex");
    put("5", "", "codex");
    put("self", "/opt/bin/codex", "");
    put("007x", "/opt/bin/codex", "");
    std::vector<std::int32_t> ids;
    for (const auto& process : processes.processesNamed("codex")) {
        ids.push_back(process.pid);
    }
    EXPECT_THAT(ids, ElementsAre(20, 100));
}

TEST_F(LaidOutProcesses, AnUpgradedProgramAndARemovedFolderKeepTheirNames) {
    put("42", "/opt/bin/codex (deleted)", "codex", "/home/me/gone (deleted)");
    EXPECT_EQ(processes.processOf(42), (RunningProcess{42, "/opt/bin/codex", "", "/home/me/gone"}));
    EXPECT_EQ(processes.processesNamed("codex").size(), 1u);
}

TEST_F(LaidOutProcesses, AFolderThatCannotBeReadIsAbsent) {
    put("42", "/opt/bin/codex", "codex");
    EXPECT_EQ(processes.processOf(42)->workingDirectory, std::nullopt);
}

TEST_F(LaidOutProcesses, TheFirstArgumentKeepsItsBlanks) {
    put("42", "/opt/my bin/codex", arguments({"/opt/my bin/codex", "a b", "c"}));
    EXPECT_EQ(processes.processOf(42)->firstArgument, "a b");
    put("43", "/opt/bin/codex", arguments({"codex", "", "app-server"}));
    EXPECT_EQ(processes.processOf(43)->firstArgument, "");
    put("44", "/opt/bin/codex", std::string("codex\0unended", 13));
    EXPECT_EQ(processes.processOf(44)->firstArgument, "unended");
}

TEST_F(LaidOutProcesses, CutsAVeryLongCommandLine) {
    put("42", "/opt/bin/codex", arguments({"x", std::string(3 * ProcProcesses::commandLineCap, 'x')}));
    EXPECT_EQ(processes.processOf(42)->firstArgument.size(), ProcProcesses::commandLineCap - 2);
}

TEST_F(LaidOutProcesses, NothingOfWhatIsNotThere) {
    EXPECT_FALSE(processes.processOf(42));
    EXPECT_FALSE(processes.processOf(0));
    EXPECT_FALSE(processes.processOf(-1));
    EXPECT_THAT(processes.processesNamed("codex"), IsEmpty());
    EXPECT_THAT(ProcProcesses(root.path("nowhere")).processesNamed("codex"), IsEmpty());
    EXPECT_FALSE(processes.environmentOf(42, "TMUX"));
}

TEST_F(LaidOutProcesses, ReadsOneVariableOfAnEnvironment) {
    put("42", "/bin/sh", "");
    root.put("42/environ",
             arguments({"XTMUX=no", "TMUX_PANE=%3", "TMUX=/tmp/s,1,0", "EMPTY=", "TMUX=second"}) + "LAST=x");
    EXPECT_EQ(processes.environmentOf(42, "TMUX"), "/tmp/s,1,0");
    EXPECT_EQ(processes.environmentOf(42, "TMUX_PANE"), "%3");
    EXPECT_EQ(processes.environmentOf(42, "EMPTY"), "");
    EXPECT_EQ(processes.environmentOf(42, "LAST"), "x");
    EXPECT_EQ(processes.environmentOf(42, "MUX"), std::nullopt);
}

TEST(RunningProcesses, FindsARealOneAlsoAfterItsProgramWasReplaced) {
    const TemporaryFolder folder;
    const std::string program = folder.path("veslora-test-codex");
    std::filesystem::copy_file("/bin/sleep", program);
    const Program running({program, "1000"});
    const ProcProcesses processes;
    const RunningProcess expected{running.pid(), program, "1000", std::filesystem::current_path().string()};
    // The new process may not have become the program yet, or still show the command line of before.
    for (int look = 0; look < 20000 && processes.processOf(running.pid()) != expected; ++look) {
        usleep(1000);
    }
    EXPECT_EQ(processes.processOf(running.pid()), expected);
    std::filesystem::remove(program);
    EXPECT_THAT(processes.processesNamed("veslora-test-codex"), ElementsAre(expected));
    EXPECT_EQ(processes.environmentOf(running.pid(), "PATH"), std::string(getenv("PATH")));
}

} // namespace
} // namespace veslora
