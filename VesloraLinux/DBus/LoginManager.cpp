// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/LoginManager.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

#include <limits>
#include <utility>

namespace veslora {
namespace {

const QString managerName = QStringLiteral("org.freedesktop.login1");

/// "idle" alone: "sleep" would refuse the user's own wish to suspend too.
QDBusMessage inhibitCall(const QString& reason) {
    QDBusMessage call = QDBusMessage::createMethodCall(managerName, QStringLiteral("/org/freedesktop/login1"),
                                                       QStringLiteral("org.freedesktop.login1.Manager"),
                                                       QStringLiteral("Inhibit"));
    call.setArguments({QStringLiteral("idle"), QStringLiteral("Veslora"), reason, QStringLiteral("block")});
    call.setAutoStartService(false);
    return call;
}

/// The login manager hears of it when the descriptor is closed, also by the end of the program.
class HeldDescriptor final : public Inhibition {
  public:
    explicit HeldDescriptor(const QDBusUnixFileDescriptor& descriptor) : m_descriptor(descriptor) {}

  private:
    QDBusUnixFileDescriptor m_descriptor;
};

} // namespace

LoginManager::LoginManager(SystemBus& bus) : m_bus(bus) {
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &Inhibitor::ownerChanged);
}

void LoginManager::inhibit(AwakeNeeds /*needs*/, const QString& reason, Done done) {
    m_bus.whenConnected(*this, [this, reason, done = std::move(done)](const SystemBus::Connection& bus) {
        if (bus) {
            watch(*bus);
            send(*bus, reason, done);
        } else {
            done(nullptr);
        }
    });
}

void LoginManager::watch(const QDBusConnection& bus) {
    if (!std::exchange(m_isWatching, true)) {
        m_watcher.setConnection(bus);
        m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
        m_watcher.addWatchedService(managerName);
    }
}

void LoginManager::send(QDBusConnection bus, const QString& reason, const Done& done) {
    // Without an end: an answer that came after it would be dropped, and the descriptor stay with the bus.
    constexpr int endless = std::numeric_limits<int>::max();
    auto* const answer = new QDBusPendingCallWatcher(bus.asyncCall(inhibitCall(reason), endless), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, done] {
        const QDBusPendingReply<QDBusUnixFileDescriptor> descriptor(*answer);
        const bool isGranted = descriptor.isValid() && descriptor.value().isValid();
        if (!descriptor.isValid()) {
            BusErrors::tell(Logs::power, managerName + QStringLiteral(" Inhibit"), descriptor.error());
        } else if (!isGranted) {
            qCWarning(Logs::power, "%s gave no descriptor", qUtf8Printable(managerName));
        }
        auto granted = isGranted ? std::make_unique<HeldDescriptor>(descriptor.value()) : nullptr;
        // The answer holds the descriptor too.
        answer->deleteLater();
        done(std::move(granted));
    });
}

} // namespace veslora
