// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerCalls.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace veslora::PlayerCalls {
namespace {

QDBusMessage toPlayer(const QString& service, const char* interface, const char* method) {
    return QDBusMessage::createMethodCall(service, QLatin1String(path), QLatin1String(interface),
                                          QLatin1String(method));
}

QDBusMessage toBus(const char* method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                          QStringLiteral("/org/freedesktop/DBus"),
                                          QStringLiteral("org.freedesktop.DBus"), QLatin1String(method));
}

} // namespace

/// A message of our own rather than a proxy's call: a proxy waits for the bus when it is made.
void send(const QDBusConnection& bus, QDBusMessage call, QObject* context, Answered answered) {
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, timeoutMilliseconds), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, answered = std::move(answered)] {
                         watcher->deleteLater();
                         answered(watcher->reply());
                     });
}

QDBusMessage allProperties(const QString& service, const char* interface) {
    QDBusMessage call = toPlayer(service, propertiesInterface, "GetAll");
    call << QLatin1String(interface);
    return call;
}

QDBusMessage property(const QString& service, const char* name) {
    QDBusMessage call = toPlayer(service, propertiesInterface, "Get");
    call << QLatin1String(playerInterface) << QLatin1String(name);
    return call;
}

QDBusMessage command(const QString& service, const char* method) {
    return toPlayer(service, playerInterface, method);
}

QDBusMessage allNames() {
    return toBus("ListNames");
}

QDBusMessage ownerOf(const QString& name) {
    QDBusMessage call = toBus("GetNameOwner");
    call << name;
    return call;
}

bool isTimeout(const QDBusMessage& reply) {
    const QDBusError::ErrorType type = QDBusError(reply).type();
    return type == QDBusError::NoReply || type == QDBusError::Timeout || type == QDBusError::TimedOut;
}

} // namespace veslora::PlayerCalls
