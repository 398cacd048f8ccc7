// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/LoginManager.h"

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

LoginManager::LoginManager(Scheduler& scheduler, Connect connect)
    : m_scheduler(scheduler), m_connect(std::move(connect)) {
    QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &Inhibitor::ownerChanged);
}

std::optional<QDBusConnection> LoginManager::systemBus() {
    QDBusConnection bus = QDBusConnection::systemBus();
    return bus.isConnected() ? std::optional(bus) : std::nullopt;
}

void LoginManager::inhibit(AwakeNeeds /*needs*/, const QString& reason, Done done) {
    if (m_bus) {
        send({reason, std::move(done)});
        return;
    }
    m_waiting.push_back({reason, std::move(done)});
    if (m_connecting.isActive()) {
        return;
    }
    // Connecting waits for the bus to answer.
    const auto bus = std::make_shared<std::optional<QDBusConnection>>();
    m_connecting = m_scheduler.background([bus, connect = m_connect] { *bus = connect(); },
                                          [this, bus] { connected(*bus); });
}

void LoginManager::connected(std::optional<QDBusConnection> bus) {
    m_bus = std::move(bus);
    if (m_bus) {
        m_watcher.setConnection(*m_bus);
        m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
        m_watcher.addWatchedService(managerName);
    }
    for (const Request& request : std::exchange(m_waiting, {})) {
        if (m_bus) {
            send(request);
        } else {
            request.done(nullptr);
        }
    }
}

void LoginManager::send(const Request& request) {
    // Without an end: an answer that came after it would be dropped, and the descriptor stay with the bus.
    constexpr int endless = std::numeric_limits<int>::max();
    auto* const answer =
        new QDBusPendingCallWatcher(m_bus->asyncCall(inhibitCall(request.reason), endless), this);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, done = request.done] {
        const QDBusPendingReply<QDBusUnixFileDescriptor> descriptor(*answer);
        const bool isGranted = descriptor.isValid() && descriptor.value().isValid();
        auto granted = isGranted ? std::make_unique<HeldDescriptor>(descriptor.value()) : nullptr;
        // The answer holds the descriptor too.
        answer->deleteLater();
        done(std::move(granted));
    });
}

} // namespace veslora
