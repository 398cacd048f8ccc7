// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SessionBus.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

#include <sys/stat.h>

namespace veslora::SessionBus {

bool isNamed(const LinuxDirectories::Environment& environment) {
    const auto address = environment("DBUS_SESSION_BUS_ADDRESS");
    if (address && !address->empty()) {
        return !address->starts_with("disabled:");
    }
    const auto runtime = environment("XDG_RUNTIME_DIR");
    struct stat status {};
    return runtime && stat((*runtime + "/bus").c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

std::optional<QDBusConnection> connection() {
    if (!isNamed(LinuxDirectories::processEnvironment)) {
        return std::nullopt;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

void tell() {
    if (!isNamed(LinuxDirectories::processEnvironment)) {
        qCInfo(Logs::bus, "there is no session bus");
        return;
    }
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        qCInfo(Logs::bus, "on the session bus as %s", qUtf8Printable(bus.baseService()));
    } else {
        BusErrors::tell(Logs::bus, QStringLiteral("connecting to the session bus"), bus.lastError());
    }
}

} // namespace veslora::SessionBus
