// SPDX-License-Identifier: MIT
// A settings portal on a bus of the test's own, which says what a test wants.
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMap>

#include <utility>
#include <vector>

namespace veslora::testing {

class MockPortal : public QDBusVirtualObject {
  public:
    using Groups = QMap<QString, QVariantMap>;

    explicit MockPortal(QDBusConnection bus) : m_bus(std::move(bus)) {
        qDBusRegisterMetaType<Groups>();
        m_bus.registerVirtualObject(path, this);
    }
    MockPortal(const MockPortal&) = delete;
    MockPortal& operator=(const MockPortal&) = delete;
    ~MockPortal() override {
        leave();
        m_bus.unregisterObject(path);
    }

    [[nodiscard]] bool come() { return m_bus.registerService(name); }
    void leave() { m_bus.unregisterService(name); }

    /// Sets a value and says so.
    void change(const QString& group, const QString& key, const QVariant& value) {
        groups[group][key] = value;
        announce(group, key, value);
    }
    /// Says so alone.
    void announce(const QString& group, const QString& key, const QVariant& value) {
        auto signal = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
        signal.setArguments({group, key, QVariant::fromValue(QDBusVariant(value))});
        m_bus.send(signal);
    }
    /// Answers what it was silent about.
    void answerAll() {
        hesitates = false;
        for (const QDBusMessage& call : std::exchange(m_unanswered, {})) {
            answer(call);
        }
    }

    Groups groups;
    QVariant oddAnswer; ///< in place of the groups, if it is valid
    bool hesitates = false;
    bool refuses = false;
    std::vector<QStringList> asked; ///< for which groups, each time

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) override {
        if (message.member() != QLatin1String("ReadAll") || message.interface() != interface) {
            return false;
        }
        asked.push_back(message.arguments().constFirst().toStringList());
        if (hesitates) {
            m_unanswered.push_back(message);
        } else {
            answer(message);
        }
        return true;
    }

    inline static const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
    inline static const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    inline static const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

  private:
    void answer(const QDBusMessage& call) {
        if (refuses) {
            m_bus.send(call.createErrorReply(QDBusError::UnknownInterface, QStringLiteral("no")));
        } else {
            m_bus.send(call.createReply(oddAnswer.isValid() ? oddAnswer : QVariant::fromValue(groups)));
        }
    }

    QDBusConnection m_bus;
    std::vector<QDBusMessage> m_unanswered;
};

} // namespace veslora::testing
