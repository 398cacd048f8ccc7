// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/OrphanSweep.h"

#include "VesloraCore/Music/OrphanedAdapters.h"
#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraLinux/System/ProcessTree.h"
#include "VesloraUI/Platform/Logs.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>

namespace veslora::OrphanSweep {

namespace {

/// One line as `orphanedAdapters` reads it.
std::string lineOf(const RunningProcess& process, std::int32_t parent) {
    return std::to_string(process.pid) + ' ' + std::to_string(parent) + ' ' + process.executable + ' ' +
           process.firstArgument + '\n';
}

/// A process and its parent; without the parent, which may be another user's, where it can't be told.
std::string linesOf(const ProcProcesses& processes, const RunningProcess& process) {
    const auto stat = ProcessTree::statOf(process.pid);
    if (!stat) {
        return {};
    }
    const auto parent = processes.processOf(stat->parent);
    return lineOf(process, stat->parent) + (parent ? lineOf(*parent, 0) : std::string());
}

bool isOrphan(const ProcProcesses& processes, const std::string& adapter, std::int32_t pid) {
    const auto process = processes.processOf(pid);
    return process && !orphanedAdapters(linesOf(processes, *process), adapter).empty();
}

/// Through a descriptor that was opened before the last look: the id may be another process's by now. Not to
/// be refused, since it has been asked already.
bool end(const ProcProcesses& processes, const std::string& adapter, std::int32_t pid) {
    const FileDescriptor process(static_cast<int>(syscall(SYS_pidfd_open, pid, 0)));
    return process && isOrphan(processes, adapter, pid) &&
           syscall(SYS_pidfd_send_signal, process.value(), SIGKILL, nullptr, 0) == 0;
}

} // namespace

std::vector<std::int32_t> endOrphans(const ProcProcesses& processes, const std::string& adapter) {
    std::vector<std::int32_t> ended;
    for (const RunningProcess& process :
         processes.processesNamed(adapter.substr(adapter.find_last_of('/') + 1))) {
        if (isOrphan(processes, adapter, process.pid) && end(processes, adapter, process.pid)) {
            qCInfo(Logs::system, "ended the media adapter %d of a program that is gone", process.pid);
            ended.push_back(process.pid);
        }
    }
    return ended;
}

} // namespace veslora::OrphanSweep
