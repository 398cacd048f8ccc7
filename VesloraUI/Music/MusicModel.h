// SPDX-License-Identifier: MIT
// What plays: holds the last report of Spotify and of the media adapter, decides which is shown, finds its
// cover, and takes the commands of the views to the right player. Main thread only.
#pragma once

#include "VesloraCore/Music/AdapterState.h"
#include "VesloraCore/Music/NowPlaying.h"
#include "VesloraCore/Music/SpotifyNotification.h"
#include "VesloraUI/Music/AdapterCover.h"
#include "VesloraUI/Music/AdapterSupervisor.h"
#include "VesloraUI/Music/SpotifyCovers.h"

#include <QImage>
#include <QObject>
#include <QQmlEngine>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

class AppOpening;
class Defaults;
class SpotifyNotifications;

class MusicModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_DISABLE_COPY_MOVE(MusicModel)
    Q_PROPERTY(QImage artwork READ artwork NOTIFY artworkChanged FINAL)
    Q_PROPERTY(bool automationDenied READ automationDenied NOTIFY automationDeniedChanged FINAL)
    Q_PROPERTY(bool canGoNext READ canGoNext NOTIFY controlsChanged FINAL)
    Q_PROPERTY(bool canGoPrevious READ canGoPrevious NOTIFY controlsChanged FINAL)
    Q_PROPERTY(bool canToggle READ canToggle NOTIFY controlsChanged FINAL)

  public:
    /// What of the machine the music needs.
    struct Seams {
        Scheduler& scheduler;
        SpotifyNotifications& spotify;
        ScriptRunning& scripts;
        AdapterProcess& adapter;
        ArtworkLoading& artwork;
        AppOpening& apps;
    };

    /// Shows nothing and starts nothing yet.
    MusicModel(Defaults& settings, const Seams& seams);
    ~MusicModel() override = default;

    /// What is shown; absent while nothing is.
    [[nodiscard]] const std::optional<NowPlaying>& track() const { return m_track; }
    /// The cover of what is shown; null without one.
    [[nodiscard]] const QImage& artwork() const { return m_artwork; }
    /// Whether Spotify refused its last command for want of the user's permission.
    [[nodiscard]] bool automationDenied() const { return m_automationDenied; }
    /// When the track that is shown went from playing to paused; absent for one that was paused before it
    /// came.
    [[nodiscard]] const std::optional<Timestamp>& pausedSince() const { return m_pausedSince; }
    /// Whether the player that is shown can do it; true for one that tells nothing, and for Spotify.
    [[nodiscard]] bool canGoNext() const { return m_controls.canGoNext; }
    [[nodiscard]] bool canGoPrevious() const { return m_controls.canGoPrevious; }
    [[nodiscard]] bool canToggle() const { return m_controls.canToggle; }

    /// Begins to listen to Spotify. Once is enough.
    void startObservingSpotify();
    /// Whether anybody shows music: only then the adapter runs and covers are loaded. Without it the
    /// adapter's player is no longer shown.
    void setNeeded(bool isNeeded);
    /// To be called when the settings may have changed.
    void settingsChanged();

    /// Each goes to the player that is shown, and to none while nothing is.
    Q_INVOKABLE void togglePlayPause();
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();
    Q_INVOKABLE void openSpotify();

    /// Takes a line of the adapter's stream; a line of another form is ignored.
    void receiveAdapterLine(std::string_view line);

    /// Called after every report and every change of the settings, when all fields but a cover that has to be
    /// fetched have their values.
    std::function<void()> onChange;

  signals:
    void trackChanged();
    void artworkChanged();
    void automationDeniedChanged();
    void pausedSinceChanged();
    void controlsChanged();

  private:
    /// What a new report means for the cover.
    enum class CoverNews { sameTrack, otherTrack };

    void receiveNotification(const SpotifyNotification::UserInfo& userInfo);
    void refresh();
    void updatePausedSince(const std::optional<NowPlaying>& picked);
    void updateArtwork(CoverNews news);
    void showAdapterCover(CoverNews news);
    void showSpotifyCover();
    void setArtwork(const QImage& artwork);
    [[nodiscard]] bool isCurrent(const std::string& spotifyTrackID) const;
    void control(std::string_view script, AdapterCommand command);
    void runScript(std::string_view script);
    void scriptEnded(const ScriptRunning::Result& result);

    Defaults& m_settings;
    Seams m_seams;
    std::optional<NowPlaying> m_spotify; ///< by Spotify's own word
    AdapterState m_adapterState;
    std::optional<NowPlaying> m_other; ///< by the adapter's last line
    std::optional<NowPlaying> m_track;
    QImage m_artwork;
    bool m_automationDenied = false;
    std::optional<Timestamp> m_pausedSince;
    MusicControls m_controls;
    bool m_isObservingSpotify = false;
    bool m_isCoverSought = false; ///< the cover of Spotify's track was fetched, or could not be
    AdapterCover m_adapterCover;
    SpotifyCovers m_spotifyCovers;
    AdapterSupervisor m_adapter;
    std::map<int, Task> m_scripts; ///< commands that Spotify has not answered yet
    int m_lastScript = 0;
};

} // namespace veslora
