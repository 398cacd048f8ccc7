// SPDX-License-Identifier: MIT
// Answers about other processes by signal 0 and /proc. Usable from any thread.
#pragma once

#include "VesloraUI/Platform/Processes.h"

namespace veslora {

class ProcProcesses final : public Processes {
  public:
    [[nodiscard]] std::int32_t ownId() const override;
    [[nodiscard]] bool isAlive(std::int32_t pid) const override;
};

} // namespace veslora
