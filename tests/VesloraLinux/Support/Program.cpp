// SPDX-License-Identifier: MIT
#include "tests/VesloraLinux/Support/Program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <stdexcept>

namespace veslora::testing {
namespace {

constexpr int patienceMilliseconds = 20000;

[[noreturn]] void run(const std::vector<std::string>& arguments, std::optional<int> reportDescriptor,
                      int report, int input) {
    // Should the test itself be ended by force, what it started ends too.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        dup2(nothing, descriptor);
    }
    if (input >= 0) {
        dup2(input, STDIN_FILENO);
    }
    if (reportDescriptor) {
        dup2(report, *reportDescriptor);
    }
    std::vector<char*> pointers;
    for (const std::string& argument : arguments) {
        pointers.push_back(const_cast<char*>(argument.c_str()));
    }
    pointers.push_back(nullptr);
    execvp(pointers.front(), pointers.data());
    _exit(127);
}

} // namespace

Program::Pipe Program::Pipe::open() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return {ends[0], ends[1]};
}

Program::Program(const std::vector<std::string>& arguments, std::optional<int> reportDescriptor,
                 ProgramInput input)
    : Program(arguments, reportDescriptor, reportDescriptor ? Pipe::open() : Pipe(),
              input == ProgramInput::told ? Pipe::open() : Pipe()) {}

Program::Program(const std::vector<std::string>& arguments, std::optional<int> reportDescriptor, Pipe report,
                 Pipe input)
    : m_pid(fork()), m_report(report.read), m_input(input.write) {
    if (m_pid == 0) {
        run(arguments, reportDescriptor, report.write, input.read);
    }
    close(report.write);
    close(input.read);
}

Program::~Program() {
    close(m_input);
    if (m_pid > 0) {
        ::kill(m_pid, SIGTERM);
        constexpr int stepMilliseconds = 5;
        for (int waited = 0; waited < patienceMilliseconds / 10; waited += stepMilliseconds) {
            if (waitpid(m_pid, nullptr, WNOHANG) != 0) {
                m_pid = -1;
                break;
            }
            poll(nullptr, 0, stepMilliseconds);
        }
    }
    kill();
    close(m_report);
}

void Program::tell(const std::string& line) const {
    const std::string bytes = line + "\n";
    if (write(m_input, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("a program does not read its input");
    }
}

std::string Program::nextLine() const {
    std::string line;
    pollfd ready{m_report, POLLIN, 0};
    char letter = 0;
    while (poll(&ready, 1, patienceMilliseconds) > 0 && read(m_report, &letter, 1) == 1) {
        if (letter == '\n') {
            return line;
        }
        line += letter;
    }
    throw std::runtime_error("a program gave no report");
}

std::optional<int> Program::wait() {
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    return WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

void Program::kill() {
    if (m_pid > 0) {
        ::kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
        m_pid = -1;
    }
}

} // namespace veslora::testing
