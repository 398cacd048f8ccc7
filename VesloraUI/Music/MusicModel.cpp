// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/MusicModel.h"

#include "VesloraCore/Music/MusicSourcePicker.h"
#include "VesloraUI/Platform/AppOpening.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Platform/SpotifyNotifications.h"
#include "VesloraUI/Platform/SpotifyScripts.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"

namespace veslora {

namespace {

/// Whether the cover of one can't be the other's. A player that numbers its tracks is taken at its word; of
/// one that does not, the title tells.
bool isOtherTrack(const std::optional<NowPlaying>& left, const std::optional<NowPlaying>& right) {
    if (!left || !right) {
        return left.has_value() != right.has_value();
    }
    return left->trackID != right->trackID || left->source != right->source ||
           (!left->source.isSpotify() && left->title != right->title);
}

} // namespace

MusicModel::MusicModel(Defaults& settings, const Seams& seams)
    : m_settings(settings), m_seams(seams),
      m_adapterCover(seams.scheduler, [this] { updateArtwork(CoverNews::sameTrack); }),
      m_spotifyCovers(
          seams.scripts, seams.artwork,
          {.isCurrent = [this](const std::string& trackID) { return isCurrent(trackID); },
           .fetched = [this](const std::string& /*trackID*/) { updateArtwork(CoverNews::sameTrack); }}),
      m_adapter(seams.scheduler, seams.adapter,
                [this](const std::string& line) { receiveAdapterLine(line); }) {}

void MusicModel::startObservingSpotify() {
    if (!m_isObservingSpotify) {
        m_isObservingSpotify = true;
        connect(&m_seams.spotify, &SpotifyNotifications::playbackStateChanged, this,
                &MusicModel::receiveNotification);
        m_seams.spotify.start();
    }
}

void MusicModel::setNeeded(bool isNeeded) {
    if (isNeeded == m_adapter.isNeeded()) {
        return;
    }
    m_adapter.setNeeded(isNeeded);
    if (!isNeeded) {
        m_other = std::nullopt;
        refresh();
    }
}

void MusicModel::settingsChanged() {
    refresh();
}

void MusicModel::togglePlayPause() {
    control(SpotifyScripts::togglePlayPause, AdapterCommand::togglePlayPause);
}

void MusicModel::next() {
    control(SpotifyScripts::next, AdapterCommand::next);
}

void MusicModel::previous() {
    control(SpotifyScripts::previous, AdapterCommand::previous);
}

void MusicModel::openSpotify() {
    m_seams.apps.open(std::string(MusicSource::spotifyBundleID));
}

void MusicModel::receiveNotification(const SpotifyNotification::UserInfo& userInfo) {
    m_spotify = SpotifyNotification::nowPlaying(userInfo, m_seams.scheduler.now());
    refresh();
}

void MusicModel::receiveAdapterLine(std::string_view line) {
    if (!m_adapterState.apply(line)) {
        qCWarning(Logs::music, "a line of %zu bytes from the media adapter was ignored", line.size());
        return;
    }
    m_other = m_adapterState.nowPlaying(m_seams.scheduler.now());
    refresh();
}

void MusicModel::refresh() {
    const auto picked =
        MusicSourcePicker::pick(m_spotify, m_other, m_settings.boolValue(SettingsKeys::musicShowOtherApps));
    updatePausedSince(picked);
    const CoverNews news = isOtherTrack(picked, m_track) ? CoverNews::otherTrack : CoverNews::sameTrack;
    assign(this, m_track, picked, &MusicModel::trackChanged);
    const bool isOfAdapter = m_track && !m_track->source.isSpotify();
    assign(this, m_controls, isOfAdapter ? m_adapterState.controls() : MusicControls(),
           &MusicModel::controlsChanged);
    updateArtwork(news);
    if (onChange) {
        onChange();
    }
}

void MusicModel::updatePausedSince(const std::optional<NowPlaying>& picked) {
    if (!picked || picked->isPlaying) {
        assign(this, m_pausedSince, std::nullopt, &MusicModel::pausedSinceChanged);
    } else if (m_track && m_track->isPlaying) {
        assign(this, m_pausedSince, std::optional(m_seams.scheduler.now()), &MusicModel::pausedSinceChanged);
    }
}

void MusicModel::updateArtwork(CoverNews news) {
    if (news == CoverNews::otherTrack) {
        m_isCoverSought = false;
    }
    if (!m_track) {
        setArtwork({});
        return;
    }
    const bool isOfSpotify = m_track->source.isSpotify();
    if (!isOfSpotify || m_adapterState.isOfSpotify()) {
        m_adapterCover.take(m_adapterState.artworkText());
        if (!isOfSpotify || m_adapterCover.isDecoding() || !m_adapterCover.image().isNull()) {
            showAdapterCover(news);
            return;
        }
    }
    showSpotifyCover();
}

void MusicModel::showAdapterCover(CoverNews news) {
    // The cover of the same track stays in view while a better one is decoded; another track's must not.
    if (!m_adapterCover.isDecoding() || news == CoverNews::otherTrack) {
        setArtwork(m_adapterCover.image());
    }
}

void MusicModel::showSpotifyCover() {
    if (!m_track->trackID) {
        return;
    }
    const std::string trackID = *m_track->trackID;
    if (const QImage* cover = m_spotifyCovers.find(trackID)) {
        setArtwork(*cover);
        return;
    }
    // One that could not be fetched is not tried again for the same track.
    if (m_isCoverSought) {
        return;
    }
    setArtwork({});
    if (m_adapter.isNeeded()) {
        m_isCoverSought = true;
        m_spotifyCovers.fetch(trackID);
    }
}

void MusicModel::setArtwork(const QImage& artwork) {
    assign(this, m_artwork, artwork, &MusicModel::artworkChanged);
}

bool MusicModel::isCurrent(const std::string& spotifyTrackID) const {
    const auto& current = m_spotify ? m_spotify : m_track;
    return current && current->source.isSpotify() && current->trackID == spotifyTrackID;
}

void MusicModel::control(std::string_view script, AdapterCommand command) {
    if (!m_track) {
        return;
    }
    if (m_track->source.isSpotify()) {
        runScript(script);
    } else {
        m_seams.adapter.send(command);
    }
}

void MusicModel::runScript(std::string_view script) {
    const int number = ++m_lastScript;
    m_scripts[number] =
        m_seams.scripts.run(std::string(script), [this, number](const ScriptRunning::Result& result) {
            m_scripts.erase(number);
            scriptEnded(result);
        });
}

void MusicModel::scriptEnded(const ScriptRunning::Result& result) {
    const auto* error = std::get_if<MusicError>(&result);
    const bool isDenied = error && *error == MusicError::automationDenied;
    if (error) {
        qCWarning(Logs::music, "Spotify has not done what it was told: %s", isDenied ? "denied" : "failed");
    }
    if (!error || isDenied) {
        assign(this, m_automationDenied, isDenied, &MusicModel::automationDeniedChanged);
    }
}

} // namespace veslora
