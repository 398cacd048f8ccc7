// SPDX-License-Identifier: MIT
// The version of the program that was installed in the place of the one that runs.
#pragma once

#include <string>
#include <vector>

namespace veslora {

class Successor {
  public:
    /// Remembers what this process was started with and from which file. To be made before anything changes
    /// that.
    Successor(int argc, char** argv);

    /// Goes on as that program, started as this one was: the process stays, so that its supervisor
    /// sees no end. Returns only when that fails, with the reason.
    [[nodiscard]] std::string become();

  private:
    std::string m_program; ///< the path of the executable
    std::vector<std::string> m_arguments;
    std::vector<std::string> m_environment;
};

} // namespace veslora
