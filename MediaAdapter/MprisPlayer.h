// SPDX-License-Identifier: MIT
// One program on the bus that is a media player: asks it what it plays and keeps that up to date. Main thread
// only.
#pragma once

#include "MediaAdapter/Player.h"
#include "MediaAdapter/TrackIdentity.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <set>
#include <string>

namespace veslora {

class MprisPlayer : public QObject {
    Q_OBJECT

  public:
    /// What all players share.
    struct Surroundings {
        QDBusConnection bus;
        std::function<Timestamp()> now;
        std::function<std::uint64_t()> countStatusChange; ///< gives the number of a change that happens now
    };

    /// `owner` is the program's own name on the bus, which no other ever gets. Whether it played before we
    /// came is unknown of one that `wasThere`, so its first status is no change.
    MprisPlayer(const Surroundings& surroundings, const QString& owner, bool wasThere);

    /// Some programs have several names, as one for each instance and one for all.
    void addName(const std::string& name);
    void removeName(const std::string& name);
    [[nodiscard]] bool hasNames() const { return !m_names.empty(); }

    /// Whether it has told what it plays; before that `player` says nothing.
    [[nodiscard]] bool isKnown() const { return m_isKnown; }
    /// Whether it has answered at all, be it that it can't tell.
    [[nodiscard]] bool hasAnswered() const { return m_hasAnswered; }
    [[nodiscard]] bool isPositionAwaited() const { return m_isPositionAsked && !m_isAnswerOutdated; }
    [[nodiscard]] const Player& player() const { return m_player; }

    /// What it said by signals.
    void propertiesChanged(const QVariantMap& changed, const QStringList& invalidated);
    void seeked(std::optional<double> position); ///< in seconds; absent where it did not tell

  signals:
    /// Anything of the above may be another.
    void changed();

  private:
    void askForName();
    void askForAll();
    void askForPosition();
    void askAgain();
    void failed(const QDBusMessage& reply);
    void takeOver(const QVariantMap& properties);
    void takeOverStatus(const QVariantMap& properties);
    void takeOverTrack(const QVariantMap& properties);

    Surroundings m_surroundings;
    QString m_owner;
    std::set<std::string> m_names;
    Player m_player;
    TrackIdentity m_identity;
    QTimer m_retry;
    int m_failures = 0;
    bool m_wasThere;
    bool m_isKnown = false;
    bool m_hasAnswered = false;
    bool m_isAllAsked = false;
    bool m_isAllStale = false; ///< something changed after all was asked for
    bool m_isPositionAsked = false;
    bool m_isPositionStale = false;
    bool m_isAnswerOutdated = false; ///< it told its position after it was asked
};

} // namespace veslora
