// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/SpotifyNotification.h"

#include <cmath>

namespace veslora::SpotifyNotification {

namespace {

constexpr double millisecondsPerSecond = 1000.0;

/// Null where the value is missing or of another type.
template <class Type>
const Type* valueAt(const UserInfo& userInfo, std::string_view key) {
    const auto found = userInfo.find(key);
    return found == userInfo.end() ? nullptr : std::get_if<Type>(&found->second);
}

std::string textAt(const UserInfo& userInfo, std::string_view key) {
    const auto* text = valueAt<std::string>(userInfo, key);
    return text ? *text : std::string();
}

double numberAt(const UserInfo& userInfo, std::string_view key) {
    const auto* number = valueAt<double>(userInfo, key);
    return number && std::isfinite(*number) ? *number : 0;
}

} // namespace

std::optional<NowPlaying> nowPlaying(const UserInfo& userInfo, Timestamp receivedAt) {
    const auto* state = valueAt<std::string>(userInfo, playerState);
    if (!state || *state == "Stopped") {
        return std::nullopt;
    }
    NowPlaying playing{.source = {MusicSource::Spotify{}},
                       .title = textAt(userInfo, trackName),
                       .artist = textAt(userInfo, artist),
                       .album = textAt(userInfo, album),
                       .duration = numberAt(userInfo, duration) / millisecondsPerSecond,
                       .position = numberAt(userInfo, playbackPosition),
                       .readAt = receivedAt,
                       .isPlaying = *state == "Playing"};
    if (playing.title.empty()) {
        return std::nullopt;
    }
    if (const auto* identifier = valueAt<std::string>(userInfo, trackID)) {
        playing.trackID = *identifier;
    }
    return playing;
}

} // namespace veslora::SpotifyNotification
