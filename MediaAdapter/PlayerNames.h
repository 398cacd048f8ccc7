// SPDX-License-Identifier: MIT
// Which names on the bus are media players, and how a player is called in the stream. Pure functions, any
// thread.
#pragma once

#include <string>
#include <string_view>

namespace veslora::PlayerNames {

inline constexpr std::string_view prefix = "org.mpris.MediaPlayer2.";

/// What Spotify is called in the stream, however it was installed.
inline constexpr std::string_view spotify = "com.spotify.client";

/// Whether that name on the bus is a player's own. `playerctld` is none: it repeats what another player says.
[[nodiscard]] bool isPlayer(std::string_view busName);

/// The player's identifier: its desktop entry, or where that is empty its bus name without the prefix and
/// without ".instance" and what follows. `spotify` for Spotify as a native package, a flatpak or a snap.
[[nodiscard]] std::string bundleIdentifier(std::string_view desktopEntry, std::string_view busName);

} // namespace veslora::PlayerNames
