// SPDX-License-Identifier: MIT
// What a program opens, written down by strace from its first breath on.
#pragma once

#include <string>
#include <vector>

namespace veslora::bench {

class Trace {
  public:
    /// `path` is of the file that strace shall write.
    explicit Trace(std::string path) : m_path(std::move(path)) {}

    /// Whether this machine lets a program be watched at all: not every container does.
    [[nodiscard]] static bool isAllowed();

    /// To be put before the program's command: strace looks on from a process of its own, and the program
    /// keeps the one that was started. Nobody has to be allowed to watch another's processes for that.
    [[nodiscard]] std::vector<std::string> runner() const;

    struct Opening {
        double time = 0; ///< seconds since 1970
        std::string path;
    };
    /// All up to now. Each is written down before the program gets its answer. Throws when there are none,
    /// since no program can begin without one.
    [[nodiscard]] std::vector<Opening> openings() const;

  private:
    std::string m_path;
};

} // namespace veslora::bench
