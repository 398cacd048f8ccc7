// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/LinuxAppearance.h"

#include "VesloraUI/Platform/Logs.h"

#include <utility>

namespace veslora {

LinuxAppearance::LinuxAppearance(std::optional<QDBusConnection> bus, AppearanceFiles files)
    : m_portal(std::move(bus)), m_files(std::move(files)) {
    connect(&m_portal, &SettingsPortal::silent, this, &LinuxAppearance::readFiles);
    connect(&m_portal, &SettingsPortal::told, this, [this](const DesktopAppearance& appearance) {
        if (!std::exchange(m_portalHasTold, true)) {
            qCInfo(Logs::start, "the settings portal tells the desktop's look");
            m_files.stop();
        }
        set(appearance);
    });
}

void LinuxAppearance::follow() {
    m_portal.follow();
}

void LinuxAppearance::readFiles() {
    if (!m_portalHasTold && !std::exchange(m_readsFiles, true)) {
        m_files.follow([this](const DesktopAppearance& appearance) { set(appearance); });
    }
}

} // namespace veslora
