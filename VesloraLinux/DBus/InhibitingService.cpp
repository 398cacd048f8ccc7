// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/InhibitingService.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <limits>
#include <utility>

namespace veslora {
namespace {

/// How a kind of service is spoken to.
struct Address {
    QString name;
    QString path;
    QString interface;
    QString release; ///< the method that takes back
};

Address addressOf(InhibitingService::Kind kind) {
    switch (kind) {
    case InhibitingService::Kind::sessionManager:
        return {QStringLiteral("org.gnome.SessionManager"), QStringLiteral("/org/gnome/SessionManager"),
                QStringLiteral("org.gnome.SessionManager"), QStringLiteral("Uninhibit")};
    case InhibitingService::Kind::powerManagement:
        return {QStringLiteral("org.freedesktop.PowerManagement"),
                QStringLiteral("/org/freedesktop/PowerManagement/Inhibit"),
                QStringLiteral("org.freedesktop.PowerManagement.Inhibit"), QStringLiteral("UnInhibit")};
    case InhibitingService::Kind::screenSaver:
        break;
    }
    return {QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("/org/freedesktop/ScreenSaver"),
            QStringLiteral("org.freedesktop.ScreenSaver"), QStringLiteral("UnInhibit")};
}

/// A message of our own rather than a proxy's call: a proxy waits for the bus when it is made, and would have
/// the bus start a service that is not there.
QDBusMessage callOf(const Address& address, const QString& method, const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(address.name, address.path, address.interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return call;
}

/// Given back to the very connection that granted it: to one that has taken over the service's name the
/// number may mean another program's.
class Cookie final : public Inhibition {
  public:
    Cookie(QDBusConnection bus, Address address, const QString& owner, quint32 number)
        : m_bus(std::move(bus)), m_address(std::move(address)), m_number(number) {
        m_address.name = owner;
    }
    ~Cookie() override {
        QDBusMessage call = callOf(m_address, m_address.release, {m_number});
        if (!m_bus.send(call)) {
            qCWarning(Logs::power, "can't give a number back to %s", qUtf8Printable(m_address.interface));
        }
    }
    Cookie(const Cookie&) = delete;
    Cookie& operator=(const Cookie&) = delete;

  private:
    QDBusConnection m_bus;
    Address m_address;
    quint32 m_number;
};

} // namespace

InhibitingService::InhibitingService(Kind kind, std::optional<QDBusConnection> bus)
    : m_kind(kind), m_bus(std::move(bus)) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &Inhibitor::ownerChanged);
}

QString InhibitingService::name() const {
    return addressOf(m_kind).name;
}

AwakeNeeds InhibitingService::covers() const {
    return {.system = m_kind != Kind::screenSaver, .display = m_kind != Kind::powerManagement};
}

void InhibitingService::watch() {
    if (!std::exchange(m_isWatching, true)) {
        m_watcher.setConnection(*m_bus);
        m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
        m_watcher.addWatchedService(addressOf(m_kind).name);
    }
}

QVariantList InhibitingService::arguments(AwakeNeeds needs, const QString& reason) const {
    if (m_kind != Kind::sessionManager) {
        return {QStringLiteral("Veslora"), reason};
    }
    constexpr quint32 noWindow = 0;
    constexpr quint32 suspending = 4;
    constexpr quint32 goingIdle = 8;
    const quint32 flags = (needs.system ? suspending : 0) | (needs.display ? goingIdle : 0);
    return {QStringLiteral("org.veslora.Veslora"), noWindow, reason, flags};
}

void InhibitingService::inhibit(AwakeNeeds needs, const QString& reason, Done done) {
    if (!m_bus) {
        done(nullptr);
        return;
    }
    watch();
    // Without an end: an answer that came after it would be dropped, and the number with it.
    constexpr int endless = std::numeric_limits<int>::max();
    const Address address = addressOf(m_kind);
    const QDBusMessage call = callOf(address, QStringLiteral("Inhibit"), arguments(needs, reason));
    auto* const answer = new QDBusPendingCallWatcher(m_bus->asyncCall(call, endless), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this,
            [bus = *m_bus, address, answer, done = std::move(done)] {
                answer->deleteLater();
                const QDBusPendingReply<quint32> number(*answer);
                if (!number.isValid()) {
                    BusErrors::tell(Logs::power, address.interface + QStringLiteral(".Inhibit"),
                                    number.error());
                }
                done(number.isValid()
                         ? std::make_unique<Cookie>(bus, address, number.reply().service(), number.value())
                         : nullptr);
            });
}

} // namespace veslora
