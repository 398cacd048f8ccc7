// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/CommandListener.h"

#include "VesloraLinux/System/CommandSocket.h"
#include "VesloraLinux/System/PosixReading.h"
#include "VesloraUI/Platform/Logs.h"

#include <sys/socket.h>

#include <cerrno>
#include <tuple>
#include <utility>

namespace veslora {

using PosixReading::lastError;

struct CommandListener::Client {
    FileDescriptor connection;
    std::unique_ptr<QSocketNotifier> notifier;
    Task deadline;
    std::string text; ///< what has come so far
};

CommandListener::CommandListener(Scheduler& scheduler, FileDescriptor socket, Respond respond)
    : m_scheduler(scheduler), m_socket(std::move(socket)), m_respond(std::move(respond)),
      m_notifier(m_socket.value(), QSocketNotifier::Read) {
    connect(&m_notifier, &QSocketNotifier::activated, this, &CommandListener::acceptSome);
}

CommandListener::~CommandListener() = default;

void CommandListener::acceptSome() {
    while (m_clients.size() < mostClients) {
        FileDescriptor connection(accept4(m_socket.value(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
        if (!connection) {
            const std::error_code error = lastError();
            // Where descriptors have run out, the one that waits would wake the program without end.
            if (error.value() != EAGAIN && error.value() != ECONNABORTED && error.value() != EINTR) {
                rest(error);
            }
            return;
        }
        m_trouble.begins({});
        // The folder keeps others out; this holds also where somebody has opened it to them.
        if (CommandSocket::isOurUsers(connection)) {
            add(std::move(connection));
        } else {
            qCWarning(Logs::start, "refused another user's connection to %s", CommandSocket::name);
        }
    }
    m_notifier.setEnabled(false);
}

void CommandListener::rest(const std::error_code& error) {
    if (m_trouble.begins(error)) {
        qCWarning(Logs::start, "can't accept a connection to %s: %s", CommandSocket::name,
                  error.message().c_str());
    }
    m_notifier.setEnabled(false);
    m_rest = m_scheduler.after(patience, [this] { m_notifier.setEnabled(true); });
}

void CommandListener::add(FileDescriptor connection) {
    const auto client = m_clients.emplace(m_clients.end());
    client->connection = std::move(connection);
    client->notifier = std::make_unique<QSocketNotifier>(client->connection.value(), QSocketNotifier::Read);
    connect(client->notifier.get(), &QSocketNotifier::activated, this, [this, client] { read(client); });
    client->deadline = m_scheduler.after(patience, [this, client] {
        qCWarning(Logs::start, "no command came in time to %s", CommandSocket::name);
        remove(client);
    });
}

void CommandListener::read(Clients::iterator client) {
    char bytes[CommandSocket::longestQuestion];
    const ssize_t count = recv(client->connection.value(), bytes, sizeof bytes, 0);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    if (count == 0 && client->text.empty()) {
        respond(client, std::nullopt);
        return;
    }
    if (count <= 0) {
        qCWarning(Logs::start, "a command to %s was cut off: %s", CommandSocket::name,
                  count < 0 ? lastError().message().c_str() : "the other end has gone");
        remove(client);
        return;
    }
    client->text.append(bytes, static_cast<std::size_t>(count));
    const std::size_t end = client->text.find('\n');
    if (end < CommandSocket::longestQuestion) {
        respond(client, client->text.substr(0, end));
    } else if (client->text.size() >= CommandSocket::longestQuestion) {
        qCWarning(Logs::start, "a command to %s was too long", CommandSocket::name);
        remove(client);
    }
}

void CommandListener::respond(Clients::iterator client, const std::optional<std::string>& line) {
    // Nothing may come of it meanwhile, should the answer take its time in an event loop of its own.
    client->notifier->setEnabled(false);
    client->deadline.cancel();
    const Answer answer = m_respond(line);
    if (line) {
        // Far less than a connection takes at once; one that went meanwhile hears nothing.
        const std::string text = answer.line + "\n";
        if (send(client->connection.value(), text.data(), text.size(), MSG_NOSIGNAL) < 0) {
            qCWarning(Logs::start, "no answer could be sent from %s: %s", CommandSocket::name,
                      lastError().message().c_str());
        }
    }
    if (line && answer.isLast) {
        // The system closes it with the process, however that ends.
        client->connection.release();
    }
    remove(client);
}

void CommandListener::remove(Clients::iterator client) {
    // It may be the one whose signal is being handled.
    client->notifier->setEnabled(false);
    client->notifier.release()->deleteLater();
    m_clients.erase(client);
    m_notifier.setEnabled(true);
}

} // namespace veslora
