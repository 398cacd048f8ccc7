// SPDX-License-Identifier: MIT
// A notification service on a bus of the test's own, with the one property that do-not-disturb is told by.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <utility>
#include <vector>

namespace veslora::testing {

class MockNotifications : public QDBusVirtualObject {
  public:
    explicit MockNotifications(QDBusConnection bus) : m_bus(std::move(bus)) {
        m_bus.registerVirtualObject(path, this);
    }
    MockNotifications(const MockNotifications&) = delete;
    MockNotifications& operator=(const MockNotifications&) = delete;
    ~MockNotifications() override {
        leave();
        m_bus.unregisterObject(path);
    }

    [[nodiscard]] bool come() { return m_bus.registerService(name); }
    void leave() { m_bus.unregisterService(name); }

    /// Sets the property and says so.
    void change(const QVariant& value) {
        inhibited = value;
        announce(name, {{property, value}}, {});
    }
    /// Sets it and only says that it is another.
    void changeUntold(const QVariant& value) {
        inhibited = value;
        announce(name, {}, {property});
    }
    /// Says so alone.
    void announce(const QString& interface, const QVariantMap& values, const QStringList& stale) {
        auto signal = QDBusMessage::createSignal(path, properties, QStringLiteral("PropertiesChanged"));
        signal.setArguments({interface, values, stale});
        m_bus.send(signal);
    }
    /// Answers what it was silent about.
    void answerAll() {
        hesitates = false;
        for (const QDBusMessage& call : std::exchange(m_unanswered, {})) {
            answer(call);
        }
    }

    QVariant inhibited = false; ///< one that is not valid is no property at all
    bool hesitates = false;
    int asked = 0;

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) override {
        if (message.interface() != properties || message.member() != QLatin1String("Get") ||
            message.arguments() != QVariantList{name, property}) {
            return false;
        }
        ++asked;
        if (hesitates) {
            m_unanswered.push_back(message);
        } else {
            answer(message);
        }
        return true;
    }

    inline static const QString name = QStringLiteral("org.freedesktop.Notifications");
    inline static const QString path = QStringLiteral("/org/freedesktop/Notifications");
    inline static const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
    inline static const QString property = QStringLiteral("Inhibited");

  private:
    void answer(const QDBusMessage& call) {
        if (inhibited.isValid()) {
            m_bus.send(call.createReply(QVariant::fromValue(QDBusVariant(inhibited))));
        } else {
            m_bus.send(call.createErrorReply(QDBusError::UnknownProperty, QStringLiteral("no")));
        }
    }

    QDBusConnection m_bus;
    std::vector<QDBusMessage> m_unanswered;
};

} // namespace veslora::testing
