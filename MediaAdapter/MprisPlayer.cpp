// SPDX-License-Identifier: MIT
#include "MediaAdapter/MprisPlayer.h"

#include "MediaAdapter/Logs.h"
#include "MediaAdapter/PlayerCalls.h"
#include "MediaAdapter/PropertyValues.h"

#include <QDBusVariant>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace veslora {
namespace {

using namespace std::chrono_literals;

constexpr auto firstRetry = 2s;
constexpr int mostRetries = 6;
constexpr auto betweenPositions = 50ms;

const QString metadataKey = QStringLiteral("Metadata");
const QString statusKey = QStringLiteral("PlaybackStatus");
const QString positionKey = QStringLiteral("Position");

/// The number in a program's own name on the bus, such as ":1.42".
std::uint64_t numberOf(const QString& owner) {
    return owner.mid(owner.lastIndexOf(QLatin1Char('.')) + 1).toULongLong();
}

} // namespace

MprisPlayer::MprisPlayer(const Surroundings& surroundings, const QString& owner, bool wasThere)
    : m_surroundings(surroundings), m_owner(owner), m_wasThere(wasThere) {
    m_player.connection = numberOf(owner);
    m_retry.setSingleShot(true);
    connect(&m_retry, &QTimer::timeout, this, &MprisPlayer::askForAll);
    askForName();
    askForAll();
}

void MprisPlayer::addName(const std::string& name) {
    m_names.insert(name);
    m_player.name = *m_names.begin();
}

void MprisPlayer::removeName(const std::string& name) {
    m_names.erase(name);
    m_player.name = m_names.empty() ? std::string() : *m_names.begin();
}

void MprisPlayer::askForName() {
    PlayerCalls::send(
        m_surroundings.bus, PlayerCalls::allProperties(m_owner, PlayerCalls::rootInterface), this,
        [this](const QDBusMessage& reply) {
            const QVariantMap properties = PropertyValues::map(reply.arguments().value(0));
            m_player.desktopEntry =
                PropertyValues::text(properties.value(QStringLiteral("DesktopEntry"))).value_or("");
            emit changed();
        });
}

void MprisPlayer::askForAll() {
    if (std::exchange(m_isAllAsked, true)) {
        m_isAllStale = true;
        return;
    }
    PlayerCalls::send(m_surroundings.bus, PlayerCalls::allProperties(m_owner, PlayerCalls::playerInterface),
                      this, [this](const QDBusMessage& reply) {
                          m_isAllAsked = false;
                          if (reply.type() == QDBusMessage::ReplyMessage) {
                              m_failures = 0;
                              takeOver(PropertyValues::map(reply.arguments().value(0)));
                              m_isKnown = true;
                              m_hasAnswered = true;
                          } else {
                              failed(reply);
                          }
                          askAgain();
                          emit changed();
                      });
}

/// What has come in meanwhile may be newer than the answer.
void MprisPlayer::askAgain() {
    if (std::exchange(m_isAllStale, false)) {
        QTimer::singleShot(betweenPositions, this, &MprisPlayer::askForAll);
    }
}

/// It may be stopped, or not be ready yet. It is asked again a few times, ever more rarely, so that a program
/// which never answers does not wake us for ever.
void MprisPlayer::failed(const QDBusMessage& reply) {
    qCInfo(Logs::media, "%s: %s", m_player.name.c_str(), qUtf8Printable(reply.errorName()));
    m_hasAnswered = m_hasAnswered || !PlayerCalls::isTimeout(reply);
    if (m_failures < mostRetries && !m_retry.isActive()) {
        m_retry.start(firstRetry * (1 << m_failures));
        ++m_failures;
    }
}

void MprisPlayer::askForPosition() {
    if (std::exchange(m_isPositionAsked, true)) {
        m_isPositionStale = true;
        return;
    }
    PlayerCalls::send(m_surroundings.bus, PlayerCalls::property(m_owner, "Position"), this,
                      [this](const QDBusMessage& reply) {
                          m_isPositionAsked = false;
                          const bool isOutdated = std::exchange(m_isAnswerOutdated, false);
                          const QVariant value = reply.arguments().value(0);
                          const auto seconds = PropertyValues::seconds(value.value<QDBusVariant>().variant());
                          if (reply.type() == QDBusMessage::ReplyMessage && seconds && !isOutdated) {
                              m_player.setPosition(*seconds, m_surroundings.now());
                          } else if (PlayerCalls::isTimeout(reply)) {
                              failed(reply);
                          }
                          if (std::exchange(m_isPositionStale, false)) {
                              QTimer::singleShot(betweenPositions, this, &MprisPlayer::askForPosition);
                          }
                          emit changed();
                      });
}

void MprisPlayer::takeOverStatus(const QVariantMap& properties) {
    const auto status = PropertyValues::status(properties.value(statusKey));
    const bool isFirst = !m_isKnown;
    if (status && (isFirst || *status != m_player.status)) {
        m_player.setStatus(*status, m_surroundings.now());
        m_player.lastStatusChange = isFirst && m_wasThere ? 0 : m_surroundings.countStatusChange();
    }
}

void MprisPlayer::takeOverTrack(const QVariantMap& properties) {
    if (!properties.contains(metadataKey)) {
        return;
    }
    const Track track = PropertyValues::track(PropertyValues::map(properties.value(metadataKey)));
    m_player.setTrack(track, m_surroundings.now());
    m_player.trackIdentifier = m_identity.identify(track);
}

void MprisPlayer::takeOver(const QVariantMap& properties) {
    takeOverStatus(properties);
    takeOverTrack(properties);
    if (const auto position = PropertyValues::seconds(properties.value(positionKey))) {
        m_player.setPosition(*position, m_surroundings.now());
    }
    const std::array<std::pair<const char*, std::optional<bool>*>, 3> flags{
        {{"CanGoNext", &m_player.canGoNext},
         {"CanGoPrevious", &m_player.canGoPrevious},
         {"CanPlay", &m_player.canPlay}}};
    for (const auto& [name, flag] : flags) {
        const auto value = properties.constFind(QLatin1String(name));
        if (value != properties.constEnd()) {
            *flag = PropertyValues::flag(*value);
        }
    }
}

void MprisPlayer::propertiesChanged(const QVariantMap& changedProperties, const QStringList& invalidated) {
    constexpr std::array known{"PlaybackStatus", "Metadata", "CanGoNext", "CanGoPrevious", "CanPlay"};
    const bool isInvalidated = std::ranges::any_of(
        known, [&](const char* name) { return invalidated.contains(QLatin1String(name)); });
    if (!m_isKnown || isInvalidated) {
        askForAll();
    }
    if (!m_isKnown) {
        return;
    }
    takeOver(changedProperties);
    if (changedProperties.contains(metadataKey) || changedProperties.contains(statusKey)) {
        askForPosition();
    }
    emit changed();
}

/// Taken at its word, since players that still have to get there answer with where they were.
void MprisPlayer::seeked(std::optional<double> position) {
    if (!m_isKnown) {
        askForAll();
    } else if (!position) {
        askForPosition();
    } else {
        m_player.setPosition(*position, m_surroundings.now());
        m_isAnswerOutdated = m_isPositionAsked;
        emit changed();
    }
}

} // namespace veslora
