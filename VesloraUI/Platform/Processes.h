// SPDX-License-Identifier: MIT
// The seam that answers questions about other processes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

/// What can be told of a process that our user may look into.
struct RunningProcess {
    std::int32_t pid = 0;
    /// The whole path of its program, as it was when the process began: an upgrade that has replaced the
    /// program since changes nothing.
    std::string executable;
    std::string firstArgument; ///< the one after the program's own name; empty where there is none
    std::optional<std::string> workingDirectory; ///< absent where it can't be read
    bool operator==(const RunningProcess&) const = default;
};

class Processes {
  public:
    virtual ~Processes() = default;

    /// The program's own.
    [[nodiscard]] virtual std::int32_t ownId() const = 0;

    /// Names the space in which `ownId` counts, on one line: a program in a container counts its processes in
    /// another one. Empty where the system can't tell.
    [[nodiscard]] virtual std::string ownNamespace() const = 0;

    /// Whether a process of that id runs and may be signalled by our user. False for ids below 1 and for one
    /// that has ended and only waits to be collected.
    [[nodiscard]] virtual bool isAlive(std::int32_t pid) const = 0;

    /// Absent when there is no such process, or its program can't be told: another user's, or one that has
    /// just ended.
    [[nodiscard]] virtual std::optional<RunningProcess> processOf(std::int32_t pid) const = 0;

    /// Every process whose program's file has exactly that name, by rising ids. A look at each process of the
    /// machine: not for every moment.
    [[nodiscard]] virtual std::vector<RunningProcess> processesNamed(std::string_view name) const = 0;
};

} // namespace veslora
