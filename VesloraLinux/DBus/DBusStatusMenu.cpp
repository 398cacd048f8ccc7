// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/DBusStatusMenu.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <dbusmenuadaptor.h>
#include <statusnotifieritemadaptor.h>

namespace veslora {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString menuPath = QStringLiteral("/StatusMenu");

/// A call that never makes the bus start the program it is for.
QDBusMessage callOfWatcher(const QString& interface, const QString& method, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(watcherName, watcherPath, interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return call;
}

} // namespace

DBusStatusMenu::DBusStatusMenu(std::optional<QDBusConnection> bus) : m_bus(std::move(bus)), m_item(menuPath) {
    registerStatusTypes();
    new StatusNotifierItemAdaptor(&m_item);
    new DbusmenuAdaptor(&m_menu);
    connect(&m_item, &StatusNotifierItem::activated, &m_menu, &StatusMenuModel::activateFirstRow);
}

DBusStatusMenu::~DBusStatusMenu() {
    if (m_isPublished) {
        m_bus->unregisterService(service());
        m_bus->unregisterObject(itemPath);
        m_bus->unregisterObject(menuPath);
    }
}

void DBusStatusMenu::show(const QString& title, const QString& symbol, std::vector<StatusMenuRow> rows) {
    m_item.setTitle(title);
    m_item.setSymbol(symbol);
    m_menu.setRows(std::move(rows));
    if (m_bus && !std::exchange(m_isWatching, true)) {
        watch();
        askForHost();
    }
}

QString DBusStatusMenu::service() const {
    return QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
}

void DBusStatusMenu::watch() {
    m_watcher.setConnection(*m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForRegistration |
                           QDBusServiceWatcher::WatchForUnregistration);
    m_watcher.addWatchedService(watcherName);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &DBusStatusMenu::askForHost);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [] { qCInfo(Logs::bus, "the desktop's list of status icons has gone"); });
    m_bus->connect(watcherName, watcherPath, watcherName, QStringLiteral("StatusNotifierHostRegistered"),
                   this, SLOT(registerItem()));
}

void DBusStatusMenu::askForHost() {
    const QDBusMessage call =
        callOfWatcher(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                      {watcherName, QStringLiteral("IsStatusNotifierHostRegistered")});
    auto* const answer = new QDBusPendingCallWatcher(m_bus->asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusVariant> hasHost(*answer);
        if (!hasHost.isValid()) {
            BusErrors::tell(Logs::bus, watcherName, hasHost.error());
        } else if (hasHost.value().variant().toBool()) {
            registerItem();
        } else {
            qCInfo(Logs::bus, "no panel shows status icons");
        }
    });
}

void DBusStatusMenu::registerItem() {
    publish();
    const QString method = QStringLiteral("RegisterStatusNotifierItem");
    auto* const answer =
        new QDBusPendingCallWatcher(m_bus->asyncCall(callOfWatcher(watcherName, method, {service()})), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, method] {
        answer->deleteLater();
        if (answer->isError()) {
            BusErrors::tell(Logs::bus, watcherName + '.' + method, answer->error());
        } else {
            qCInfo(Logs::bus, "the status icon was given to a panel");
        }
    });
}

void DBusStatusMenu::publish() {
    if (!std::exchange(m_isPublished, true)) {
        const bool isWhole = m_bus->registerObject(itemPath, &m_item, QDBusConnection::ExportAdaptors) &&
                             m_bus->registerObject(menuPath, &m_menu, QDBusConnection::ExportAdaptors) &&
                             m_bus->registerService(service());
        if (!isWhole) {
            qCWarning(Logs::bus, "can't put %s on the bus: %s", qUtf8Printable(service()),
                      qUtf8Printable(m_bus->lastError().name()));
        }
    }
}

} // namespace veslora
