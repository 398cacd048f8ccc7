// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SystemBus.h"

#include <sys/stat.h>

#include <memory>
#include <utility>

namespace veslora {

SystemBus::SystemBus(Scheduler& scheduler, Connect connect)
    : m_scheduler(scheduler), m_connect(std::move(connect)) {}

bool SystemBus::isNamed(const LinuxDirectories::Environment& environment) {
    const auto address = environment("DBUS_SYSTEM_BUS_ADDRESS");
    if (address && !address->empty()) {
        return !address->starts_with("disabled:");
    }
    struct stat status {};
    return stat("/run/dbus/system_bus_socket", &status) == 0 && S_ISSOCK(status.st_mode);
}

SystemBus::Connection SystemBus::connectToUsual() {
    if (!isNamed(LinuxDirectories::processEnvironment)) {
        return std::nullopt;
    }
    QDBusConnection bus = QDBusConnection::systemBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

void SystemBus::whenConnected(QObject& receiver, std::function<void(const Connection&)> run) {
    if (m_connection) {
        run(m_connection);
        return;
    }
    m_waiting.push_back({&receiver, std::move(run)});
    if (m_connecting.isActive()) {
        return;
    }
    const auto connection = std::make_shared<Connection>();
    m_connecting = m_scheduler.background([connection, connect = m_connect] { *connection = connect(); },
                                          [this, connection] { connected(std::move(*connection)); });
}

void SystemBus::connected(Connection connection) {
    m_connection = std::move(connection);
    for (const Waiting& waiting : std::exchange(m_waiting, {})) {
        if (waiting.receiver) {
            waiting.run(m_connection);
        }
    }
}

} // namespace veslora
