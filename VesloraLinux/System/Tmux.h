// SPDX-License-Identifier: MIT
// Asks the tmux server that a process runs under, by the tmux program: as it is the user's own, it speaks the
// server's language whatever the version. No shell is involved, and nothing waits for it. Main thread only.
#pragma once

#include "VesloraLinux/System/ProcProcesses.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/TerminalMultiplexer.h"

#include <QObject>
#include <QString>

#include <string>

namespace veslora {

class Tmux final : public TerminalMultiplexer {
  public:
    /// A tmux that has not answered after so many seconds is ended.
    static constexpr double timeLimit = 2;

    /// `program` is found along PATH unless it is a path.
    Tmux(Scheduler& scheduler, const ProcProcesses& processes, QString program = QStringLiteral("tmux"));

    [[nodiscard]] Task showPane(std::int32_t pid, const std::optional<std::string>& pane,
                                std::function<void(Client)> done) override;

  private:
    Scheduler& m_scheduler;
    const ProcProcesses& m_processes;
    QString m_program;
    QObject m_running; ///< parent of the programs that run
};

} // namespace veslora
