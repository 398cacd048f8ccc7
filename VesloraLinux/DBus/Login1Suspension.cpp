// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/Login1Suspension.h"

#include "VesloraUI/Platform/Logs.h"

#include <login1managerinterface.h>

namespace veslora {

Login1Suspension::Login1Suspension(SystemBus& bus) {
    bus.whenConnected(*this, [this](const SystemBus::Connection& connection) { listenOn(connection); });
}

Login1Suspension::~Login1Suspension() = default;

void Login1Suspension::listenOn(const SystemBus::Connection& bus) {
    if (!bus) {
        return;
    }
    m_manager = std::make_unique<OrgFreedesktopLogin1ManagerInterface>(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"), *bus);
    connect(m_manager.get(), &OrgFreedesktopLogin1ManagerInterface::PrepareForSleep, this,
            &Login1Suspension::prepareForSleep);
}

void Login1Suspension::prepareForSleep(bool start) {
    qCInfo(Logs::bus, "the machine %s", start ? "goes to sleep" : "has woken");
    if (start) {
        emit willSleep();
    } else {
        emit didWake();
    }
}

} // namespace veslora
