// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/TimerNotifier.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraLinux/DBus/TimerLengthDescription.h"
#include "VesloraUI/Platform/Logs.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace veslora {
namespace {

const QString notificationsName = QStringLiteral("org.freedesktop.Notifications");
const QString notificationsPath = QStringLiteral("/org/freedesktop/Notifications");

QVariantMap hints() {
    return {{QStringLiteral("desktop-entry"), QStringLiteral("org.veslora.Veslora")},
            {QStringLiteral("suppress-sound"), true}};
}

} // namespace

/// A message of our own rather than a proxy's call: a proxy waits for the bus when it is made.
void TimerNotifier::call(const QString& service, const QString& method, const QVariantList& arguments,
                         std::function<void(const QDBusMessage&)> answered) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, notificationsPath, notificationsName, method);
    message.setArguments(arguments);
    auto* const answer = new QDBusPendingCallWatcher(m_bus->asyncCall(message), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, answered = std::move(answered)] {
        answer->deleteLater();
        answered(answer->reply());
    });
}

void TimerNotifier::timerFinished(double duration) {
    if (!m_bus) {
        return;
    }
    const QString body = QCoreApplication::translate("TimerNotifier", "Your %1 timer finished.")
                             .arg(timerLengthDescription(duration));
    call(notificationsName, QStringLiteral("GetCapabilities"), {}, [this, body](const QDBusMessage& reply) {
        const QDBusPendingReply<QStringList> capabilities(reply);
        if (capabilities.isValid()) {
            const bool hasMarkup = capabilities.value().contains(QStringLiteral("body-markup"));
            notify(reply.service(), hasMarkup ? body.toHtmlEscaped() : body);
        } else {
            BusErrors::tell(Logs::bus, notificationsName + QStringLiteral(".GetCapabilities"),
                            capabilities.error());
        }
    });
}

/// Sent to the very service that told what it can do, so that the id is never taken for another's.
void TimerNotifier::notify(const QString& service, const QString& body) {
    const quint32 replaced = service == m_shown.service ? m_shown.id : 0;
    constexpr int asLongAsUsual = -1;
    const QVariantList arguments{QStringLiteral("Veslora"),
                                 replaced,
                                 QString(),
                                 QCoreApplication::translate("TimerNotifier", "Timer done"),
                                 body,
                                 QStringList(),
                                 hints(),
                                 asLongAsUsual};
    call(service, QStringLiteral("Notify"), arguments, [this](const QDBusMessage& reply) {
        const QDBusPendingReply<quint32> id(reply);
        if (id.isValid()) {
            m_shown = {reply.service(), id.value()};
        } else {
            BusErrors::tell(Logs::bus, notificationsName + QStringLiteral(".Notify"), id.error());
        }
    });
}

} // namespace veslora
