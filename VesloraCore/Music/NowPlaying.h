// SPDX-License-Identifier: MIT
// What a media player is doing, and which player it is.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veslora {

/// The player. Two of the same kind are told apart by their payload.
struct MusicSource {
    /// Any player other than Spotify.
    struct App {
        std::string bundleID; ///< the player's identifier, as in "org.example.music"
        std::string name;     ///< for people
        bool operator==(const App&) const = default;
    };
    struct Spotify {
        bool operator==(const Spotify&) const = default;
    };

    /// The identifier by which Spotify is known.
    static constexpr std::string_view spotifyBundleID = "com.spotify.client";

    std::variant<App, Spotify> kind;

    /// The source of that identifier. A player other than Spotify is named after the last piece between dots,
    /// its first letter in upper case; an empty identifier gives an empty name.
    [[nodiscard]] static MusicSource from(std::string_view bundleID);

    [[nodiscard]] bool isSpotify() const { return std::holds_alternative<Spotify>(kind); }
    bool operator==(const MusicSource&) const = default;
};

struct NowPlaying {
    MusicSource source;
    std::string title;   ///< never empty
    std::string artist;  ///< empty when unknown
    std::string album;   ///< empty when unknown
    double duration = 0; ///< seconds; 0 when unknown
    double position = 0; ///< seconds, true at the moment `readAt`
    Timestamp readAt = 0;
    bool isPlaying = false;
    std::optional<std::string> trackID; ///< the player's own name of the track

    /// The position at another moment, in seconds: it moves only while the track plays, and stays within the
    /// duration where that is known. With an unknown duration it can be negative before `readAt`.
    [[nodiscard]] double positionAt(Timestamp time) const;

    bool operator==(const NowPlaying&) const = default;
};

} // namespace veslora
