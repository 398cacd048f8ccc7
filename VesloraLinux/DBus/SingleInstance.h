// SPDX-License-Identifier: MIT
// One program for each user: whoever is started second asks the first to open its settings. Main thread only.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Files.h"

#include <QDBusConnection>
#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace veslora {

/// Held by a lock on the support directory, which works everywhere, and by a bus name, which also shuts out a
/// start with another support directory. The first is reached over the bus, else by a socket beside the lock.
class SingleInstance final : public QObject {
    Q_OBJECT

  public:
    SingleInstance(Files& files, std::string supportDirectory, std::optional<QDBusConnection> bus);
    ~SingleInstance() override;
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// True when this is the first one; `openSettings` then runs whenever another was started. False when
    /// there is a first one already; it has been asked, and this one should end. Without a place for a lock
    /// it is taken as the first, rather than not to run at all.
    [[nodiscard]] bool claim(std::function<void()> openSettings);

  public slots:
    /// Asked for over the bus, by the name that the interface gives it.
    void OpenSettings();

  private:
    enum class Lock { taken, held, unavailable };

    [[nodiscard]] Lock takeLock();
    [[nodiscard]] bool takeName();
    [[nodiscard]] bool askOverBus();
    [[nodiscard]] bool askOverSocket();
    void listen();
    void acceptAll();

    Files& m_files;
    std::string m_directory;
    std::optional<QDBusConnection> m_bus;
    std::function<void()> m_openSettings;
    FileDescriptor m_lock;
    FileDescriptor m_listener;
    std::unique_ptr<QSocketNotifier> m_notifier;
    bool m_hasName = false;
};

} // namespace veslora
