// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SettingsPortal.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

#include <QDBusArgument>

#include <utility>

namespace veslora {
namespace {

const QString portal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");

} // namespace

SettingsPortal::SettingsPortal(std::optional<QDBusConnection> bus, int limitMilliseconds)
    : m_bus(std::move(bus)), m_owner(m_bus, portal, limitMilliseconds) {
    connect(&m_owner, &ServiceOwner::missing, this, &SettingsPortal::silent);
    connect(&m_owner, &ServiceOwner::changed, this, [this](const QString& before) {
        m_isRead = false;
        listen(before);
        read();
    });
}

void SettingsPortal::follow() {
    m_owner.follow();
}

/// To the one that owns the name now, and no longer to the one before.
void SettingsPortal::listen(const QString& before) {
    const QString signal = QStringLiteral("SettingChanged");
    const char* const slot = SLOT(settingChanged(QString, QString, QDBusVariant));
    if (!before.isEmpty()) {
        m_bus->disconnect(before, portalPath, settingsInterface, signal, this, slot);
    }
    if (!m_owner.name().isEmpty()) {
        m_bus->connect(m_owner.name(), portalPath, settingsInterface, signal, this, slot);
    }
}

void SettingsPortal::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    PortalAppearance words = m_words;
    if (!words.take(group, key, value.variant())) {
        return;
    }
    if (!m_isRead) {
        // It has come to itself, or this overtook the answer; either way all of it is asked for.
        read();
        return;
    }
    m_words = words;
    emit told(m_words.appearance());
}

void SettingsPortal::read() {
    if (!m_owner.name().isEmpty()) {
        m_owner.ask(portalPath, settingsInterface, QStringLiteral("ReadAll"),
                    {PortalAppearance::namespaces()}, [this](const QDBusMessage& reply) { wasRead(reply); });
    }
}

void SettingsPortal::wasRead(const QDBusMessage& reply) {
    using Groups = QMap<QString, QVariantMap>;
    const bool isAnswer =
        reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("a{sa{sv}}");
    PortalAppearance words;
    if (isAnswer) {
        const auto groups = qdbus_cast<Groups>(reply.arguments().constFirst());
        for (auto group = groups.begin(); group != groups.end(); ++group) {
            for (auto entry = group->begin(); entry != group->end(); ++entry) {
                words.take(group.key(), entry.key(), entry.value());
            }
        }
    } else {
        BusErrors::tell(Logs::bus, settingsInterface + QStringLiteral(".ReadAll"), QDBusError(reply));
    }
    m_isRead = words.isTold();
    if (m_isRead) {
        m_words = words;
        emit told(m_words.appearance());
    } else {
        emit silent();
    }
}

} // namespace veslora
