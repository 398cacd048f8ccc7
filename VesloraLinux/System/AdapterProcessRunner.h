// SPDX-License-Identifier: MIT
// Runs the media adapter, our helper beside the program's own executable: one process for the stream, and a
// short one for each command. Main thread only.
#pragma once

#include "VesloraLinux/System/ChildProcesses.h"
#include "VesloraUI/Platform/AdapterProcess.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QString>

namespace veslora {

class AdapterProcessRunner final : public AdapterProcess {
  public:
    /// `adapter` is the helper's path.
    AdapterProcessRunner(Scheduler& scheduler, QString adapter)
        : m_scheduler(scheduler), m_adapter(std::move(adapter)) {}
    AdapterProcessRunner(const AdapterProcessRunner&) = delete;
    AdapterProcessRunner& operator=(const AdapterProcessRunner&) = delete;
    /// Ends the stream, and nobody hears of it.
    ~AdapterProcessRunner() override = default;

    [[nodiscard]] bool start(LineHandler onLine, ExitHandler onExit) override;
    void stop() override;
    void send(AdapterCommand command) override;

  private:
    void sweepOrphans();
    void listen(QProcess& process, LineHandler onLine);
    void ended(ExitHandler onExit);

    Scheduler& m_scheduler;
    QString m_adapter;
    bool m_hasSwept = false;
    Task m_sweep;
    QProcess* m_process = nullptr; ///< the stream
    ChildProcesses m_running;      ///< the stream, and those that are about to end
    ChildProcesses m_commands;
};

} // namespace veslora
