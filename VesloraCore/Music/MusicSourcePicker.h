// SPDX-License-Identifier: MIT
// Which of two players is shown.
#pragma once

#include "VesloraCore/Music/NowPlaying.h"

#include <optional>

namespace veslora::MusicSourcePicker {

/// Spotify's own report comes before what the adapter tells of Spotify. A Spotify that plays comes first; a
/// paused one until another player reports something at the same moment or later. Without `showOtherApps`
/// nothing but Spotify is picked.
[[nodiscard]] std::optional<NowPlaying> pick(const std::optional<NowPlaying>& spotify,
                                             const std::optional<NowPlaying>& other, bool showOtherApps);

} // namespace veslora::MusicSourcePicker
