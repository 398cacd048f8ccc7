// SPDX-License-Identifier: MIT
// A program that a test starts and that ends with it.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace veslora::testing {

enum class ProgramInput {
    none, ///< it finds the end of its input at once
    told, ///< it reads what `tell` gives it, and the end once the `Program` has gone
};

class Program {
  public:
    /// Runs `arguments`, the first of which is found along PATH. With `reportDescriptor` the program can
    /// write to that descriptor what `nextLine` then gives. Its other output is dropped.
    explicit Program(const std::vector<std::string>& arguments, std::optional<int> reportDescriptor = {},
                     ProgramInput input = ProgramInput::none);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    /// Ends it, by force if asking does not help.
    ~Program();

    [[nodiscard]] pid_t pid() const { return m_pid; }
    /// Writes a line to its input.
    void tell(const std::string& line) const;
    /// Waits for the next line of the report; throws when the program ends without one.
    [[nodiscard]] std::string nextLine() const;
    /// Waits for its end; gives the exit status, or absent when a signal ended it.
    std::optional<int> wait();
    void kill();

  private:
    struct Pipe {
        /// Neither end reaches a program unless it is handed over.
        static Pipe open();
        int read = -1;
        int write = -1;
    };
    Program(const std::vector<std::string>& arguments, std::optional<int> reportDescriptor, Pipe report,
            Pipe input);

    pid_t m_pid;
    int m_report;
    int m_input;
};

} // namespace veslora::testing
