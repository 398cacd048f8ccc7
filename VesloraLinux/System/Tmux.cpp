// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/Tmux.h"

#include "VesloraCore/TmuxText.h"

#include <QFile>
#include <QProcess>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace veslora {

namespace {

/// More than the clients of any server take; what goes on beyond that is no tmux.
constexpr qint64 outputCap = 64 << 10;

bool isOwnSocket(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == geteuid();
}

/// One call for everything. The pane is a number behind "%", so that it can be neither an option nor the end
/// of a command.
QStringList commandFor(const std::string& socket, const std::string& pane) {
    return {QStringLiteral("-S"),
            QFile::decodeName(QByteArray::fromStdString(socket)),
            QStringLiteral("select-window"),
            QStringLiteral("-t"),
            QString::fromUtf8(pane),
            QStringLiteral(";"),
            QStringLiteral("select-pane"),
            QStringLiteral("-t"),
            QString::fromUtf8(pane),
            QStringLiteral(";"),
            QStringLiteral("list-clients"),
            QStringLiteral("-F"),
            QString::fromUtf8(TmuxText::clientFormat)};
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
    : m_scheduler(scheduler), m_processes(processes), m_program(std::move(program)) {}

Task Tmux::showPane(std::int32_t pid, const std::optional<std::string>& pane,
                    std::function<void(Client)> done) {
    const auto socket = TmuxText::socketOf(m_processes.environmentOf(pid, "TMUX").value_or(""));
    const auto number =
        TmuxText::paneOf(pane ? *pane : m_processes.environmentOf(pid, "TMUX_PANE").value_or(""));
    if (!socket || !number || !isOwnSocket(*socket)) {
        return m_scheduler.after(0, [done = std::move(done)] { done(std::nullopt); });
    }

    const auto client = std::make_shared<Client>();
    const auto state = std::make_shared<TaskState>();
    state->run = [client, done = std::move(done)] { done(*client); };
    const auto finish = [state] {
        if (const auto run = std::exchange(state->run, nullptr)) {
            run();
        }
    };

    auto* process = new QProcess(&m_running);
    process->setProcessEnvironment(environment());
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    const auto limit = std::make_shared<Task>(m_scheduler.after(timeLimit, [process] { process->kill(); }));
    QObject::connect(process, &QProcess::readyReadStandardOutput, process, [process] {
        if (process->bytesAvailable() > outputCap) {
            process->kill();
        }
    });
    QObject::connect(process, &QProcess::finished, process,
                     [=, number = *number](int exitCode, QProcess::ExitStatus status) {
                         limit->cancel();
                         process->deleteLater();
                         if (status == QProcess::NormalExit && exitCode == 0) {
                             *client = TmuxText::clientShowing(
                                 number, process->readAllStandardOutput().toStdString());
                         }
                         finish();
                     });
    QObject::connect(process, &QProcess::errorOccurred, process, [=](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            limit->cancel();
            // It may fail while it is still being started, within this very call.
            QMetaObject::invokeMethod(process, finish, Qt::QueuedConnection);
            process->deleteLater();
        }
    });
    process->start(m_program, commandFor(*socket, *number), QIODevice::ReadOnly);
    return Task(state);
}

} // namespace veslora
