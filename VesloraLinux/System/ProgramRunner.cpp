// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProgramRunner.h"

#include "VesloraUI/Platform/Logs.h"

#include <QFile>
#include <QPointer>

#include <memory>
#include <utility>

namespace veslora {

namespace {

constexpr qint64 outputCap = 64 << 10;

QString pathOf(const std::string& text) {
    return QFile::decodeName(QByteArray::fromStdString(text));
}

/// Ends a program once nobody waits for it any more. One that has ended by itself is not touched.
class Ending {
  public:
    explicit Ending(QProcess* process) : m_process(process) {}
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;
    ~Ending() {
        if (m_process && m_process->state() != QProcess::NotRunning) {
            m_process->terminate();
        }
    }

  private:
    QPointer<QProcess> m_process;
};

} // namespace

Task ProgramRunner::run(const std::vector<std::string>& arguments, const std::string& input, double limit,
                        std::function<void(const Result&)> done) {
    Command command{.program = pathOf(arguments.front()), .input = input, .limit = limit};
    for (std::size_t at = 1; at < arguments.size(); ++at) {
        command.arguments << pathOf(arguments[at]);
    }
    return run(command, std::move(done));
}

Task ProgramRunner::run(const Command& command, std::function<void(const Result&)> done) {
    auto* process = new QProcess(&m_running);
    const auto result = std::make_shared<Result>();
    const auto state = std::make_shared<TaskState>();
    // Goes with the callback, when it is dropped.
    const auto ending =
        command.whenCancelled == WhenCancelled::ends ? std::make_shared<Ending>(process) : nullptr;
    state->run = [result, ending, done = std::move(done)] { done(*result); };
    const auto finish = [state] {
        if (const auto run = std::exchange(state->run, nullptr)) {
            run();
        }
    };
    const QString name = command.program;
    process->setProcessEnvironment(command.environment);
    process->setStandardErrorFile(QProcess::nullDevice());
    // The caller is told at once, however long the end of the program takes.
    const auto timeout = std::make_shared<Task>(
        m_scheduler.after(command.limit, [process, finish, name, limit = command.limit] {
            qCWarning(Logs::system, "%s did not end within %g s", qUtf8Printable(name), limit);
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
            *result = {true, process->readAllStandardOutput().toStdString()};
        } else if (state->run) {
            qCWarning(Logs::system, "%s failed with exit status %d", qUtf8Printable(name), exitCode);
        }
        finish();
    });
    QObject::connect(process, &QProcess::errorOccurred, process, [=](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            timeout->cancel();
            qCWarning(Logs::system, "%s can't be started: %s", qUtf8Printable(name),
                      qUtf8Printable(process->errorString()));
            // It may fail while it is still being started, within this very call.
            QMetaObject::invokeMethod(process, finish, Qt::QueuedConnection);
            process->deleteLater();
        }
    });
    if (command.input.empty()) {
        process->setStandardInputFile(QProcess::nullDevice());
    }
    process->start(name, command.arguments);
    if (!command.input.empty()) {
        process->write(QByteArray::fromStdString(command.input));
        process->closeWriteChannel();
    }
    return Task(state);
}

} // namespace veslora
