// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/AdapterProcessRunner.h"

#include "VesloraCore/Music/LineBuffer.h"
#include "VesloraLinux/System/OrphanSweep.h"
#include "VesloraUI/Platform/Logs.h"

#include <QFileInfo>

#include <memory>
#include <utility>

namespace veslora {

namespace {

/// More than one command can be under way while a player hesitates; beyond that presses are dropped.
constexpr int mostCommands = 4;

void silence(QProcess& process) {
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
}

} // namespace

bool AdapterProcessRunner::start(LineHandler onLine, ExitHandler onExit) {
    stop();
    if (!QFileInfo(m_adapter).isExecutable()) {
        qCWarning(Logs::system, "there is no media adapter at %s", qUtf8Printable(m_adapter));
        return false;
    }
    sweepOrphans();
    auto* const process = new QProcess(&m_running);
    m_process = process;
    silence(*process);
    listen(*process, std::move(onLine));
    QObject::connect(process, &QProcess::finished, process, [this, onExit] { ended(onExit); });
    // It may fail while it is still being started, within this very call.
    QObject::connect(
        process, &QProcess::errorOccurred, process,
        [this, onExit = std::move(onExit)](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                ended(onExit);
            }
        },
        Qt::QueuedConnection);
    process->start(m_adapter, {QStringLiteral("stream")}, QIODevice::ReadOnly);
    return true;
}

/// Once in the program's life, whether or not it works.
void AdapterProcessRunner::sweepOrphans() {
    if (!std::exchange(m_hasSwept, true)) {
        m_sweep = m_scheduler.background(
            [adapter = m_adapter.toStdString()] {
                static_cast<void>(OrphanSweep::endOrphans(ProcProcesses(), adapter));
            },
            [] {});
    }
}

void AdapterProcessRunner::listen(QProcess& process, LineHandler onLine) {
    const auto lines = std::make_shared<LineBuffer>();
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process,
                     [this, &process, lines, onLine = std::move(onLine)] {
                         for (const std::string& line :
                              lines->append(process.readAllStandardOutput().toStdString())) {
                             if (m_process != &process) {
                                 return; // a line had it stopped
                             }
                             onLine(line);
                         }
                     });
}

/// By value: the handler lives in the process's connections, which go with it.
void AdapterProcessRunner::ended(ExitHandler onExit) { // NOLINT(performance-unnecessary-value-param)
    QProcess* const process = std::exchange(m_process, nullptr);
    const int status = process->exitCode();
    qCInfo(Logs::system, "the media adapter has ended with %d", status);
    process->disconnect();
    process->deleteLater();
    onExit(status);
}

void AdapterProcessRunner::stop() {
    QProcess* const process = std::exchange(m_process, nullptr);
    if (!process) {
        return;
    }
    process->disconnect();
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    // It holds nothing that would have to be put away.
    process->kill();
}

void AdapterProcessRunner::send(AdapterCommand command) {
    if (m_commands.count() >= mostCommands) {
        qCInfo(Logs::system, "%d commands for a player are under way: no further one", mostCommands);
        return;
    }
    auto* const process = new QProcess(&m_commands);
    silence(*process);
    process->setStandardOutputFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, &QObject::deleteLater);
    process->start(m_adapter, {QStringLiteral("send"), QString::number(static_cast<int>(command))});
}

} // namespace veslora
