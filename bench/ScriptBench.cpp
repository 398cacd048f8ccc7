// SPDX-License-Identifier: MIT
// The installed event script, which runs at each step of an agent, against the least that a shell needs to
// file what it is given: a copy and a rename. The two take turns, and each pair gives one ratio.
#include "bench/Arguments.h"
#include "bench/Clock.h"
#include "bench/Home.h"
#include "bench/Measurements.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace veslora::bench {

namespace {

/// Milliseconds that a command takes from its start to its end, in `folder` and with `input` as its standard
/// input.
double timeOf(std::vector<std::string> command, const std::string& folder, const std::string& input) {
    const auto arguments = argumentsOf(command);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    pid_t process = -1;
    int status = -1;
    const double start = monotonicNow();
    const int error = posix_spawnp(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
    if (error == 0) {
        waitpid(process, &status, 0);
    }
    const double time = monotonicNow() - start;
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0 || status != 0) {
        throw std::runtime_error(command.front() + " did not run");
    }
    return time * 1000;
}

/// Empties a folder, so that no round finds what an earlier one left: replacing a file takes longer than
/// making one.
std::size_t takeFiled(const std::string& spool) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(spool)) {
        count += std::filesystem::remove(entry.path()) ? 1 : 0;
    }
    return count;
}

} // namespace

void measureEventScript(const Bench& bench) {
    const Home home(bench.executables);
    const std::string other = home.path() + "/other";
    std::filesystem::create_directory(other);
    const std::string input = home.path() + "/input";
    std::ofstream(input) << hookPayload("PostToolUse", Home::sessionId(0), "make check");
    const std::vector<std::string> script{home.support() + "/claude-hook.sh"};
    const std::vector<std::string> least{"sh", "-c", "cat >f.tmp && mv f.tmp f"};
    std::vector<double> times;
    std::vector<double> ratios;
    const int warmUp = 3;
    const int rounds = warmUp + bench.choose(1000, 20);
    for (int round = 0; round < rounds; ++round) {
        const bool isScriptFirst = round % 2 == 0;
        const double first = timeOf(isScriptFirst ? script : least, other, input);
        const double second = timeOf(isScriptFirst ? least : script, other, input);
        if (takeFiled(home.spool()) != 1 || takeFiled(other) != 1) {
            throw std::runtime_error("nothing was filed");
        }
        if (round >= warmUp) {
            times.push_back(isScriptFirst ? first : second);
            ratios.push_back(isScriptFirst ? first / second : second / first);
        }
    }
    bench.report.add({"event_script_ms", median(times), "ms", {}, {0.2, 5000}});
    bench.report.add({"event_script_ratio", median(ratios), "times", 1.45, {0.2, 50}});
}

} // namespace veslora::bench
