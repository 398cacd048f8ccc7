// SPDX-License-Identifier: MIT
// The only sentences that are ever said to Spotify.
#pragma once

#include <string_view>

namespace veslora::SpotifyScripts {

inline constexpr std::string_view togglePlayPause = "tell application \"Spotify\" to playpause";
inline constexpr std::string_view next = "tell application \"Spotify\" to next track";
inline constexpr std::string_view previous = "tell application \"Spotify\" to previous track";
inline constexpr std::string_view artworkUrl = "tell application \"Spotify\" to artwork url of current track";

} // namespace veslora::SpotifyScripts
