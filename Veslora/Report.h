// SPDX-License-Identifier: MIT
// Gathers what `veslora report` prints. It asks the machine itself, so that it also helps where the program
// does not start.
#pragma once

#include "VesloraCore/Island/BugReport.h"

namespace veslora {

/// Needs an application object, one of the graphical kind where there is a display. `running` is the status
/// line of the program that runs; absent where none does.
[[nodiscard]] BugReport gatherReport(std::optional<std::string> running);

} // namespace veslora
