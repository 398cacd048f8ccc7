// SPDX-License-Identifier: MIT
// Whether the desktop's notification service says that it holds notifications back, as KDE's does while its
// do-not-disturb is on. Main thread only.
#pragma once

#include "VesloraLinux/DBus/ServiceOwner.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace veslora {

class InhibitedNotifications : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(InhibitedNotifications)

  public:
    static constexpr int usualLimitMilliseconds = 10'000;

    explicit InhibitedNotifications(std::optional<QDBusConnection> bus,
                                    int limitMilliseconds = usualLimitMilliseconds);
    ~InhibitedNotifications() override = default;

    /// Begins to listen; never waits. Called once.
    void follow() { m_owner.follow(); }

    /// False while no service says otherwise.
    [[nodiscard]] bool areHeldBack() const { return m_areHeldBack; }

  signals:
    void changed();

  private slots:
    void propertiesChanged(const QString& interface, const QVariantMap& values, const QStringList& stale);

  private:
    void ownerChanged(const QString& before);
    void read();
    void take(const QVariant& value);
    void set(bool areHeldBack);

    std::optional<QDBusConnection> m_bus;
    ServiceOwner m_owner;
    bool m_areHeldBack = false;
};

} // namespace veslora
