// SPDX-License-Identifier: MIT
// All media players on a bus, as they come and go. Main thread only.
#pragma once

#include "MediaAdapter/MprisPlayer.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>

#include <map>
#include <memory>
#include <vector>

namespace veslora {

class MprisPlayers : public QObject {
    Q_OBJECT

  public:
    MprisPlayers(const QDBusConnection& bus, std::function<Timestamp()> now);

    /// Those that have told what they play.
    [[nodiscard]] std::vector<const Player*> known() const;
    /// Whether everyone who was there at the beginning has answered.
    [[nodiscard]] bool isSettled() const;
    /// Whether that player was just asked where it is.
    [[nodiscard]] bool isPositionAwaited(const Player* player) const;

  signals:
    /// Anything of the above may be another.
    void changed();
    /// The bus has gone, and nothing will ever change.
    void disconnected();

  private slots:
    void takePropertiesChanged(const QDBusMessage& message);
    void takeSeeked(const QDBusMessage& message);
    void takeDisconnected();

  private:
    void listen();
    void lookAtAll();
    void lookAt(const QString& name);
    void ownerChanged(const QString& name, const QString& owner);
    void add(const std::string& name, const QString& owner, bool wasThere);
    void remove(const std::string& name);

    MprisPlayer::Surroundings m_surroundings;
    QDBusServiceWatcher m_watcher;
    std::map<QString, std::unique_ptr<MprisPlayer>> m_players; ///< by the program's own name
    std::map<std::string, QString> m_owners;                   ///< by the player's name
    std::uint64_t m_statusChanges = 0;
    int m_unanswered = 0; ///< questions of the first look
};

} // namespace veslora
