// SPDX-License-Identifier: MIT
// The login manager, which keeps the machine from idling to sleep where no desktop does: for as long as a
// descriptor that it gives stays open. Main thread only.
#pragma once

#include "VesloraLinux/DBus/SystemBus.h"
#include "VesloraLinux/Shared/Inhibitor.h"

#include <QDBusServiceWatcher>

namespace veslora {

class LoginManager final : public Inhibitor {
    Q_OBJECT

  public:
    /// Refuses where there is no bus. `bus` must outlive this.
    explicit LoginManager(SystemBus& bus);

    [[nodiscard]] QString name() const override { return QStringLiteral("org.freedesktop.login1"); }
    [[nodiscard]] AwakeNeeds covers() const override { return {.system = true, .display = false}; }
    void inhibit(AwakeNeeds needs, const QString& reason, Done done) override;

  private:
    void watch(const QDBusConnection& bus);
    void send(QDBusConnection bus, const QString& reason, const Done& done);

    SystemBus& m_bus;
    QDBusServiceWatcher m_watcher;
    bool m_isWatching = false;
};

} // namespace veslora
