// SPDX-License-Identifier: MIT
// A program that a test starts and that ends with it.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace veslora::testing {

class Program {
  public:
    /// Runs `arguments`, the first of which is found along PATH. With `reportDescriptor` the program can
    /// write to that descriptor what `firstLine` then gives. Its own output is dropped.
    explicit Program(const std::vector<std::string>& arguments, std::optional<int> reportDescriptor = {});
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    /// Ends it, by force if asking does not help.
    ~Program();

    [[nodiscard]] pid_t pid() const { return m_pid; }
    /// Waits for the first line of the report; throws when the program ends without one.
    [[nodiscard]] std::string firstLine() const;
    /// Waits for its end; gives the exit status, or absent when a signal ended it.
    std::optional<int> wait();
    void kill();

  private:
    pid_t m_pid = -1;
    int m_report = -1;
};

} // namespace veslora::testing
