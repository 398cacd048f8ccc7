// SPDX-License-Identifier: MIT
// How a Linux desktop wants programs to look: by the settings portal's word, and by the configuration files
// while no portal has said anything. Main thread only.
#pragma once

#include "VesloraLinux/DBus/SettingsPortal.h"
#include "VesloraLinux/System/AppearanceFiles.h"
#include "VesloraUI/Platform/Appearance.h"

namespace veslora {

class LinuxAppearance final : public Appearance {
    Q_OBJECT

  public:
    /// Asks and reads nothing yet.
    LinuxAppearance(std::optional<QDBusConnection> bus, AppearanceFiles files);

    /// From the portal's first word on the files are left alone. Its last word holds while it is away: a
    /// service that ends has changed nothing of the desktop's look.
    void follow() override;

  private:
    void readFiles();

    SettingsPortal m_portal;
    AppearanceFiles m_files;
    bool m_portalHasTold = false;
    bool m_readsFiles = false;
};

} // namespace veslora
