// SPDX-License-Identifier: MIT
// The way to the system's own bus. Connecting waits for the bus to answer, so it is done in the background
// when somebody first asks, and then once for all of the program. Main thread only.
#pragma once

#include "VesloraLinux/System/LinuxDirectories.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Trouble.h"

#include <QDBusConnection>
#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace veslora {

class SystemBus {
  public:
    /// Absent when there is no bus or it does not answer.
    using Connection = std::optional<QDBusConnection>;
    /// Makes the connection. Called on another thread.
    using Connect = std::function<Connection()>;

    /// Without `connect`, to the bus that the environment names or that listens at the usual place.
    explicit SystemBus(Scheduler& scheduler, Connect connect = usualConnect());

    /// Calls `run` once, unless `receiver` goes before: within this call where the connection is open, and
    /// otherwise when it does or is known not to. What failed is tried again with the next call.
    void whenConnected(QObject& receiver, std::function<void(const Connection&)> run);

    /// Whether the environment names a bus, or one listens at its usual place.
    [[nodiscard]] static bool isNamed(const LinuxDirectories::Environment& environment);

  private:
    struct Waiting {
        QPointer<QObject> receiver;
        std::function<void(const Connection&)> run;
    };

    [[nodiscard]] static Connect usualConnect();
    [[nodiscard]] static Connection connectToUsual(Trouble& trouble);
    void connected(Connection connection);

    Scheduler& m_scheduler;
    Connect m_connect;
    Connection m_connection;
    Task m_connecting;
    std::vector<Waiting> m_waiting;
};

} // namespace veslora
