// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/SpotifyOnBus.h"

#include "VesloraLinux/DBus/BusErrors.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/SpotifyScripts.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <utility>

namespace veslora {

namespace {

const QString service = QStringLiteral("org.mpris.MediaPlayer2.spotify");
const QString path = QStringLiteral("/org/mpris/MediaPlayer2");
const QString player = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

constexpr int limit = static_cast<int>(ScriptRunning::timeLimit * 1000);

QDBusMessage getAll() {
    auto message =
        QDBusMessage::createMethodCall(service, path, propertiesInterface, QStringLiteral("GetAll"));
    message.setArguments({player});
    return message;
}

QVariantMap metadataOf(const QVariantMap& properties) {
    const QVariant metadata = properties.value(QStringLiteral("Metadata"));
    return metadata.canConvert<QDBusArgument>() ? qdbus_cast<QVariantMap>(metadata.value<QDBusArgument>())
                                                : metadata.toMap();
}

bool isNumber(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

class UserInfoWriter {
  public:
    void text(std::string_view key, const QVariant& value) {
        if (value.typeId() == QMetaType::QString) {
            m_info[std::string(key)] = value.toString().toStdString();
        } else if (value.canConvert<QDBusObjectPath>()) {
            m_info[std::string(key)] = value.value<QDBusObjectPath>().path().toStdString();
        } else if (value.typeId() == QMetaType::QStringList) {
            m_info[std::string(key)] = value.toStringList().join(QStringLiteral(", ")).toStdString();
        }
    }
    /// In microseconds, as the bus tells it, by so many of which a unit of the key is.
    void time(std::string_view key, const QVariant& value, double unit) {
        if (isNumber(value)) {
            m_info[std::string(key)] = value.toDouble() / unit;
        }
    }
    [[nodiscard]] const SpotifyNotification::UserInfo& info() const { return m_info; }

  private:
    SpotifyNotification::UserInfo m_info;
};

/// The method that carries out a script; empty for the one that only asks.
QString methodOf(std::string_view script) {
    if (script == SpotifyScripts::togglePlayPause) {
        return QStringLiteral("PlayPause");
    }
    if (script == SpotifyScripts::next) {
        return QStringLiteral("Next");
    }
    return script == SpotifyScripts::previous ? QStringLiteral("Previous") : QString();
}

} // namespace

SpotifyNotification::UserInfo spotifyUserInfo(const QVariantMap& properties) {
    constexpr double perSecond = 1e6;
    constexpr double perMillisecond = 1e3;
    const QVariantMap metadata = metadataOf(properties);
    const auto value = [&metadata](const char* key) { return metadata.value(QLatin1String(key)); };
    UserInfoWriter writer;
    writer.text(SpotifyNotification::playerState, properties.value(QStringLiteral("PlaybackStatus")));
    writer.text(SpotifyNotification::trackName, value("xesam:title"));
    writer.text(SpotifyNotification::artist, value("xesam:artist"));
    writer.text(SpotifyNotification::album, value("xesam:album"));
    writer.text(SpotifyNotification::trackID, value("mpris:trackid"));
    writer.time(SpotifyNotification::duration, value("mpris:length"), perMillisecond);
    writer.time(SpotifyNotification::playbackPosition, properties.value(QStringLiteral("Position")),
                perSecond);
    return writer.info();
}

void SpotifyOnBus::start() {
    if (!m_bus) {
        return;
    }
    m_bus->connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                   QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), {service}, {},
                   this, SLOT(ownerChanged(QString, QString, QString)));
    m_bus->connect(service, path, propertiesInterface, QStringLiteral("PropertiesChanged"), this,
                   SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    m_bus->connect(service, path, player, QStringLiteral("Seeked"), this, SLOT(seeked(qlonglong)));
    read();
}

void SpotifyOnBus::ownerChanged(const QString& /*name*/, const QString& /*before*/, const QString& after) {
    if (after.isEmpty()) {
        emit playbackStateChanged({{std::string(SpotifyNotification::playerState), "Stopped"}});
    } else {
        read();
    }
}

void SpotifyOnBus::propertiesChanged(const QString& interface, const QVariantMap& /*changed*/,
                                     const QStringList& /*invalidated*/) {
    if (interface == player) {
        read();
    }
}

/// Taken at its word, since players that still have to get there answer with where they were.
void SpotifyOnBus::seeked(qlonglong position) {
    m_sought = position;
    read();
}

/// All of it each time: a change never tells of the position, and often of half of what belongs together.
void SpotifyOnBus::read() {
    m_isStale = m_isReading;
    if (m_isReading) {
        return;
    }
    m_isReading = true;
    const double rest = m_lastRead + pace - m_scheduler.steadyNow();
    if (rest > 0) {
        m_nextRead = m_scheduler.after(std::min(rest, pace), [this] { readNow(); });
    } else {
        readNow();
    }
}

void SpotifyOnBus::readNow() {
    // What changed until now, this look sees.
    m_isStale = false;
    m_lastRead = m_scheduler.steadyNow();
    call(getAll(), [this, sought = std::exchange(m_sought, std::nullopt)](const QDBusMessage& reply) {
        wasRead(reply, sought);
    });
}

/// What was read is told although it may have changed meanwhile: a player that changes all the time is shown
/// too.
void SpotifyOnBus::wasRead(const QDBusMessage& reply, std::optional<qlonglong> sought) {
    m_isReading = false;
    tell(reply, sought);
    if (m_isStale) {
        read();
    }
    if (m_held && --m_readsBeforeHeld <= 0) {
        finish(*std::exchange(m_held, std::nullopt));
    }
}

void SpotifyOnBus::tell(const QDBusMessage& reply, std::optional<qlonglong> sought) {
    const QDBusPendingReply<QVariantMap> answer(reply);
    if (!answer.isValid()) {
        BusErrors::tell(Logs::bus, service + QStringLiteral(".GetAll"), answer.error());
        return;
    }
    QVariantMap properties = answer.value();
    if (sought) {
        properties[QStringLiteral("Position")] = *sought;
    }
    emit playbackStateChanged(spotifyUserInfo(properties));
}

void SpotifyOnBus::call(const QDBusMessage& message,
                        std::function<void(const QDBusMessage& reply)> answered) {
    // Nobody is to start Spotify for this.
    QDBusMessage quiet = message;
    quiet.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(m_bus->asyncCall(quiet, limit), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, answered = std::move(answered)] {
        answer->deleteLater();
        answered(answer->reply());
    });
}

