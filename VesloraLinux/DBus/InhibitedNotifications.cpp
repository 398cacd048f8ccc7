// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/InhibitedNotifications.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Observable.h"

#include <QDBusError>
#include <QDBusVariant>

namespace veslora {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString inhibited = QStringLiteral("Inhibited");

} // namespace

InhibitedNotifications::InhibitedNotifications(std::optional<QDBusConnection> bus, int limitMilliseconds)
    : m_bus(std::move(bus)), m_owner(m_bus, service, limitMilliseconds) {
    connect(&m_owner, &ServiceOwner::changed, this, &InhibitedNotifications::ownerChanged);
}

void InhibitedNotifications::ownerChanged(const QString& before) {
    const QString signal = QStringLiteral("PropertiesChanged");
    const char* const slot = SLOT(propertiesChanged(QString, QVariantMap, QStringList));
    if (!before.isEmpty()) {
        m_bus->disconnect(before, path, properties, signal, this, slot);
    }
    // Nobody holds anything back until the next one says so.
    set(false);
    if (!m_owner.name().isEmpty()) {
        m_bus->connect(m_owner.name(), path, properties, signal, this, slot);
        read();
    }
}

void InhibitedNotifications::propertiesChanged(const QString& interface, const QVariantMap& values,
                                               const QStringList& stale) {
    if (interface != service) {
        return;
    }
    if (const auto told = values.constFind(inhibited); told != values.constEnd()) {
        take(*told);
    } else if (stale.contains(inhibited) && !m_owner.name().isEmpty()) {
        read();
    }
}

void InhibitedNotifications::read() {
    m_owner.ask(
        path, properties, QStringLiteral("Get"), {service, inhibited}, [this](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("v")) {
                take(reply.arguments().constFirst().value<QDBusVariant>().variant());
            } else {
                // Most services have no such property.
                BusErrors::tell(Logs::bus, service + QLatin1Char('.') + inhibited, QDBusError(reply));
            }
        });
}

/// A value of another type says nothing.
void InhibitedNotifications::take(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool) {
        set(value.toBool());
    }
}

void InhibitedNotifications::set(bool areHeldBack) {
    assign(this, m_areHeldBack, areHeldBack, &InhibitedNotifications::changed);
}

} // namespace veslora
