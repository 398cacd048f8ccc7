// SPDX-License-Identifier: MIT
// Answers about other processes by signal 0 and /proc, without starting any. Usable from any thread.
#pragma once

#include "VesloraUI/Platform/Processes.h"

#include <string>

namespace veslora {

class ProcProcesses final : public Processes {
  public:
    /// More of a command line is not read.
    static constexpr std::size_t commandLineCap = std::size_t{64} << 10;

    /// `root` is where the kernel shows its processes; tests lay out another one.
    explicit ProcProcesses(std::string root = "/proc");

    [[nodiscard]] std::int32_t ownId() const override;
    [[nodiscard]] std::string ownNamespace() const override;
    [[nodiscard]] bool isAlive(std::int32_t pid) const override;
    [[nodiscard]] std::optional<RunningProcess> processOf(std::int32_t pid) const override;
    [[nodiscard]] std::vector<RunningProcess> processesNamed(std::string_view name) const override;

    /// The value of a variable in the environment that a process was started with. Absent where it is not set
    /// or can't be read.
    [[nodiscard]] std::optional<std::string> environmentOf(std::int32_t pid, std::string_view name) const;

  private:
    [[nodiscard]] std::string pathOf(std::int32_t pid, std::string_view file) const;
    [[nodiscard]] std::optional<std::string> linkOf(std::int32_t pid, std::string_view file) const;
    [[nodiscard]] RunningProcess withDetails(std::int32_t pid, std::string executable) const;

    std::string m_root;
};

} // namespace veslora
