// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SpotifyPermission.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace veslora {

namespace {

const QString player = QStringLiteral("org.mpris.MediaPlayer2.spotify");
const QString daemon = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

} // namespace

AutomationStatus SpotifyPermission::status(const std::string& bundleID) {
    if (bundleID != "com.spotify.client") {
        return AutomationStatus::appNotRunning;
    }
    watch();
    return m_isRunning ? AutomationStatus::allowed : AutomationStatus::appNotRunning;
}

void SpotifyPermission::watch() {
    auto bus = std::exchange(m_bus, std::nullopt);
    if (!bus) {
        return;
    }
    bus->connect(daemon, daemonPath, daemon, QStringLiteral("NameOwnerChanged"), {player}, {}, this,
                 SLOT(ownerChanged(QString, QString, QString)));
    auto question =
        QDBusMessage::createMethodCall(daemon, daemonPath, daemon, QStringLiteral("NameHasOwner"));
    question.setArguments({player});
    auto* const answer = new QDBusPendingCallWatcher(bus->asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<bool> hasOwner = *answer;
        setRunning(hasOwner.isValid() && hasOwner.value());
    });
}

void SpotifyPermission::ownerChanged(const QString& /*name*/, const QString& /*before*/,
                                     const QString& after) {
    setRunning(!after.isEmpty());
}

void SpotifyPermission::setRunning(bool isRunning) {
    if (std::exchange(m_isRunning, isRunning) != isRunning) {
        emit statusChanged();
    }
}

} // namespace veslora
