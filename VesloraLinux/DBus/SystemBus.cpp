// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SystemBus.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

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

SystemBus::Connection SystemBus::connectToUsual(Trouble& trouble) {
    if (!isNamed(LinuxDirectories::processEnvironment)) {
        if (trouble.begins(std::make_error_code(std::errc::no_such_file_or_directory))) {
            qCInfo(Logs::bus, "there is no system bus");
        }
        return std::nullopt;
    }
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected()) {
        if (trouble.begins(std::make_error_code(std::errc::not_connected))) {
            BusErrors::tell(Logs::bus, QStringLiteral("connecting to the system bus"), bus.lastError());
        }
        return std::nullopt;
    }
    return bus;
}

SystemBus::Connect SystemBus::usualConnect() {
    return [trouble = std::make_shared<Trouble>()] { return connectToUsual(*trouble); };
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
