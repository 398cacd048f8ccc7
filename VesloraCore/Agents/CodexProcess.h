// SPDX-License-Identifier: MIT
// Tells the processes in which a user runs Codex from the servers behind them. Codex hands its hooks to a
// server that all its terminals share and that outlives them, so that a hook's parent is mostly not the
// session's own process. Pure functions, any thread.
#pragma once

#include "VesloraCore/Text/PathText.h"

#include <string_view>

namespace veslora::CodexProcess {

/// The name of Codex's program.
inline constexpr std::string_view programName = "codex";

/// Whether a process with this program and this argument after its name serves sessions instead of being one.
/// Further arguments say nothing: they may be what the user asks Codex to do.
[[nodiscard]] inline bool isServer(std::string_view executable, std::string_view firstArgument) {
    constexpr std::string_view sign = "app-server";
    return executable.find(sign) != std::string_view::npos || firstArgument == sign;
}

/// Whether it is a terminal's own Codex. `executable` is the program's whole path.
[[nodiscard]] inline bool isClient(std::string_view executable, std::string_view firstArgument) {
    return PathText::lastComponent(executable) == programName && !isServer(executable, firstArgument);
}

} // namespace veslora::CodexProcess
