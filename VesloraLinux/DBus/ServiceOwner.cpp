// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/ServiceOwner.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace veslora {
namespace {

const QString daemon = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

} // namespace

void ServiceOwner::follow() {
    if (!m_bus) {
        emit missing();
        return;
    }
    m_bus->connect(daemon, daemonPath, daemon, QStringLiteral("NameOwnerChanged"), {m_service}, {}, this,
                   SLOT(ownerChanged(QString, QString, QString)));
    auto question =
        QDBusMessage::createMethodCall(daemon, daemonPath, daemon, QStringLiteral("GetNameOwner"));
    question.setArguments({m_service});
    call(question, [this](const QDBusMessage& reply) {
        const QDBusPendingReply<QString> owner(reply);
        if (!owner.isValid() || owner.value().isEmpty()) {
            BusErrors::tell(Logs::bus, m_service, owner.error());
            // One that came meanwhile has been heard of already.
            if (m_name.isEmpty()) {
                emit missing();
            }
            return;
        }
        setName(owner.value());
    });
}

void ServiceOwner::ownerChanged(const QString& /*name*/, const QString& /*before*/, const QString& after) {
    setName(after);
}

void ServiceOwner::setName(const QString& name) {
    if (m_name != name) {
        emit changed(std::exchange(m_name, name));
    }
}

void ServiceOwner::ask(const QString& path, const QString& interface, const QString& method,
                       const QVariantList& arguments,
                       std::function<void(const QDBusMessage& reply)> answered) {
    auto question = QDBusMessage::createMethodCall(m_name, path, interface, method);
    question.setArguments(arguments);
    call(question, [this, owner = m_name, answered = std::move(answered)](const QDBusMessage& reply) {
        if (owner == m_name) {
            answered(reply);
        }
    });
}

void ServiceOwner::call(QDBusMessage message, std::function<void(const QDBusMessage& reply)> answered) {
    message.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(m_bus->asyncCall(message, m_limit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, answered = std::move(answered)] {
        answer->deleteLater();
        answered(answer->reply());
    });
}

} // namespace veslora
