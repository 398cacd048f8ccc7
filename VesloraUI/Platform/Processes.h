// SPDX-License-Identifier: MIT
// The seam that answers questions about other processes.
#pragma once

#include <cstdint>

namespace veslora {

class Processes {
  public:
    virtual ~Processes() = default;

    /// The program's own.
    [[nodiscard]] virtual std::int32_t ownId() const = 0;

    /// Whether a process of that id runs and may be signalled by our user. False for ids below 1 and for one
    /// that has ended and only waits to be collected.
    [[nodiscard]] virtual bool isAlive(std::int32_t pid) const = 0;
};

} // namespace veslora
