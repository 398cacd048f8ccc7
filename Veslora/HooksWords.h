// SPDX-License-Identifier: MIT
// The words of the command line for agents' hooks.
#pragma once

#include "VesloraCore/Island/CommandLine.h"
#include "VesloraCore/Text/Words.h"

namespace veslora::HooksWords {

/// Does it for the agent, or for each of them, also after one that failed, with a line for each. Needs a
/// QCoreApplication. Gives the exit status: 1 if anything failed, 3 if a status is another than installed.
[[nodiscard]] int run(const CommandLine::Hooks& request, const Words& words);

} // namespace veslora::HooksWords
