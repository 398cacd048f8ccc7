// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ChildProcesses.h"

namespace veslora {

namespace {

/// Milliseconds for the kernel to take a killed process away: longer only in the middle of a call to a
/// device.
constexpr int patience = 1000;

} // namespace

ChildProcesses::~ChildProcesses() {
    const auto processes = findChildren<QProcess*>(Qt::FindDirectChildrenOnly);
    for (QProcess* process : processes) {
        process->disconnect();
        process->kill();
    }
    for (QProcess* process : processes) {
        process->waitForFinished(patience);
    }
}

} // namespace veslora
