// SPDX-License-Identifier: MIT
// A media player on a bus of the test's own, which says what a test wants and remembers what it was told.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <vector>

namespace veslora::testing {

class MockPlayer : public QDBusVirtualObject {
  public:
    static constexpr const char* usualName = "org.mpris.MediaPlayer2.spotify";

    explicit MockPlayer(QDBusConnection bus, QString name = QLatin1String(usualName))
        : m_bus(std::move(bus)), m_name(std::move(name)) {
        m_bus.registerVirtualObject(path, this);
    }
    MockPlayer(const MockPlayer&) = delete;
    MockPlayer& operator=(const MockPlayer&) = delete;
    ~MockPlayer() override {
        leave();
        m_bus.unregisterObject(path);
    }

    [[nodiscard]] bool come() { return m_bus.registerService(m_name); }
    void leave() { m_bus.unregisterService(m_name); }

    /// Changes and says so, with the changed value alone as players do.
    void change(const QString& property, const QVariant& value) {
        properties[property] = value;
        auto signal =
            QDBusMessage::createSignal(path, propertiesInterface, QStringLiteral("PropertiesChanged"));
        signal.setArguments({player, QVariantMap{{property, value}}, QStringList()});
        m_bus.send(signal);
    }
    void seek(qlonglong position) {
        properties[QStringLiteral("Position")] = position;
        auto signal = QDBusMessage::createSignal(path, player, QStringLiteral("Seeked"));
        signal.setArguments({position});
        m_bus.send(signal);
    }
    /// Answers what it was silent about.
    void answerAll() {
        hesitates = false;
        for (const QDBusMessage& call : std::exchange(m_unanswered, {})) {
            answer(call);
        }
    }

    QVariantMap properties;
    bool hesitates = false;
    bool refuses = false;
    int looks = 0;             ///< times that somebody asked for everything
    std::vector<QString> told; ///< commands as they came

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) override {
        if (message.member() == QLatin1String("GetAll")) {
            ++looks;
        } else {
            told.push_back(message.member());
        }
        if (hesitates) {
            m_unanswered.push_back(message);
        } else {
            answer(message);
        }
        return true;
    }

    inline static const QString path = QStringLiteral("/org/mpris/MediaPlayer2");
    inline static const QString player = QStringLiteral("org.mpris.MediaPlayer2.Player");
    inline static const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

  private:
    void answer(const QDBusMessage& call) {
        if (refuses) {
            m_bus.send(call.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        } else if (call.member() == QLatin1String("GetAll")) {
            m_bus.send(call.createReply(properties));
        } else {
            m_bus.send(call.createReply());
        }
    }

    QDBusConnection m_bus;
    QString m_name;
    std::vector<QDBusMessage> m_unanswered;
};

} // namespace veslora::testing
