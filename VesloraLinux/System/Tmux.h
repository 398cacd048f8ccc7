// SPDX-License-Identifier: MIT
// Asks the tmux server that a process runs under, by the tmux program: as it is the user's own, it speaks the
// server's language whatever the version. No shell is involved, and nothing waits for it. Main thread only.
#pragma once

#include "VesloraLinux/System/ProcProcesses.h"
#include "VesloraLinux/System/ProgramRunner.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/TerminalMultiplexer.h"

#include <QString>
#include <QStringList>

#include <string>

namespace veslora {

class Tmux final : public TerminalMultiplexer {
  public:
    /// A tmux that has not shown a pane after so many seconds is ended.
    static constexpr double timeLimit = 2;
    /// Looks under way at one time; what comes on top of them finds no client. A spool full of requests must
    /// not become as many processes.
    static constexpr int mostAtOnce = 8;

    /// `program` is found along PATH unless it is a path.
    Tmux(Scheduler& scheduler, const ProcProcesses& processes, QString program = QStringLiteral("tmux"));
    Tmux(const Tmux&) = delete;
    Tmux& operator=(const Tmux&) = delete;
    ~Tmux() override = default;

    [[nodiscard]] bool mayHold(std::int32_t pid) const override;
    [[nodiscard]] Task showPane(std::int32_t pid, const std::optional<std::string>& pane,
                                std::function<void(Client)> done) override;

    [[nodiscard]] Task findClients(std::int32_t pid, const std::optional<std::string>& pane,
                                   std::function<void(const Clients&)> done) override;

  private:
    struct Place {
        std::string socket;
        std::string pane;
    };
    using Reader = std::function<void(const std::string& output)>;

    [[nodiscard]] std::optional<std::string> socketOf(std::int32_t pid) const;
    [[nodiscard]] std::optional<Place> placeOf(std::int32_t pid,
                                               const std::optional<std::string>& pane) const;
    /// Runs a command of that server. `done` gets what it printed, and nothing at all if it failed or took
    /// longer than `limit` seconds; it is then ended.
    [[nodiscard]] Task run(const Place& place, const QStringList& command, double limit, Reader done);

    Scheduler& m_scheduler;
    const ProcProcesses& m_processes;
    QString m_program;
    ProgramRunner m_programs; ///< ends those that still run, and nobody hears of it
};

} // namespace veslora
