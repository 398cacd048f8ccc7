// SPDX-License-Identifier: MIT
// One command to the player that is reported, or to the one that would be. Main thread only.
#pragma once

#include "MediaAdapter/ChosenPlayerFile.h"
#include "MediaAdapter/MprisPlayers.h"

#include <QTimer>

#include <optional>
#include <string_view>

namespace veslora {

class PlayerCommand : public QObject {
    Q_OBJECT

  public:
    enum class Kind { playPause = 2, next = 4, previous = 5 };

    /// Absent for any other number and text.
    [[nodiscard]] static std::optional<Kind> from(std::string_view number);

    PlayerCommand(Kind kind, const QDBusConnection& bus, const ChosenPlayerFile& chosenPlayer);

  signals:
    /// The player has done it, or nobody could be told to.
    void done(bool isDone);

  private:
    void lookAtAll();
    void choose();
    void perform(const QString& name);
    void call(const QString& name, const char* method);

    Kind m_kind;
    QDBusConnection m_bus;
    std::unique_ptr<MprisPlayers> m_players;
    QTimer m_patience;
};

} // namespace veslora
