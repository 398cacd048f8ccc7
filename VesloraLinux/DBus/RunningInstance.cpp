// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/RunningInstance.h"

#include "VesloraCore/Island/StatusLine.h"
#include "VesloraCore/Text/TerminalText.h"
#include "VesloraLinux/DBus/SingleInstance.h"
#include "VesloraLinux/System/CommandSocket.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QTimer>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace veslora {
namespace {

using Clock = std::chrono::steady_clock;
using Result = RunningInstance::Result;

/// Of a sentence; a path in it may be long.
constexpr std::size_t longestText = 1000;

QString methodFor(Command command) {
    switch (command) {
    case Command::settings:
        return QStringLiteral("OpenSettings");
    case Command::toggle:
        return QStringLiteral("Toggle");
    case Command::nextPage:
        return QStringLiteral("NextPage");
    case Command::previousPage:
        return QStringLiteral("PreviousPage");
    case Command::edit:
        return QStringLiteral("Edit");
    case Command::pause:
        return QStringLiteral("Pause");
    case Command::resume:
        return QStringLiteral("Resume");
    case Command::quit:
        return QStringLiteral("Quit");
    case Command::exportSettings:
        return QStringLiteral("ExportSettings");
    case Command::importSettings:
        return QStringLiteral("ImportSettings");
    case Command::installHooks:
        return QStringLiteral("InstallHooks");
    case Command::removeHooks:
        return QStringLiteral("RemoveHooks");
    case Command::hooksStatus:
        return QStringLiteral("HooksStatus");
    case Command::status:
        break;
    }
    return QStringLiteral("Status");
}

bool tellsSomething(Command command) {
    switch (command) {
    case Command::status:
    case Command::exportSettings:
    case Command::installHooks:
    case Command::removeHooks:
    case Command::hooksStatus:
        return true;
    default:
        return false;
    }
}

/// Whether that may be the answer of a Veslora to what was done; what settings it holds is for others to see.
bool isOfForm(Command command, const std::string& text) {
    if (!tellsSomething(command)) {
        return text.empty();
    }
    if (command == Command::status) {
        return StatusLine::isOne(text);
    }
    return !text.empty() && text.size() < CommandSocket::longestAnswer &&
           TerminalText::withoutControls(text) == text;
}

RunningInstance::Answer doneWith(Command command, const std::string& text) {
    return isOfForm(command, text) ? RunningInstance::Answer{Result::done, text}
                                   : RunningInstance::Answer{Result::strange, {}};
}

RunningInstance::Answer failedWith(const std::string& text) {
    return {Result::failed, TerminalText::withoutControls(text.substr(0, longestText))};
}

/// Waits until something can be read, or the other end has gone.
bool becomesReadable(const FileDescriptor& connection, Clock::time_point deadline) {
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd ready{connection.value(), POLLIN, 0};
        const int count = poll(&ready, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (count >= 0 || errno != EINTR) {
            return count > 0;
        }
    }
}

/// The first line that comes, without its end. Absent with `isOver` when the other end has gone or will not
/// stop, and without when nothing more came in time.
std::optional<std::string> readLine(const FileDescriptor& connection, Clock::time_point deadline,
                                    bool& isOver) {
    std::string text;
    char bytes[CommandSocket::longestAnswer];
    isOver = false;
    while (text.size() < CommandSocket::longestAnswer && becomesReadable(connection, deadline)) {
        const ssize_t count = recv(connection.value(), bytes, sizeof bytes, 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            continue;
        }
        if (count <= 0) {
            isOver = true;
            return std::nullopt;
        }
        text.append(bytes, static_cast<std::size_t>(count));
        if (const std::size_t end = text.find('\n'); end != std::string::npos) {
            return text.substr(0, end);
        }
    }
    isOver = text.size() >= CommandSocket::longestAnswer;
    return std::nullopt;
}

bool isGone(const FileDescriptor& connection, Clock::time_point deadline) {
    char bytes[16];
    while (becomesReadable(connection, deadline)) {
        const ssize_t count = recv(connection.value(), bytes, sizeof bytes, 0);
        if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
            return true;
        }
    }
    return false;
}

RunningInstance::Answer understand(Command command, const std::string& line) {
    const std::size_t blank = line.find(' ');
    const std::string_view word = std::string_view(line).substr(0, blank);
    const std::string text = blank == std::string::npos ? "" : line.substr(blank + 1);
    if (word == CommandSocket::done) {
        return doneWith(command, text);
    }
    return word == CommandSocket::failed ? failedWith(text) : RunningInstance::Answer{Result::strange, {}};
}

} // namespace

RunningInstance::RunningInstance(std::string supportDirectory, std::optional<QDBusConnection> bus,
                                 Patience patience)
    : m_directory(std::move(supportDirectory)), m_bus(std::move(bus)), m_patience(patience) {}

