// SPDX-License-Identifier: MIT
#include "MediaAdapter/MprisPlayers.h"

#include "MediaAdapter/PlayerCalls.h"
#include "MediaAdapter/PlayerNames.h"
#include "MediaAdapter/PropertyValues.h"

#include <algorithm>
#include <utility>

namespace veslora {
namespace {

/// Nobody has more; a program that takes names without end gets nowhere.
constexpr std::size_t mostPlayers = 256;

} // namespace

MprisPlayers::MprisPlayers(const QDBusConnection& bus, std::function<Timestamp()> now)
    : m_surroundings{bus, std::move(now), [this] { return ++m_statusChanges; }} {
    listen();
    lookAtAll();
}

/// By one rule for all players: the bus itself would have to be asked about each name otherwise.
void MprisPlayers::listen() {
    QDBusConnection& bus = m_surroundings.bus;
    const QString path = QLatin1String(PlayerCalls::path);
    const QString player = QLatin1String(PlayerCalls::playerInterface);
    bus.connect(QString(), path, QLatin1String(PlayerCalls::propertiesInterface),
                QStringLiteral("PropertiesChanged"), {player}, QString(), this,
                SLOT(takePropertiesChanged(QDBusMessage)));
    bus.connect(QString(), path, player, QStringLiteral("Seeked"), this, SLOT(takeSeeked(QDBusMessage)));
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(takeDisconnected()));
    m_watcher.setConnection(bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(QStringLiteral("org.mpris.MediaPlayer2*"));
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString& /*before*/, const QString& owner) {
                ownerChanged(name, owner);
            });
}

void MprisPlayers::lookAtAll() {
    ++m_unanswered;
    PlayerCalls::send(m_surroundings.bus, PlayerCalls::allNames(), this, [this](const QDBusMessage& reply) {
        --m_unanswered;
        for (const QString& name : reply.arguments().value(0).toStringList()) {
            if (PlayerNames::isPlayer(name.toStdString())) {
                lookAt(name);
            }
        }
        emit changed();
    });
}

void MprisPlayers::lookAt(const QString& name) {
    ++m_unanswered;
    PlayerCalls::send(m_surroundings.bus, PlayerCalls::ownerOf(name), this,
                      [this, name](const QDBusMessage& reply) {
                          --m_unanswered;
                          // What was heard of the name meanwhile is newer.
                          const std::string text = name.toStdString();
                          if (reply.type() == QDBusMessage::ReplyMessage && !m_owners.contains(text)) {
                              add(text, reply.arguments().value(0).toString(), true);
                          }
                          emit changed();
                      });
}

void MprisPlayers::ownerChanged(const QString& name, const QString& owner) {
    const std::string text = name.toStdString();
    if (!PlayerNames::isPlayer(text)) {
        return;
    }
    remove(text);
    if (!owner.isEmpty()) {
        add(text, owner, false);
    }
    emit changed();
}

void MprisPlayers::add(const std::string& name, const QString& owner, bool wasThere) {
    if (m_owners.size() >= mostPlayers) {
        return;
    }
    std::unique_ptr<MprisPlayer>& player = m_players[owner];
    if (!player) {
        player = std::make_unique<MprisPlayer>(m_surroundings, owner, wasThere);
        connect(player.get(), &MprisPlayer::changed, this, &MprisPlayers::changed);
    }
    player->addName(name);
    m_owners[name] = owner;
}

void MprisPlayers::remove(const std::string& name) {
    const auto owner = m_owners.find(name);
    if (owner == m_owners.end()) {
        return;
    }
    const auto player = m_players.find(owner->second);
    m_owners.erase(owner);
    player->second->removeName(name);
    if (!player->second->hasNames()) {
        m_players.erase(player);
    }
}

std::vector<const Player*> MprisPlayers::known() const {
    std::vector<const Player*> players;
    for (const auto& [owner, player] : m_players) {
        if (player->isKnown()) {
            players.push_back(&player->player());
        }
    }
    return players;
}

bool MprisPlayers::isSettled() const {
    return m_unanswered == 0 &&
           std::ranges::all_of(m_players, [](const auto& entry) { return entry.second->hasAnswered(); });
}

bool MprisPlayers::isPositionAwaited(const Player* player) const {
    return std::ranges::any_of(m_players, [player](const auto& entry) {
        return &entry.second->player() == player && entry.second->isPositionAwaited();
    });
}

void MprisPlayers::takePropertiesChanged(const QDBusMessage& message) {
    const auto player = m_players.find(message.service());
    if (player == m_players.end() || message.signature() != QLatin1String("sa{sv}as")) {
        return;
    }
    const QList<QVariant> arguments = message.arguments();
    player->second->propertiesChanged(PropertyValues::map(arguments.at(1)), arguments.at(2).toStringList());
}

void MprisPlayers::takeSeeked(const QDBusMessage& message) {
    const auto player = m_players.find(message.service());
    if (player != m_players.end()) {
        player->second->seeked(PropertyValues::seconds(message.arguments().value(0)));
    }
}

void MprisPlayers::takeDisconnected() {
    emit disconnected();
}

} // namespace veslora
