// SPDX-License-Identifier: MIT
// The parent of processes that must not outlive it. Main thread only.
#pragma once

#include <QObject>
#include <QProcess>

namespace veslora {

class ChildProcesses : public QObject {
  public:
    ChildProcesses() = default;
    ChildProcesses(const ChildProcesses&) = delete;
    ChildProcesses& operator=(const ChildProcesses&) = delete;
    /// Ends each, and none of them calls back.
    ~ChildProcesses() override;

    [[nodiscard]] qsizetype count() const { return children().size(); }
};

} // namespace veslora