RunningInstance::Answer RunningInstance::ask(const CommandLine::Ask& question) {
    const Answer overBus = m_bus ? askOverBus(question) : Answer();
    // One that was started in another session of the user's has another bus, or none.
    return overBus.result == Result::notThere ? askOverSocket(question) : overBus;
}

RunningInstance::Answer RunningInstance::askOverBus(const CommandLine::Ask& question) {
    const Command command = question.command;
    QDBusMessage call = QDBusMessage::createMethodCall(RunningName::bus, RunningName::path, RunningName::bus,
                                                       methodFor(command));
    if (command == Command::pause) {
        call.setArguments({QString::fromStdString(AlertPause::text(question.length))});
    } else if (!question.text.empty()) {
        call.setArguments({QString::fromStdString(question.text)});
    }
    call.setAutoStartService(false);
    const QDBusMessage reply = m_bus->call(call, QDBus::Block, static_cast<int>(m_patience.answer.count()));
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return errorOverBus(reply, command);
    }
    const QString signature = tellsSomething(command) ? QStringLiteral("s") : QString();
    if (reply.signature() != signature) {
        return {Result::strange, {}};
    }
    const QString text = reply.arguments().value(0).toString();
    if (command == Command::quit && !leavesBus(reply.service())) {
        return {Result::stillThere, {}};
    }
    return doneWith(command, text.toStdString());
}

RunningInstance::Answer RunningInstance::errorOverBus(const QDBusMessage& reply, Command command) const {
    if (reply.errorName() == RunningName::failure) {
        return failedWith(reply.errorMessage().toStdString());
    }
    // The bus's word for it where nothing may be started; the toolkit has no name for it.
    if (reply.errorName() == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner")) {
        return {Result::notThere, {}};
    }
    switch (QDBusError(reply).type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
        return {Result::notThere, {}};
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        // The bus says the same of one that has gone before it could answer.
        if (!isOnBus(RunningName::bus)) {
            return {command == Command::quit ? Result::done : Result::notThere, {}};
        }
        return {Result::silent, {}};
    default:
        return {Result::strange, {}};
    }
}

bool RunningInstance::isOnBus(const QString& name) const {
    return m_bus->interface()->isServiceRegistered(name);
}

/// A connection's own name goes with the process: nothing of the program's closes it earlier.
bool RunningInstance::leavesBus(const QString& name) {
    const QDBusServiceWatcher watcher(name, *m_bus, QDBusServiceWatcher::WatchForUnregistration);
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
    QTimer::singleShot(m_patience.end, &loop, &QEventLoop::quit);
    if (isOnBus(name)) {
        loop.exec();
    }
    return !isOnBus(name);
}

RunningInstance::Answer RunningInstance::askOverSocket(const CommandLine::Ask& question) const {
    const auto deadline = Clock::now() + m_patience.answer;
    const FileDescriptor directory(open(m_directory.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    const FileDescriptor connection = directory ? CommandSocket::connect(directory) : FileDescriptor();
    if (!connection) {
        return {directory && errno == EAGAIN ? Result::silent : Result::notThere, {}};
    }
    if (!CommandSocket::isOurUsers(connection)) {
        return {Result::strange, {}};
    }
    const std::string asked = CommandLine::lineFor(question) + "\n";
    std::ignore = send(connection.value(), asked.data(), asked.size(), MSG_NOSIGNAL);
    bool isOver = false;
    const auto line = readLine(connection, deadline, isOver);
    if (!line) {
        return {isOver ? Result::strange : Result::silent, {}};
    }
    const Answer answer = understand(question.command, *line);
    const bool hasQuit = question.command == Command::quit && answer.result == Result::done;
    return hasQuit && !isGone(connection, Clock::now() + m_patience.end) ? Answer{Result::stillThere, {}}
                                                                         : answer;
}

std::string RunningInstance::explain(const Answer& answer, const Words& words) {
    switch (answer.result) {
    case Result::done:
        return {};
    case Result::failed:
        // A failure that another version tells of may have no translation, and then is shown as it came.
        return answer.text.empty()
                   ? words.translate("CommandLine", "The Veslora that runs could not do that.")
                   : words.translate("CommandLine", answer.text.c_str());
    case Result::notThere:
        return words.translate("CommandLine", "Veslora is not running.");
    case Result::silent:
        return words.translate("CommandLine", "Veslora is running but does not answer.");
    case Result::strange:
        return words.translate(
            "CommandLine", "What answers in Veslora's place is another program, or another version of it.");
    case Result::stillThere:
        break;
    }
    return words.translate("CommandLine", "Veslora was told to quit, but is still running.");
}

} // namespace veslora
