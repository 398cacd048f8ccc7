// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/Tmux.h"

#include "VesloraCore/Agents/TmuxText.h"
#include "VesloraUI/Platform/Logs.h"

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
    : m_scheduler(scheduler), m_processes(processes), m_program(std::move(program)) {}

Tmux::~Tmux() {
    for (auto* process : m_running.findChildren<QProcess*>()) {
        process->disconnect();
        process->kill();
        process->waitForFinished();
    }
}

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
    const bool isBusy = m_running.children().size() >= mostAtOnce;
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
    const auto output = std::make_shared<std::string>();
    const auto state = std::make_shared<TaskState>();
    state->run = [output, done = std::move(done)] { done(*output); };
    const auto finish = [state] {
        if (const auto run = std::exchange(state->run, nullptr)) {
            run();
        }
    };

    auto* process = new QProcess(&m_running);
    process->setProcessEnvironment(environment());
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    // The caller is told at once, however long the end of the program takes.
    const auto timeout = std::make_shared<Task>(m_scheduler.after(limit, [process, finish, limit] {
        qCWarning(Logs::system, "tmux did not answer within %g s", limit);
        process->kill();
        finish();
    }));
    QObject::connect(process, &QProcess::readyReadStandardOutput, process, [process] {
        if (process->bytesAvailable() > outputCap) {
            process->kill();
        }
    });
    QObject::connect(process, &QProcess::finished, process, [=](int exitCode, QProcess::ExitStatus status) {
        timeout->cancel();
        process->deleteLater();
        if (status == QProcess::NormalExit && exitCode == 0) {
            *output = process->readAllStandardOutput().toStdString();
        } else if (state->run) {
            qCWarning(Logs::system, "tmux failed with exit status %d", exitCode);
        }
        finish();
    });
    QObject::connect(process, &QProcess::errorOccurred, process, [=](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            timeout->cancel();
            qCWarning(Logs::system, "%s can't be started: %s", qUtf8Printable(process->program()),
                      qUtf8Printable(process->errorString()));
            // It may fail while it is still being started, within this very call.
            QMetaObject::invokeMethod(process, finish, Qt::QueuedConnection);
            process->deleteLater();
        }
    });
    const QStringList arguments{QStringLiteral("-S"),
                                QFile::decodeName(QByteArray::fromStdString(place.socket))};
    process->start(m_program, arguments + command, QIODevice::ReadOnly);
    return Task(state);
}

} // namespace veslora
