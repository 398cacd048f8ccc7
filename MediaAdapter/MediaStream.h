// SPDX-License-Identifier: MIT
// The stream: reports the chosen player line by line for as long as there is a bus and a reader. Main thread
// only.
#pragma once

#include "MediaAdapter/ArtworkFetcher.h"
#include "MediaAdapter/ChosenPlayerFile.h"
#include "MediaAdapter/LineOutput.h"
#include "MediaAdapter/LinePace.h"
#include "MediaAdapter/MprisPlayers.h"
#include "MediaAdapter/PlayerReport.h"
#include "MediaAdapter/StreamWriter.h"

#include <QElapsedTimer>
#include <QTimer>

namespace veslora {

class MediaStream : public QObject {
    Q_OBJECT

  public:
    /// What it speaks to.
    struct Outside {
        QDBusConnection bus;
        int output;
        QString artworkProgram;
        ChosenPlayerFile chosenPlayer;
        std::function<Timestamp()> now;
    };

    explicit MediaStream(const Outside& outside);

  signals:
    /// Nobody reads any more.
    void closed();
    /// The bus has gone.
    void disconnected();

  private:
    void noteChange();
    void schedule();
    void write();
    [[nodiscard]] bool mayBegin() const;
    [[nodiscard]] bool isBetweenTracks(const Player* chosen) const;
    [[nodiscard]] LinePace::Awaited awaited(const Player* chosen) const;
    [[nodiscard]] Json payloadOf(const Player* player);
    void storeChoice(const Player* player);

    MprisPlayers m_players;
    LineOutput m_output;
    ArtworkFetcher m_artwork;
    ChosenPlayerFile m_chosenPlayer;
    PlayerReport m_report;
    StreamWriter m_writer;
    LinePace m_pace;
    QElapsedTimer m_clock;
    QTimer m_due;
    std::optional<std::string> m_storedName;
    bool m_hasBegun = false;
};

} // namespace veslora
