// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/PackageKitTransaction.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QLocale>

#include <limits>
#include <utility>

namespace veslora {

namespace {

const QString packageKit = QStringLiteral("org.freedesktop.PackageKit");
const QString packageKitPath = QStringLiteral("/org/freedesktop/PackageKit");
const QString transactionInterface = QStringLiteral("org.freedesktop.PackageKit.Transaction");

// Numbers of its interface: how a transaction ended, and why.
constexpr quint32 exitSuccess = 1;
constexpr quint32 exitCancelled = 3;
constexpr quint32 exitKilled = 6;
constexpr quint32 exitCancelledForOther = 9;
constexpr quint32 errorCancelled = 17;
constexpr quint32 errorLocked = 26;
constexpr quint32 errorNotAuthorized = 48;

QVariantList hints() {
    return {QStringList{QStringLiteral("locale=") + QLocale().name() + QStringLiteral(".UTF-8"),
                        QStringLiteral("background=false"), QStringLiteral("interactive=true")}};
}

/// Not only trusted ones: whether a file that was brought here may be installed is a question that the system
/// then puts to the user. Its own signature was checked before.
QVariantList filesOf(const QString& path) {
    constexpr quint64 noFlags = 0;
    return {noFlags, QStringList{path}};
}

/// By the names that the service and its guard give their errors.
InstallOutcome outcomeOfError(const QDBusError& error) {
    if (BusErrors::isOfAbsence(error)) {
        return InstallOutcome::absent;
    }
    const bool isForbidden = error.type() == QDBusError::AccessDenied ||
                             error.name().contains(QLatin1String("RefusedByPolicy")) ||
                             error.name().contains(QLatin1String("Denied"));
    return isForbidden ? InstallOutcome::forbidden : InstallOutcome::failed;
}

} // namespace

PackageKitTransaction::PackageKitTransaction(QDBusConnection bus, Scheduler& scheduler, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_scheduler(scheduler) {
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        qCWarning(Logs::updates, "PackageKit went before it was done");
        end(InstallOutcome::failed);
    });
}

InstallOutcome PackageKitTransaction::outcomeOf(quint32 exit, std::optional<quint32> error) {
    if (exit == exitSuccess) {
        return InstallOutcome::installed;
    }
    if (error == errorNotAuthorized) {
        return InstallOutcome::forbidden;
    }
    if (error == errorLocked || exit == exitCancelledForOther) {
        return InstallOutcome::busy;
    }
    const bool isCancelled = exit == exitCancelled || exit == exitKilled || error == errorCancelled;
    return isCancelled ? InstallOutcome::cancelled : InstallOutcome::failed;
}

void PackageKitTransaction::install(const std::string& path) {
    const QString file = QFile::decodeName(QByteArray::fromStdString(path));
    m_limit = m_scheduler.after(longestMaking, [this] {
        qCWarning(Logs::updates, "PackageKit does not answer");
        end(InstallOutcome::failed);
    });
    call(packageKit, packageKitPath, packageKit, QStringLiteral("CreateTransaction"), {},
         [this, file](const QDBusMessage& reply) { made(reply, file); });
}

void PackageKitTransaction::made(const QDBusMessage& reply, const QString& path) {
    m_limit.cancel();
    if (m_hasEnded) {
        return;
    }
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("o")) {
        refused(reply);
        return;
    }
    m_service = reply.service();
    m_object = qvariant_cast<QDBusObjectPath>(reply.arguments().constFirst()).path();
    listen();
    // Without them it asks for no password and words its errors in another language: so it goes on either
    // way.
    call(m_service, m_object, transactionInterface, QStringLiteral("SetHints"), hints(),
         [](const QDBusMessage&) {});
    call(m_service, m_object, transactionInterface, QStringLiteral("InstallFiles"), filesOf(path),
         [this](const QDBusMessage& answer) {
             if (answer.type() == QDBusMessage::ErrorMessage) {
                 refused(answer);
             }
         });
}

void PackageKitTransaction::refused(const QDBusMessage& reply) {
    const QDBusError error(reply);
    BusErrors::tell(Logs::updates, packageKit, error);
    end(outcomeOfError(error));
}

/// Before anything is asked of it, so that not even an end at once is missed.
void PackageKitTransaction::listen() {
    m_watcher.addWatchedService(m_service);
    m_bus.connect(m_service, m_object, transactionInterface, QStringLiteral("ErrorCode"), this,
                  SLOT(errorCode(quint32, QString)));
    m_bus.connect(m_service, m_object, transactionInterface, QStringLiteral("Finished"), this,
                  SLOT(finished(quint32, quint32)));
}

void PackageKitTransaction::errorCode(quint32 code, const QString& /*details*/) {
    qCWarning(Logs::updates, "PackageKit tells of error %u", code);
    m_error = code;
}

void PackageKitTransaction::finished(quint32 exit, quint32 /*runtime*/) {
    end(outcomeOf(exit, m_error));
}

/// A message of our own rather than a proxy's call: a proxy waits for the bus when it is made. The user may
/// take any time to find a password, and the service to fetch what the package depends on.
void PackageKitTransaction::call(const QString& service, const QString& object, const QString& interface,
                                 const QString& method, const QVariantList& arguments,
                                 std::function<void(const QDBusMessage&)> answered) {
    constexpr int endless = std::numeric_limits<int>::max();
    QDBusMessage message = QDBusMessage::createMethodCall(service, object, interface, method);
    message.setArguments(arguments);
    auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(message, endless), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, answered = std::move(answered)] {
        answer->deleteLater();
        answered(answer->reply());
    });
}

void PackageKitTransaction::end(InstallOutcome outcome) {
    if (!std::exchange(m_hasEnded, true)) {
        emit ended(outcome);
        deleteLater();
    }
}

} // namespace veslora
