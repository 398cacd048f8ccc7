// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/LinuxDoNotDisturb.h"

#include <QStringList>

#include <utility>

namespace veslora {

LinuxDoNotDisturb::LinuxDoNotDisturb(std::optional<QDBusConnection> bus, const QString& desktops)
    : m_notifications(std::move(bus)) {
    connect(&m_notifications, &InhibitedNotifications::changed, this, &DoNotDisturb::changed);
    if (desktops.split(QLatin1Char(':')).contains(QLatin1String("GNOME"))) {
        m_banners = std::make_unique<GnomeBanners>([this] { emit changed(); });
    }
}

void LinuxDoNotDisturb::follow() {
    m_notifications.follow();
    if (m_banners) {
        m_banners->follow();
    }
}

bool LinuxDoNotDisturb::isOn() const {
    return m_notifications.areHeldBack() || (m_banners && m_banners->areHidden());
}

} // namespace veslora
