// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/Tmux.h"

#include "VesloraCore/Agents/TmuxText.h"
#include "VesloraUI/Platform/Logs.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace veslora {

namespace {

bool isOwnSocket(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == geteuid();
}

/// The pane is a number behind "%", so that it can be neither an option nor the end of a command.
QStringList select(const std::string& pane) {
    const QString number = QString::fromUtf8(pane);
    return {QStringLiteral("select-window"), QStringLiteral("-t"), number, QStringLiteral(";"),
            QStringLiteral("select-pane"),   QStringLiteral("-t"), number, QStringLiteral(";")};
}

QStringList listClients() {
    return {QStringLiteral("list-clients"), QStringLiteral("-F"), QString::fromUtf8(TmuxText::clientFormat)};
}

/// A server of the same kind that the program itself was started under has no part in this.
QProcessEnvironment environment() {
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    result.remove(QStringLiteral("TMUX"));
    result.remove(QStringLiteral("TMUX_PANE"));
    return result;
}

} // namespace

Tmux::Tmux(Scheduler& scheduler, const ProcProcesses& processes, QString program)
    : m_scheduler(scheduler), m_processes(processes), m_program(std::move(program)), m_programs(scheduler) {}

bool Tmux::mayHold(std::int32_t pid) const {
    return socketOf(pid).has_value();
}

Task Tmux::showPane(std::int32_t pid, const std::optional<std::string>& pane,
                    std::function<void(Client)> done) {
    const auto place = placeOf(pid, pane);
    if (!place) {
        return m_scheduler.after(0, [done = std::move(done)] { done(std::nullopt); });
    }
    // One call for everything.
    return run(*place, select(place->pane) + listClients(), timeLimit,
               [pane = place->pane, done = std::move(done)](const std::string& output) {
                   done(TmuxText::clientShowing(pane, output));
               });
}

Task Tmux::findClients(std::int32_t pid, const std::optional<std::string>& pane,
                       std::function<void(const Clients&)> done) {
    const auto place = placeOf(pid, pane);
    const bool isBusy = m_programs.count() >= mostAtOnce;
    if (place && isBusy) {
        qCInfo(Logs::system, "%d looks at tmux are under way: no further one", mostAtOnce);
    }
    if (!place || isBusy) {
        return m_scheduler.after(0, [done = std::move(done)] { done({}); });
    }
    return run(*place, listClients(), findLimit,
               [pane = place->pane, done = std::move(done)](const std::string& output) {
                   done(TmuxText::clientsShowing(pane, output));
               });
}

std::optional<std::string> Tmux::socketOf(std::int32_t pid) const {
    auto socket = TmuxText::socketOf(m_processes.environmentOf(pid, "TMUX").value_or(""));
    return socket && isOwnSocket(*socket) ? socket : std::nullopt;
}

std::optional<Tmux::Place> Tmux::placeOf(std::int32_t pid, const std::optional<std::string>& pane) const {
    const auto socket = socketOf(pid);
    const auto number =
        TmuxText::paneOf(pane ? *pane : m_processes.environmentOf(pid, "TMUX_PANE").value_or(""));
    return socket && number ? std::optional(Place{*socket, *number}) : std::nullopt;
}

Task Tmux::run(const Place& place, const QStringList& command, double limit, Reader done) {
    const QStringList arguments{QStringLiteral("-S"),
                                QFile::decodeName(QByteArray::fromStdString(place.socket))};
    return m_programs.run(
        {.program = m_program,
         .arguments = arguments + command,
         .environment = environment(),
         .limit = limit,
         .whenCancelled = ProgramRunner::WhenCancelled::runsOn},
        [done = std::move(done)](const ProgramRunning::Result& result) { done(result.output); });
}

} // namespace veslora
