// SPDX-License-Identifier: MIT
// A message bus of the test's own.
#pragma once

#include "tests/VesloraLinux/Support/Program.h"

#include <QDBusConnection>
#include <QString>

#include <memory>

namespace veslora::testing {

class PrivateBus {
  public:
    PrivateBus()
        : m_daemon(std::make_unique<Program>(std::vector<std::string>{"dbus-daemon", "--session", "--nofork",
                                                                      "--nopidfile", "--print-address=3"},
                                             3)),
          m_address(QString::fromStdString(m_daemon->nextLine())) {}
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() {
        for (const QString& name : m_names) {
            QDBusConnection::disconnectFromBus(name);
        }
    }

    [[nodiscard]] const QString& address() const { return m_address; }

    /// A connection of its own, as another program would have it.
    [[nodiscard]] QDBusConnection connect() {
        // The names of connections are the process's, not the bus's.
        static int count = 0;
        m_names.append(QStringLiteral("test-%1").arg(++count));
        return QDBusConnection::connectToBus(m_address, m_names.last());
    }
    /// Closes it, unless somebody still has a copy.
    void disconnect(const QDBusConnection& connection) {
        m_names.removeAll(connection.name());
        QDBusConnection::disconnectFromBus(connection.name());
    }

    /// Ends the bus under its clients.
    void kill() { m_daemon->kill(); }

  private:
    std::unique_ptr<Program> m_daemon;
    QString m_address;
    QStringList m_names;
};

} // namespace veslora::testing
