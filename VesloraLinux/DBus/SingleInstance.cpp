// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SingleInstance.h"

#include "VesloraLinux/System/CommandSocket.h"
#include "VesloraUI/Platform/Logs.h"

#include <singleinstanceadaptor.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace veslora {

SingleInstance::SingleInstance(Scheduler& scheduler, SupportLock lock, std::optional<QDBusConnection> bus)
    : m_scheduler(scheduler), m_lock(std::move(lock)), m_bus(std::move(bus)) {
    new SingleInstanceAdaptor(this);
}

SingleInstance::~SingleInstance() {
    if (m_hasName) {
        m_bus->unregisterService(RunningName::bus);
        m_bus->unregisterObject(RunningName::path);
    }
    if (m_listener) {
        unlinkat(m_lock.directory().value(), CommandSocket::name, 0);
    }
}

bool SingleInstance::claim(Perform perform) {
    m_perform = std::move(perform);
    if (m_bus && !takeName()) {
        return false;
    }
    listen();
    return true;
}

bool SingleInstance::takeName() {
    if (!m_bus->registerObject(RunningName::path, this, QDBusConnection::ExportAdaptors)) {
        qCWarning(Logs::bus, "can't put %s on the bus", qUtf8Printable(RunningName::path));
    }
    m_hasName = m_bus->registerService(RunningName::bus);
    if (m_hasName) {
        qCInfo(Logs::bus, "took the name %s", qUtf8Printable(RunningName::bus));
    } else {
        qCInfo(Logs::bus, "%s is another program's", qUtf8Printable(RunningName::bus));
        m_bus->unregisterObject(RunningName::path);
    }
    return m_hasName;
}

void SingleInstance::listen() {
    FileDescriptor socket = CommandSocket::listen(m_lock.directory());
    if (!socket) {
        qCWarning(Logs::start, "no socket beside the lock: %s", std::strerror(errno));
        return;
    }
    m_listener = std::make_unique<CommandListener>(
        m_scheduler, std::move(socket),
        [this](const std::optional<std::string>& line) { return respond(line); });
}

CommandOutcome SingleInstance::perform(const CommandLine::Ask& ask) const {
    CommandOutcome outcome = m_perform(ask);
    // Not with what belongs to it, which may be a text of the user's.
    qCInfo(Logs::start, "command %s: %s", std::string(CommandLine::wordFor(ask.command)).c_str(),
           outcome.isDone ? "done" : "failed");
    return outcome;
}

CommandListener::Answer SingleInstance::respond(const std::optional<std::string>& line) const {
    const auto ask = line ? CommandLine::askFor(*line) : std::optional(CommandLine::Ask{Command::settings});
    if (!ask) {
        return {std::string(CommandSocket::failed)};
    }
    const CommandOutcome outcome = perform(*ask);
    const std::string_view word = outcome.isDone ? CommandSocket::done : CommandSocket::failed;
    const std::string text = outcome.text.empty() ? "" : " " + outcome.text;
    return {std::string(word) + text, ask->command == Command::quit && outcome.isDone};
}

QString SingleInstance::performForBus(const CommandLine::Ask& ask) {
    const CommandOutcome outcome = perform(ask);
    if (!outcome.isDone) {
        refuse(QString::fromStdString(outcome.text));
    }
    return QString::fromStdString(outcome.text);
}

/// For a command with a text, which may be any; it is judged as the socket's.
QString SingleInstance::performWithText(Command command, const QString& text) {
    const auto ask = CommandLine::askFor(CommandLine::lineFor({command, {}, text.toStdString()}));
    if (!ask || ask->command != command) {
        refuse(QStringLiteral("That is nothing for this command."));
        return {};
    }
    return performForBus(*ask);
}

void SingleInstance::refuse(const QString& why) {
    if (calledFromDBus()) {
        sendErrorReply(RunningName::failure, why);
    }
}

void SingleInstance::OpenSettings() {
    performForBus({Command::settings});
}

void SingleInstance::Toggle() {
    performForBus({Command::toggle});
}

void SingleInstance::NextPage() {
    performForBus({Command::nextPage});
}

void SingleInstance::PreviousPage() {
    performForBus({Command::previousPage});
}

void SingleInstance::Edit() {
    performForBus({Command::edit});
}

void SingleInstance::Pause(const QString& length) {
    if (const auto known = AlertPause::parse(length.toStdString())) {
        performForBus({Command::pause, *known});
    } else {
        refuse(QStringLiteral("That is no length of a pause."));
    }
}

void SingleInstance::Resume() {
    performForBus({Command::resume});
}

void SingleInstance::Quit() {
    performForBus({Command::quit});
}

QString SingleInstance::Status() {
    return performForBus({Command::status});
}

QString SingleInstance::ExportSettings() {
    return performForBus({Command::exportSettings});
}

void SingleInstance::ImportSettings(const QString& settings) {
    performWithText(Command::importSettings, settings);
}

QString SingleInstance::InstallHooks(const QString& agent) {
    return performWithText(Command::installHooks, agent);
}

QString SingleInstance::RemoveHooks(const QString& agent) {
    return performWithText(Command::removeHooks, agent);
}

QString SingleInstance::HooksStatus(const QString& agent) {
    return performWithText(Command::hooksStatus, agent);
}

} // namespace veslora
