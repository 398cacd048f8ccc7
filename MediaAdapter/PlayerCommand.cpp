// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerCommand.h"

#include "MediaAdapter/Logs.h"
#include "MediaAdapter/PlayerCalls.h"
#include "MediaAdapter/PlayerChoice.h"
#include "MediaAdapter/PropertyValues.h"

#include <QDBusVariant>

#include <chrono>

namespace veslora {
namespace {

using namespace std::chrono_literals;

/// How long players that do not answer are waited for before one of the others is chosen.
constexpr auto longestLook = 500ms;

} // namespace

std::optional<PlayerCommand::Kind> PlayerCommand::from(std::string_view number) {
    for (const auto& [text, kind] :
         {std::pair("2", Kind::playPause), std::pair("4", Kind::next), std::pair("5", Kind::previous)}) {
        if (number == text) {
            return kind;
        }
    }
    return std::nullopt;
}

PlayerCommand::PlayerCommand(Kind kind, const QDBusConnection& bus, const ChosenPlayerFile& chosenPlayer)
    : m_kind(kind), m_bus(bus) {
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &PlayerCommand::choose);
    const std::optional<std::string> name = chosenPlayer.name();
    if (!name) {
        lookAtAll();
        return;
    }
    const QString chosen = QString::fromStdString(*name);
    PlayerCalls::send(m_bus, PlayerCalls::ownerOf(chosen), this, [this, chosen](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            perform(chosen);
        } else {
            lookAtAll();
        }
    });
}

void PlayerCommand::lookAtAll() {
    m_players = std::make_unique<MprisPlayers>(m_bus, [] { return Timestamp{}; });
    connect(m_players.get(), &MprisPlayers::changed, this, [this] {
        if (m_players->isSettled() && m_patience.isActive()) {
            // Not from within the players' own signal.
            m_patience.start(0ms);
        }
    });
    m_patience.start(longestLook);
}

void PlayerCommand::choose() {
    m_players->disconnect(this);
    const Player* const player = PlayerChoice::choose(m_players->known());
    if (player == nullptr) {
        emit done(false);
    } else {
        perform(QString::fromStdString(player->name));
    }
}

/// Players that are stopped take "PlayPause" for all sorts of things, so they are told what is meant.
void PlayerCommand::perform(const QString& name) {
    if (m_kind != Kind::playPause) {
        call(name, m_kind == Kind::next ? "Next" : "Previous");
        return;
    }
    PlayerCalls::send(m_bus, PlayerCalls::property(name, "PlaybackStatus"), this,
                      [this, name](const QDBusMessage& reply) {
                          const QVariant value = reply.arguments().value(0);
                          const auto status = PropertyValues::status(value.value<QDBusVariant>().variant());
                          call(name, status == PlaybackStatus::stopped ? "Play" : "PlayPause");
                      });
}

void PlayerCommand::call(const QString& name, const char* method) {
    PlayerCalls::send(m_bus, PlayerCalls::command(name, method), this, [this](const QDBusMessage& reply) {
        const bool isDone = reply.type() == QDBusMessage::ReplyMessage;
        if (!isDone) {
            qCWarning(Logs::media, "the player refused: %s", qUtf8Printable(reply.errorName()));
        }
        emit done(isDone);
    });
}

} // namespace veslora
