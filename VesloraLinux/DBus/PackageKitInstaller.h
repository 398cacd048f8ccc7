// SPDX-License-Identifier: MIT
// Packages installed by PackageKit, which asks the user for what it needs. Main thread only.
#pragma once

#include "VesloraLinux/DBus/SystemBus.h"
#include "VesloraUI/Platform/PackageInstalling.h"

#include <QObject>

#include <memory>

namespace veslora {

class PackageKitInstaller final : public QObject, public PackageInstalling {
  public:
    /// The bus starts the service where it may; nothing is asked of it before a package is to be installed.
    PackageKitInstaller(Scheduler& scheduler, SystemBus& bus) : m_scheduler(scheduler), m_bus(bus) {}

    [[nodiscard]] Task install(const std::string& path, std::function<void(InstallOutcome)> done) override;

  private:
    Scheduler& m_scheduler;
    SystemBus& m_bus;
};

} // namespace veslora
