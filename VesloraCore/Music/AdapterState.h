// SPDX-License-Identifier: MIT
// What the media adapter tells of the machine's current player: a stream of JSON objects, one a line, each of
// which replaces what was told or changes parts of it. Values are kept as they came and read by type only
// when they are asked for.
#pragma once

#include "VesloraCore/Music/NowPlaying.h"
#include "VesloraCore/Text/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora {

/// What the player lets others do with it.
struct MusicControls {
    bool canGoNext = true;
    bool canGoPrevious = true;
    bool canToggle = true; ///< between playing and paused
    bool operator==(const MusicControls&) const = default;
};

struct AdapterState {
    /// An object: everything told so far by its key.
    Json payload = Json::makeObject();

    /// Takes one line: {"type": "data", "payload": {...}}, with "diff": true where the payload only adds to
    /// what was told or replaces some of it; a null takes back. False for any other line, which changes
    /// nothing.
    bool apply(std::string_view line);

    /// Nothing while no title is known. A record whose time is missing or no date counts as read at
    /// `fallbackReadAt`.
    [[nodiscard]] std::optional<NowPlaying> nowPlaying(Timestamp fallbackReadAt) const;

    /// What was not told can be done.
    [[nodiscard]] MusicControls controls() const;

    /// Whether it is Spotify that is reported.
    [[nodiscard]] bool isOfSpotify() const;

    /// The cover's file as base64, unchecked; null while there is none.
    [[nodiscard]] const std::string* artworkText() const;
    /// The bytes of the cover's file; nothing while there is none, or its text is no base64.
    [[nodiscard]] std::optional<std::string> artwork() const;

    bool operator==(const AdapterState&) const = default;
};

} // namespace veslora
