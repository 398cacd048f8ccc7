// SPDX-License-Identifier: MIT
// The desktop's settings portal on the session bus, as far as it tells of the look. Nobody is made to start
// it; one that starts later, or again, is heard from then on. Main thread only.
#pragma once

#include "VesloraLinux/DBus/PortalAppearance.h"
#include "VesloraLinux/DBus/ServiceOwner.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QObject>

#include <optional>

namespace veslora {

class SettingsPortal : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SettingsPortal)

  public:
    /// How long an answer may take. The portal first waits for the desktop's part of it to start.
    static constexpr int usualLimitMilliseconds = 10'000;

    explicit SettingsPortal(std::optional<QDBusConnection> bus,
                            int limitMilliseconds = usualLimitMilliseconds);
    ~SettingsPortal() override = default;

    /// Begins to listen; never waits. Called once. Without a bus it is `silent` within this call.
    void follow();

  signals:
    /// What the portal says, after each time that it said something of the look.
    void told(const DesktopAppearance& appearance);
    /// No portal is there, or it does not know or answer. It may still come to tell something.
    void silent();

  private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void listen(const QString& before);
    void read();
    void wasRead(const QDBusMessage& reply);

    std::optional<QDBusConnection> m_bus;
    ServiceOwner m_owner;
    PortalAppearance m_words;
    bool m_isRead = false; ///< of this owner
};

} // namespace veslora
