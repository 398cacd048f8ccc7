// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SystemBus.h"

#include <sys/stat.h>

namespace veslora::SystemBus {

bool isNamed(const LinuxDirectories::Environment& environment) {
    const auto address = environment("DBUS_SYSTEM_BUS_ADDRESS");
    if (address && !address->empty()) {
        return !address->starts_with("disabled:");
    }
    struct stat status {};
    return stat("/run/dbus/system_bus_socket", &status) == 0 && S_ISSOCK(status.st_mode);
}

std::optional<QDBusConnection> connection() {
    if (!isNamed(LinuxDirectories::processEnvironment)) {
        return std::nullopt;
    }
    QDBusConnection bus = QDBusConnection::systemBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

} // namespace veslora::SystemBus
