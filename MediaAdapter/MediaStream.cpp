// SPDX-License-Identifier: MIT
#include "MediaAdapter/MediaStream.h"

#include "MediaAdapter/Logs.h"
#include "MediaAdapter/PlayerChoice.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace veslora {
namespace {

/// How long the first line waits for players that do not answer.
constexpr LinePace::Milliseconds longestBeginning = 300;

} // namespace

MediaStream::MediaStream(const Outside& outside)
    : m_players(outside.bus, outside.now), m_output(outside.output), m_artwork(outside.artworkProgram),
      m_chosenPlayer(outside.chosenPlayer) {
    m_clock.start();
    m_due.setSingleShot(true);
    m_due.setTimerType(Qt::PreciseTimer);
    connect(&m_due, &QTimer::timeout, this, &MediaStream::write);
    connect(&m_players, &MprisPlayers::changed, this, &MediaStream::noteChange);
    connect(&m_players, &MprisPlayers::disconnected, this, &MediaStream::disconnected);
    connect(&m_artwork, &ArtworkFetcher::changed, this, &MediaStream::noteChange);
    connect(&m_output, &LineOutput::drained, this, &MediaStream::schedule);
    connect(&m_output, &LineOutput::closed, this, &MediaStream::closed);
    m_pace.change(m_clock.elapsed());
    schedule();
}

bool MediaStream::mayBegin() const {
    return m_hasBegun || m_players.isSettled() || m_clock.elapsed() >= longestBeginning;
}

/// Whether the reported player has just ended a track and may be about to begin the next. Where another one
/// plays it does not matter.
bool MediaStream::isBetweenTracks(const Player* chosen) const {
    return chosen != nullptr && chosen->status != PlaybackStatus::playing &&
           std::ranges::any_of(m_players.known(), [this](const Player* player) {
               return player->name == m_storedName && player->status == PlaybackStatus::stopped &&
                      player->track.title.empty();
           });
}

LinePace::Awaited MediaStream::awaited(const Player* chosen) const {
    if (isBetweenTracks(chosen)) {
        return LinePace::Awaited::track;
    }
    return m_players.isPositionAwaited(chosen) ? LinePace::Awaited::position : LinePace::Awaited::nothing;
}

void MediaStream::noteChange() {
    m_pace.change(m_clock.elapsed());
    schedule();
}

void MediaStream::schedule() {
    const Player* const player = PlayerChoice::choose(m_players.known());
    const auto due = m_pace.due(awaited(player));
    if (!due || m_output.isBusy()) {
        m_due.stop();
        return;
    }
    const LinePace::Milliseconds at = mayBegin() ? *due : longestBeginning;
    m_due.start(static_cast<int>(std::max<LinePace::Milliseconds>(0, at - m_clock.elapsed())));
}

void MediaStream::write() {
    const Player* const player = PlayerChoice::choose(m_players.known());
    m_hasBegun = true;
    m_pace.written(m_clock.elapsed());
    storeChoice(player);
    if (const auto line = m_writer.lineTo(payloadOf(player))) {
        m_output.write(*line);
    }
}

Json MediaStream::payloadOf(const Player* player) {
    m_artwork.want(player == nullptr ? std::string() : player->track.artUrl,
                   player == nullptr ? std::string() : player->name + '\n' + player->trackIdentifier);
    return player == nullptr ? m_report.nothing() : m_report.payload(*player, m_artwork.artwork());
}

/// Before the line that tells of it, so that a command which follows finds it.
void MediaStream::storeChoice(const Player* player) {
    const std::string name = player == nullptr ? std::string() : player->name;
    if (m_storedName != name) {
        if (!m_chosenPlayer.store(name)) {
            qCWarning(Logs::media, "can't store which player is reported: %s", std::strerror(errno));
        }
        m_storedName = name;
    }
}

} // namespace veslora