Task SpotifyOnBus::run(const std::string& script, std::function<void(const Result&)> done) {
    auto result = std::make_shared<Result>(MusicError::failed);
    auto listener = std::make_shared<TaskState>();
    listener->run = [result, done = std::move(done)] { done(*result); };
    m_scripts.push_back({script, result, listener});
    if (m_scripts.size() == 1) {
        QMetaObject::invokeMethod(this, &SpotifyOnBus::runNext, Qt::QueuedConnection);
    }
    return Task(listener);
}

void SpotifyOnBus::runNext() {
    const std::string& script = m_scripts.front().text;
    const QString method = methodOf(script);
    const bool asks = script == SpotifyScripts::artworkUrl;
    if (!m_bus || (method.isEmpty() && !asks)) {
        finish(MusicError::failed);
        return;
    }
    call(asks ? getAll() : QDBusMessage::createMethodCall(service, path, player, method),
         [this, asks](const QDBusMessage& reply) {
             Result result = MusicError::failed;
             if (reply.type() == QDBusMessage::ReplyMessage) {
                 const auto properties = asks ? QDBusPendingReply<QVariantMap>(reply).value() : QVariantMap();
                 result =
                     metadataOf(properties).value(QStringLiteral("mpris:artUrl")).toString().toStdString();
             }
             // Changes that came before it are told first.
             if (m_isReading) {
                 m_held = std::move(result);
                 m_readsBeforeHeld = m_isStale ? 2 : 1;
             } else {
                 finish(std::move(result));
             }
         });
}

void SpotifyOnBus::finish(Result result) {
    const Script script = m_scripts.front();
    m_scripts.pop_front();
    if (!m_scripts.empty()) {
        QMetaObject::invokeMethod(this, &SpotifyOnBus::runNext, Qt::QueuedConnection);
    }
    *script.result = std::move(result);
    if (const auto run = std::exchange(script.listener->run, nullptr)) {
        run();
    }
}

} // namespace veslora
