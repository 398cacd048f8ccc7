// SPDX-License-Identifier: MIT
// The do-not-disturb of a Linux desktop: by the word of its notification service, and on GNOME by its
// settings. Main thread only.
#pragma once

#include "VesloraLinux/DBus/InhibitedNotifications.h"
#include "VesloraLinux/System/GnomeBanners.h"
#include "VesloraUI/Platform/DoNotDisturb.h"

#include <memory>

namespace veslora {

class LinuxDoNotDisturb final : public DoNotDisturb {
    Q_OBJECT

  public:
    /// Asks and loads nothing yet. `desktops` is what XDG_CURRENT_DESKTOP names, by which GNOME is known.
    LinuxDoNotDisturb(std::optional<QDBusConnection> bus, const QString& desktops);

    void follow() override;
    [[nodiscard]] bool isOn() const override;

  private:
    InhibitedNotifications m_notifications;
    std::unique_ptr<GnomeBanners> m_banners; ///< null on other desktops
};

} // namespace veslora
