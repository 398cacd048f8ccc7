// SPDX-License-Identifier: MIT
// What Spotify itself tells of a change of its player, as named values.
#pragma once

#include "VesloraCore/Music/NowPlaying.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veslora::SpotifyNotification {

inline constexpr std::string_view playerState = "Player State"; ///< "Playing", "Paused" or "Stopped"
inline constexpr std::string_view trackName = "Name";
inline constexpr std::string_view artist = "Artist";
inline constexpr std::string_view album = "Album";
inline constexpr std::string_view duration = "Duration";                  ///< milliseconds
inline constexpr std::string_view playbackPosition = "Playback Position"; ///< seconds, unlike the duration
inline constexpr std::string_view trackID = "Track ID";

using Value = std::variant<std::string, double>;
/// By the keys above; others are ignored, and a value of another type counts as missing.
using UserInfo = std::map<std::string, Value, std::less<>>;

/// What plays by a notification received at that moment. Nothing once the player has stopped, and for a
/// notification without a state or a name. A number that is not finite counts as missing.
[[nodiscard]] std::optional<NowPlaying> nowPlaying(const UserInfo& userInfo, Timestamp receivedAt);

} // namespace veslora::SpotifyNotification
