// SPDX-License-Identifier: MIT
// The seam for running another program to its end and reading what it prints. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <functional>
#include <string>
#include <vector>

namespace veslora {

class ProgramRunning {
  public:
    struct Result {
        bool isDone = false; ///< it was started and ended by itself in time, with exit status 0
        std::string output;  ///< what it printed; empty unless it is done
    };

    virtual ~ProgramRunning() = default;

    /// Starts `arguments`, the first of which is the program's path, and gives it `input`. What still runs
    /// after `limit` seconds is ended. `done` is called once, later and never within this call. Cancelling
    /// ends the program as a terminal that closes would, and drops `done`.
    [[nodiscard]] virtual Task run(const std::vector<std::string>& arguments, const std::string& input,
                                   double limit, std::function<void(const Result&)> done) = 0;
};

} // namespace veslora
