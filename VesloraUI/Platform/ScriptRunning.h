// SPDX-License-Identifier: MIT
// The seam for the few sentences by which another application is controlled. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <cstdint>
#include <functional>
#include <string>
#include <variant>

namespace veslora {

enum class MusicError : std::uint8_t {
    automationDenied, ///< the user has not allowed the program to control that application
    failed,           ///< anything else: the application does not run, refuses, or does not answer
};

class ScriptRunning {
  public:
    /// What the script gave, empty where it gives nothing, or why it failed.
    using Result = std::variant<std::string, MusicError>;

    /// Seconds after which a script is given up as failed.
    static constexpr double timeLimit = 3;

    virtual ~ScriptRunning() = default;

    /// Runs a script, such as "tell application \"Spotify\" to playpause". Scripts run one after the other,
    /// in the order in which they were given. `done` is called once, later and never within this call, and
    /// sees every change of the application that came before its answer as told already. Cancelling drops
    /// `done` only.
    [[nodiscard]] virtual Task run(const std::string& script, std::function<void(const Result&)> done) = 0;
};

} // namespace veslora
