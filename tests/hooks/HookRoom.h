// SPDX-License-Identifier: MIT
// A support directory of its own for each test, and the ways to run a hook script in it: under each shell,
// with the real clock or with one that the test moves, as another user, on a full disk.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::test {

/// A shell, and whether it also brings cat, mv and the other tools.
struct Shell {
    std::string name;
    std::vector<std::string> command;
    bool bringsTools = false;
};

[[nodiscard]] const std::vector<Shell>& shells();
inline void PrintTo(const Shell& shell, std::ostream* stream) {
    *stream << shell.name;
}

/// The files that the scripts of one agent use.
struct Agent {
    std::string name;
    std::string hook;
    std::string permission;
    std::string spool;
    std::string answers;
    std::string eventPattern;      ///< of an event's name in the spool
    std::string permissionPattern; ///< of a request's, the id as its first group
};

[[nodiscard]] const std::vector<Agent>& agents();
inline void PrintTo(const Agent& agent, std::ostream* stream) {
    *stream << agent.name;
}

struct Result {
    int status = -1; ///< as the shell counts it: 128 plus the signal for a process that was killed
    std::string out;
    std::string err;
    bool operator==(const Result&) const = default;
};
inline void PrintTo(const Result& result, std::ostream* stream) {
    *stream << "status " << result.status << ", out \"" << result.out << "\", err \"" << result.err << '"';
}

/// What a script must end with in any case.
inline const Result silence = {0, "", ""};

enum class Clock { real, manual };
enum class User { ours, stranger }; ///< the stranger may read, but not write what is ours
enum class FullDisk { no, writeFails, writerIsKilled };

struct Options {
    std::map<std::string, std::string> environment = {};
    Clock clock = Clock::manual;
    User user = User::ours;
    FullDisk disk = FullDisk::no;
    bool byNameAlone = false;    ///< started in its own directory, without a path
    bool inputStaysOpen = false; ///< standard input is a pipe that nobody closes
};

/// A script that runs. Ended together with everything it started when it goes out of scope.
class Running {
  public:
    /// Takes over the ends of its pipes; `input` is -1 where nobody holds its standard input open.
    Running(pid_t pid, int input, int out, int err) : m_pid(pid), m_input(input), m_out(out), m_err(err) {}
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running();

    /// Waits for its end; fails the test when that takes over half a minute. It may write as much as a pipe
    /// holds.
    Result result();
    /// Writes more to a standard input that stays open, as an agent does, and closes it. False when the
    /// script has gone before it took everything.
    bool feed(std::string_view bytes);
    void signal(int number) const;
    void signalGroup(int number) const;

  private:
    pid_t m_pid;
    int m_input;
    int m_out;
    int m_err;
    bool m_isEnded = false;
};

class HookRoom {
  public:
    explicit HookRoom(Shell shell);
    HookRoom(const HookRoom&) = delete;
    HookRoom& operator=(const HookRoom&) = delete;
    ~HookRoom();

    /// A path in the support directory, whose own name has a blank and a single quote in it.
    [[nodiscard]] std::string path(const std::string& name) const { return m_support + "/" + name; }
    void write(const std::string& name, std::string_view bytes) const;
    [[nodiscard]] std::string read(const std::string& name) const;
    [[nodiscard]] bool exists(const std::string& name) const;
    /// Sorted; empty for a directory that is not there.
    [[nodiscard]] std::vector<std::string> names(const std::string& directory) const;
    [[nodiscard]] unsigned mode(const std::string& name) const;

    /// What `date` says under the manual clock.
    void setTime(long long seconds) const;
    /// Has `sleep` run shell commands on its n-th call under the manual clock, from 1. They find the support
    /// directory in $support and the id of the one request in $id; $PPID is the script.
    void atPoll(int number, const std::string& commands) const;
    /// How often the script slept under the manual clock.
    [[nodiscard]] int polls() const;
    /// Makes every `mktemp` use this suffix.
    void setSuffix(const std::string& suffix) const;

    [[nodiscard]] std::unique_ptr<Running> start(const std::string& script, std::string_view input,
                                                 const Options& options = {});
    [[nodiscard]] Result run(const std::string& script, std::string_view input, const Options& options = {});

  private:
    [[nodiscard]] std::vector<std::string> environment(const Options& options) const;
    void writeTools() const;

    Shell m_shell;
    std::string m_root;
    std::string m_support;
    int m_runs = 0;
};

/// Looks until something is true; false after half a minute.
[[nodiscard]] bool becomesTrue(const std::function<bool()>& condition);

} // namespace veslora::test
