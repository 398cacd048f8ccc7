// SPDX-License-Identifier: MIT
// Serves the socket in the support directory. A client is a program of our own user's, and still may
// do anything: say nothing, say half a line or megabytes, or go. Main thread only.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Trouble.h"

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

namespace veslora {

class CommandListener final : public QObject {
    Q_OBJECT

  public:
    /// Seconds in which a line must have come, and how many connections are served at a time; what comes
    /// beyond that waits.
    static constexpr double patience = 2;
    static constexpr std::size_t mostClients = 8;

    struct Answer {
        std::string line;
        /// Keeps the connection until the process has gone, by which the other end knows of it.
        bool isLast = false;
    };
    /// Gets a line without its end; absent from one who went without a word, and who hears nothing.
    using Respond = std::function<Answer(const std::optional<std::string>& line)>;

    /// `socket` listens already, without blocking.
    CommandListener(Scheduler& scheduler, FileDescriptor socket, Respond respond);
    ~CommandListener() override;
    CommandListener(const CommandListener&) = delete;
    CommandListener& operator=(const CommandListener&) = delete;

  private:
    struct Client;
    using Clients = std::list<Client>;

    void acceptSome();
    void rest(const std::error_code& error);
    void add(FileDescriptor connection);
    void read(Clients::iterator client);
    void respond(Clients::iterator client, const std::optional<std::string>& line);
    void remove(Clients::iterator client);

    Scheduler& m_scheduler;
    FileDescriptor m_socket;
    Respond m_respond;
    Clients m_clients;
    Trouble m_trouble; ///< of accepting
    Task m_rest;
    QSocketNotifier m_notifier;
};

} // namespace veslora
