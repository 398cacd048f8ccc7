// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProcProcesses.h"

#include "VesloraLinux/System/ProcessTree.h"

#include <unistd.h>

#include <csignal>

namespace veslora {

std::int32_t ProcProcesses::ownId() const {
    return getpid();
}

bool ProcProcesses::isAlive(std::int32_t pid) const {
    // Ids below 1 would ask about whole groups of processes.
    if (pid < 1 || kill(pid, 0) != 0) {
        return false;
    }
    const auto stat = ProcessTree::statOf(pid);
    // Where /proc hides a process that may be signalled, the signal's word stands.
    return !stat || (stat->state != 'Z' && stat->state != 'X');
}

} // namespace veslora
