// SPDX-License-Identifier: MIT
// What is known of one media player, as plain values that have been made sense of.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veslora {

enum class PlaybackStatus { stopped, paused, playing };

struct Track {
    std::string id; ///< as the player names it; empty where it does not, and often the same for all
    std::string title;
    std::string artist;
    std::string album;
    std::string artUrl;
    std::optional<double> length; ///< seconds, positive; absent when unknown

    bool operator==(const Track&) const = default;
};

struct Player {
    std::string name;         ///< on the bus
    std::string desktopEntry; ///< empty when unknown
    PlaybackStatus status = PlaybackStatus::stopped;
    Track track;
    std::string trackIdentifier; ///< tells the track from the player's others; see TrackIdentity
    double position = 0;         ///< seconds, true at the moment `positionReadAt`
    Timestamp positionReadAt = 0;
    std::optional<bool> canGoNext; ///< absent when the player does not tell
    std::optional<bool> canGoPrevious;
    std::optional<bool> canPlay;
    std::uint64_t lastStatusChange = 0; ///< grows with each change of any player; 0 before the first
    std::uint64_t connection = 0;       ///< grows with each program that comes to the bus

    /// Where it is at another moment, in seconds, if nothing happened since. It moves only while playing, and
    /// not past a known length.
    [[nodiscard]] double positionAt(Timestamp time) const;

    /// A new position, in seconds. One that can't be, such as beyond the track's end, counts as 0.
    void setPosition(double seconds, Timestamp time);

    /// Takes over another status or track, and with it what the position must be until the player is asked.
    void setStatus(PlaybackStatus newStatus, Timestamp time);
    void setTrack(Track newTrack, Timestamp time);
};

/// Longest length or position that is believed, in seconds: a stream without an end gives centuries.
inline constexpr double longestTrack = 30.0 * 24 * 3600;

} // namespace veslora
