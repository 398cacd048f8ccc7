// SPDX-License-Identifier: MIT
// Asks the helper that fetches and checks what strangers send; nothing of that is done in the program itself.
// Main thread only.
#pragma once

#include "VesloraCore/Updates/UpdateMessages.h"
#include "VesloraUI/Platform/ProgramRunning.h"

#include <functional>
#include <string>
#include <utility>

namespace veslora {

class UpdateHelper {
  public:
    /// `program` is the helper's path.
    UpdateHelper(ProgramRunning& programs, std::string program)
        : m_programs(programs), m_program(std::move(program)) {}

    /// `done` is called once, later and never within this call. A helper that breaks off, says nothing that
    /// is an answer, or takes longer than `limit` seconds answers `UpdateFailure::helper`. Cancelling ends it
    /// and drops `done`.
    [[nodiscard]] Task ask(const UpdateQuestion& question, double limit,
                           std::function<void(const UpdateAnswer&)> done);

  private:
    ProgramRunning& m_programs;
    std::string m_program;
};

} // namespace veslora
