// SPDX-License-Identifier: MIT
// The login manager, which keeps the machine from idling to sleep where no desktop does: for as long as a
// descriptor that it gives stays open. Main thread only.
#pragma once

#include "VesloraLinux/System/Inhibitor.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>

#include <functional>
#include <optional>

namespace veslora {

class LoginManager final : public Inhibitor {
    Q_OBJECT

  public:
    /// Makes the connection to the system bus; absent where there is none. Called on another thread.
    using Connect = std::function<std::optional<QDBusConnection>()>;

    /// Connects with the first request. Without `connect`, to the machine's own system bus.
    explicit LoginManager(Scheduler& scheduler, Connect connect = systemBus);

    [[nodiscard]] AwakeNeeds covers() const override { return {.system = true, .display = false}; }
    void inhibit(AwakeNeeds needs, const QString& reason, Done done) override;

    [[nodiscard]] static std::optional<QDBusConnection> systemBus();

  private:
    struct Request {
        QString reason;
        Done done;
    };
    void connected(std::optional<QDBusConnection> bus);
    void send(const Request& request);

    Scheduler& m_scheduler;
    Connect m_connect;
    std::optional<QDBusConnection> m_bus;
    QDBusServiceWatcher m_watcher;
    Task m_connecting;
    std::vector<Request> m_waiting; ///< for the connection
};

} // namespace veslora
