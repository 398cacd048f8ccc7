// SPDX-License-Identifier: MIT
// Asks the program that runs, as a process of its own, and does for it what needs no running program.
#pragma once

#include "VesloraCore/Island/CommandLine.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraLinux/DBus/RunningInstance.h"
#include "VesloraLinux/System/SupportLock.h"

#include <string>

namespace veslora::Asking {

/// The support directory of this process's user.
[[nodiscard]] std::string supportDirectory();

/// One sentence on why that directory is of no use.
[[nodiscard]] std::string unusable(const SupportLock::Unusable& why, const Words& words);

/// Needs a QCoreApplication. A session bus that hangs ends the process after five seconds, with a line on
/// standard error.
[[nodiscard]] RunningInstance::Answer ask(const CommandLine::Ask& question, const Words& words);

/// The same for what concerns settings and hooks: where no program runs, it is done here. What changes
/// something is done under the lock of a program that runs, so that one that starts meanwhile waits; in turn
/// one that has only just begun, or is about to end, is waited for.
[[nodiscard]] RunningInstance::Answer askOrDo(const CommandLine::Ask& question, const Words& words);

/// Tells of the answer, with a line's end; gives the exit status.
[[nodiscard]] int report(const RunningInstance::Answer& answer, const Words& words);

} // namespace veslora::Asking
