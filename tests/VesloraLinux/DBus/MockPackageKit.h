// SPDX-License-Identifier: MIT
// A PackageKit on a bus of the test's own that installs nothing and ends as a test says.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>

#include <utility>

namespace veslora::testing {

class MockPackageKit : public QDBusVirtualObject {
  public:
    explicit MockPackageKit(QDBusConnection bus) : m_bus(std::move(bus)) {
        m_bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
    }
    MockPackageKit(const MockPackageKit&) = delete;
    MockPackageKit& operator=(const MockPackageKit&) = delete;
    ~MockPackageKit() override {
        leave();
        m_bus.unregisterObject(path);
    }

    [[nodiscard]] bool come() { return m_bus.registerService(name); }
    void leave() { m_bus.unregisterService(name); }

    [[nodiscard]] QString connectionName() const { return m_bus.name(); }

    /// Says why the transaction is about to end.
    void fail(quint32 code) { say(QStringLiteral("ErrorCode"), {code, QStringLiteral("<b>why</b>")}); }
    void finish(quint32 exit) { say(QStringLiteral("Finished"), {exit, quint32{12}}); }
    /// One that is another program's.
    void finishAnother(quint32 exit) {
        auto signal = QDBusMessage::createSignal(path + QStringLiteral("/other"), interface,
                                                 QStringLiteral("Finished"));
        signal.setArguments({exit, quint32{12}});
        m_bus.send(signal);
    }

    QStringList installed;   ///< the files that it was to install
    QStringList hints;       ///< of the last transaction
    quint64 flags = 99;      ///< of the last transaction
    QString creationError;   ///< answers `CreateTransaction` where it is not empty
    QString installError;    ///< answers `InstallFiles` where it is not empty
    bool endsAtOnce = false; ///< successfully, before it has even answered
    bool hangs = false;      ///< at `CreateTransaction`, until it is to `answerLate`

    /// Answers what it hung at.
    void answerLate() {
        m_bus.send(m_pending.createReply(QVariant::fromValue(QDBusObjectPath(transaction))));
    }
    [[nodiscard]] bool isHanging() const { return m_pending.type() == QDBusMessage::MethodCallMessage; }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) override {
        if (message.member() == QLatin1String("CreateTransaction") && hangs) {
            message.setDelayedReply(true);
            m_pending = message;
        } else if (message.member() == QLatin1String("CreateTransaction")) {
            answer(message, creationError, {QVariant::fromValue(QDBusObjectPath(transaction))});
        } else if (message.member() == QLatin1String("SetHints")) {
            hints = message.arguments().value(0).toStringList();
            answer(message, {}, {});
        } else if (message.member() == QLatin1String("InstallFiles")) {
            flags = message.arguments().value(0).toULongLong();
            installed += message.arguments().value(1).toStringList();
            if (endsAtOnce) {
                finish(1);
            }
            answer(message, installError, {});
        }
        return true;
    }

    inline static const QString name = QStringLiteral("org.freedesktop.PackageKit");
    inline static const QString path = QStringLiteral("/org/freedesktop/PackageKit");
    inline static const QString transaction = path + QStringLiteral("/12_abcd");
    inline static const QString interface = QStringLiteral("org.freedesktop.PackageKit.Transaction");

  private:
    void say(const QString& signalName, const QVariantList& arguments) {
        auto signal = QDBusMessage::createSignal(transaction, interface, signalName);
        signal.setArguments(arguments);
        m_bus.send(signal);
    }
    void answer(const QDBusMessage& call, const QString& error, const QVariantList& values) {
        m_bus.send(error.isEmpty() ? call.createReply(values)
                                   : call.createErrorReply(error, QStringLiteral("no")));
    }

    QDBusConnection m_bus;
    QDBusMessage m_pending;
};

} // namespace veslora::testing
