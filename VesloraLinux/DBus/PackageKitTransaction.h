// SPDX-License-Identifier: MIT
// One installation by PackageKit, from the call that makes it to its end. Deletes itself then. Main thread
// only.
#pragma once

#include "VesloraUI/Platform/PackageInstalling.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <string>

namespace veslora {

class Scheduler;

class PackageKitTransaction : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PackageKitTransaction)

  public:
    /// Seconds in which the service makes a transaction; nobody is asked anything until then.
    static constexpr double longestMaking = 60;

    PackageKitTransaction(QDBusConnection bus, Scheduler& scheduler, QObject* parent);
    ~PackageKitTransaction() override = default;

    /// Begins; the bus may start the service for it. Called once.
    void install(const std::string& path);

    /// What the numbers of an end and of an error mean together; see `PackageKit`'s list of them.
    [[nodiscard]] static InstallOutcome outcomeOf(quint32 exit, std::optional<quint32> error);

  signals:
    /// Said once.
    void ended(InstallOutcome outcome);

  private slots:
    void errorCode(quint32 code, const QString& details);
    void finished(quint32 exit, quint32 runtime);

  private:
    void made(const QDBusMessage& reply, const QString& path);
    void refused(const QDBusMessage& reply);
    void listen();
    void call(const QString& service, const QString& object, const QString& interface, const QString& method,
              const QVariantList& arguments, std::function<void(const QDBusMessage&)> answered);
    void end(InstallOutcome outcome);

    QDBusConnection m_bus;
    Scheduler& m_scheduler;
    QDBusServiceWatcher m_watcher;
    QString m_service; ///< the program's own name on the bus, which nobody else ever gets
    QString m_object;
    std::optional<quint32> m_error;
    Task m_limit; ///< of its making
    bool m_hasEnded = false;
};

} // namespace veslora
